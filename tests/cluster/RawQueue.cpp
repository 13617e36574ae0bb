#include "tests/cluster/RawQueue.h"

#include <stdexcept>

#include "host/cluster/EtcdChannel.h"
#include "host/cluster/EtcdKeys.h"

namespace EventSystemTest {
namespace {

using EventSystemHost::ClusterConfiguration;

void put(etcdserverpb::TxnRequest& request, const std::string& key, const std::string& value) {
  etcdserverpb::PutRequest& operation = *request.add_success()->mutable_request_put();
  operation.set_key(key);
  operation.set_value(value);
}

// Calls `putOne` for 1 to `count`, and `finish` with the last of each transaction.
template <class PutOne, class Finish>
void putMany(const ClusterConfiguration& configuration, unsigned long count, const PutOne& putOne,
             const Finish& finish) {
  constexpr unsigned long kAtOnce = 100;  // etcd takes 128 operations in one transaction
  EventSystemHost::EtcdChannel channel(configuration);
  for (unsigned long id = 1; id <= count;) {
    etcdserverpb::TxnRequest request;
    for (unsigned long i = 0; i < kAtOnce && id <= count; ++i, ++id) putOne(request, id);
    finish(request, id - 1);
    etcdserverpb::TxnResponse answer;
    const auto result =
        channel.txn(request, answer, EventSystemHost::Deadline(configuration.deadline));
    if (!result.ok()) throw std::runtime_error(result.message);
  }
}

}  // namespace

void fillQueue(const ClusterConfiguration& configuration, const std::string& queue,
               unsigned long events) {
  const EventSystemHost::EtcdKeys keys(queue, 0);
  putMany(
      configuration, events,
      [&](etcdserverpb::TxnRequest& request, unsigned long id) {
        put(request, keys.event(id),
            EventSystemHost::eventValue("alpha", "event " + std::to_string(id)));
      },
      [&](etcdserverpb::TxnRequest& request, unsigned long last) {
        put(request, keys.sequence(), EventSystemHost::padded(last));
      });
}

void fillMarkers(const ClusterConfiguration& configuration, const std::string& queue,
                 const std::string& member, unsigned long markers) {
  const EventSystemHost::EtcdKeys keys(queue, 0);
  putMany(
      configuration, markers,
      [&](etcdserverpb::TxnRequest& request, unsigned long id) {
        put(request, keys.copied(member, id), EventSystemHost::withCopy("", "hash", id));
      },
      [](etcdserverpb::TxnRequest&, unsigned long) {});
}

}  // namespace EventSystemTest
