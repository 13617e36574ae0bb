// Stands for the cluster service in a build without it: everything that needs one fails and says
// why.

#include <stdexcept>

#include "EventSystem/platform/ClusterAPI.h"
#include "EventSystem/platform/HostLog.h"
#include "host/cluster/ClusterService.h"

namespace {

unsigned int unavailable(const char* operation) {
  ErrorA(4, "%s This build has no cluster service", operation);
  return 1;
}

}  // namespace

ClusterAPI& ClusterAPI::instance() {
  static ClusterAPI service;
  return service;
}

unsigned int ClusterAPI::newEvent(const std::string&, const std::string&, const std::string&,
                                  unsigned long, unsigned long&, unsigned int) {
  return unavailable("newEvent");
}

unsigned int ClusterAPI::getNextEvent(const std::string&, unsigned long, unsigned long&,
                                      std::string&, std::string&, unsigned int) {
  return unavailable("getNextEvent");
}

unsigned int ClusterAPI::deleteEventById(const std::string&, unsigned long, unsigned int) {
  return unavailable("deleteEventById");
}

namespace EventSystemHost {

void startCluster(const ClusterConfiguration&) {
  throw std::runtime_error("cluster_mode is 1, but this build has no cluster service");
}

void stopCluster() {}

}  // namespace EventSystemHost
