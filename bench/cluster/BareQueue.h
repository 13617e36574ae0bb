// The etcd requests that the same queue needs, written by hand and sent to the members in turn: no
// log, no deadline, no fail-over, no check of an answer beyond what the next request is made of.
//
// Thread safety: none.

#ifndef EVENTSYSTEM_BENCH_CLUSTER_BAREQUEUE_H
#define EVENTSYSTEM_BENCH_CLUSTER_BAREQUEUE_H

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "bench/cluster/Queue.h"
#include "etcd.grpc.pb.h"

namespace Bench {

class BareQueue : public Queue {
 public:
  BareQueue(const std::vector<std::string>& endpoints, const std::string& queue,
            const std::string& text, const std::string& dsid = "0000000000");

  void add() override;
  unsigned long next(unsigned long afterId) override;
  void remove(unsigned long id) override;

  // The first event after an id as one range to the end of the queue, limited to one key.
  unsigned long nextOfAll(unsigned long afterId);

  // Stores events under the ids from `first` to `last`, many at once.
  void fill(unsigned long first, unsigned long last);
  void removeAll(unsigned long first, unsigned long last);

 private:
  struct Key {
    std::string name;
    std::string value;
    std::int64_t revision = 0;
  };

  std::string eventKey(unsigned long id) const;
  etcdserverpb::KV::Stub& member() { return *m_members[m_calls++ % m_members.size()]; }
  void grantLease(const std::string& endpoint);
  etcdserverpb::TxnResponse send(const etcdserverpb::TxnRequest& request);
  bool tryToAdd();

  const std::string m_prefix;
  const std::string m_value;
  std::vector<std::unique_ptr<etcdserverpb::KV::Stub>> m_members;
  std::size_t m_calls = 0;
  std::int64_t m_lease = 0;
  unsigned long m_token = 0;
  Key m_sequence;
  Key m_mark;
};

}  // namespace Bench

#endif
