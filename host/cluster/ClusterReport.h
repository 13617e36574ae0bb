// How the etcd cluster is, for the operator.
//
// Thread safety: plain values.

#ifndef EVENTSYSTEM_HOST_CLUSTER_CLUSTERREPORT_H
#define EVENTSYSTEM_HOST_CLUSTER_CLUSTERREPORT_H

#include <cstdint>
#include <string>
#include <vector>

namespace EventSystemHost {

// One configured endpoint.
struct ClusterMember {
  std::string endpoint;
  bool reachable = false;
  std::string failure;  // why it is not reachable

  // Of a reachable one:
  std::string name;  // at etcd; empty when etcd as a whole does not answer
  std::string version;
  bool leader = false;
  std::int64_t databaseBytes = 0;       // size of its file, which the quota is about
  std::int64_t databaseBytesInUse = 0;  // the rest comes back by defragmenting
  std::int64_t quotaBytes = 0;          // 0: not known
  std::uint64_t memberId = 0;
  std::uint64_t clusterId = 0;
};

struct ClusterReport {
  std::vector<ClusterMember> members;  // in the order of the configuration
  std::vector<std::string> alarms;     // "NOSPACE at NAME"
  std::string failure;                 // why etcd as a whole does not answer; empty when it does
};

}  // namespace EventSystemHost

#endif
