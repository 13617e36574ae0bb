// The name under which this process leaves its tokens in etcd, and the lease that makes them go
// when the process does.
//
// Thread safety: any thread.

#ifndef EVENTSYSTEM_HOST_CLUSTER_PRODUCERLEASE_H
#define EVENTSYSTEM_HOST_CLUSTER_PRODUCERLEASE_H

#include <chrono>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string>

#include "host/cluster/EtcdChannel.h"
#include "host/cluster/PeriodicTask.h"

namespace EventSystemHost {

class ProducerLease {
 public:
  // `channel` outlives it. Nothing is granted before the first use.
  ProducerLease(EtcdChannel& channel, const ClusterConfiguration& configuration);

  // Ends the lease at etcd, and with it the tokens.
  ~ProducerLease();

  ProducerLease(const ProducerLease&) = delete;
  ProducerLease& operator=(const ProducerLease&) = delete;

  const std::string& producer() const { return m_producer; }

  // The lease in force, granted when there is none.
  EtcdResult use(std::int64_t& id, const Deadline& deadline);

  // etcd does not know this lease any more.
  void lost(std::int64_t id);

 private:
  void keepAlive();
  std::int64_t current() const;

  EtcdChannel& m_channel;
  const std::chrono::milliseconds m_deadline;
  const std::chrono::seconds m_ttl;
  const std::string m_producer;
  Gate m_grantGate;

  mutable std::mutex m_mutex;
  std::int64_t m_id = 0;  // 0: none; guarded by m_mutex

  std::optional<PeriodicTask> m_keeper;  // last: it uses all of the above
};

}  // namespace EventSystemHost

#endif
