#include "host/cluster/ClusterService.h"

#include <mutex>
#include <utility>

namespace EventSystemHost {
namespace {

struct Service {
  std::mutex mutex;
  std::shared_ptr<ClusterClient> client;
};

Service& service() {
  static Service theOne;
  return theOne;
}

void replace(std::shared_ptr<ClusterClient> client) {
  {
    const std::lock_guard lock(service().mutex);
    service().client.swap(client);
  }
  // The old one takes its leave of etcd here, outside the lock.
}

}  // namespace

void startCluster(const ClusterConfiguration& configuration,
                  const std::optional<ClusterMembership>& membership) {
  auto client = std::make_shared<ClusterClient>(configuration);
  if (membership) client->claim(membership->queue, membership->member, membership->home);
  replace(std::move(client));
}

void stopCluster() {
  replace(nullptr);
}

std::shared_ptr<ClusterClient> clusterClient() {
  const std::lock_guard lock(service().mutex);
  return service().client;
}

unsigned int forgetCopies(const std::string& queue, const std::string& member,
                          unsigned long belowId, unsigned int dsid) {
  const std::shared_ptr<ClusterClient> client = clusterClient();
  return client ? client->forgetCopies(queue, member, belowId, dsid) : kClusterNotStarted;
}

}  // namespace EventSystemHost
