#include "tests/cluster/RawQueue.h"

#include <stdexcept>

#include "host/cluster/EtcdChannel.h"
#include "host/cluster/EtcdKeys.h"

namespace EventSystemTest {

void fillQueue(const EventSystemHost::ClusterConfiguration& configuration, const std::string& queue,
               unsigned long events) {
  constexpr unsigned long kAtOnce = 100;  // etcd takes 128 operations in one transaction
  const EventSystemHost::EtcdKeys keys(queue, 0);
  EventSystemHost::EtcdChannel channel(configuration);
  for (unsigned long id = 1; id <= events;) {
    etcdserverpb::TxnRequest request;
    const auto put = [&request](const std::string& key, const std::string& value) {
      etcdserverpb::PutRequest& operation = *request.add_success()->mutable_request_put();
      operation.set_key(key);
      operation.set_value(value);
    };
    for (unsigned long i = 0; i < kAtOnce && id <= events; ++i, ++id) {
      put(keys.event(id), EventSystemHost::eventValue("alpha", "event " + std::to_string(id)));
    }
    put(keys.sequence(), EventSystemHost::padded(id - 1));
    etcdserverpb::TxnResponse answer;
    const auto result =
        channel.txn(request, answer, EventSystemHost::Deadline(configuration.deadline));
    if (!result.ok()) throw std::runtime_error(result.message);
  }
}

}  // namespace EventSystemTest
