// The cluster event service of this process: the one client behind ClusterAPI::instance().
//
// Thread safety: start and stop from the thread that owns the host, while no other thread uses the
// library; the other functions from any thread.

#ifndef EVENTSYSTEM_HOST_CLUSTER_CLUSTERSERVICE_H
#define EVENTSYSTEM_HOST_CLUSTER_CLUSTERSERVICE_H

#include <memory>
#include <optional>
#include <string>

#include "host/cluster/ClusterClient.h"
#include "host/cluster/ClusterConfiguration.h"

namespace EventSystemHost {

// Who a writing host is at the service.
struct ClusterMembership {
  std::string queue;
  std::string member;
  MemberHome home;
};

// Connects, logs in, checks, and claims the member's name where there is one to claim. Throws
// std::runtime_error whose text says what is wrong and where. A service that runs already is
// replaced.
void startCluster(const ClusterConfiguration& configuration,
                  const std::optional<ClusterMembership>& membership = std::nullopt);

// Takes back what is left at etcd of this process. Does nothing when no service runs.
void stopCluster();

// Null when no service runs.
std::shared_ptr<ClusterClient> clusterClient();

// As ClusterClient::forgetCopies(); kClusterNotStarted when no service runs.
unsigned int forgetCopies(const std::string& queue, const std::string& member,
                          unsigned long belowId, unsigned int dsid);

}  // namespace EventSystemHost

#endif
