// Stands for the cluster service in a build without it: everything that needs one fails and says
// why.

#include <stdexcept>

#include "EventSystem/platform/ClusterAPI.h"
#include "EventSystem/platform/HostLog.h"
#include "host/cluster/ClusterReader.h"
#include "host/cluster/ClusterService.h"
#include "host/cluster/LastCall.h"

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

namespace {

constexpr const char* kMissing = "cluster_mode is 1, but this build has no cluster service";

}  // namespace

void startCluster(const ClusterConfiguration&, const std::optional<ClusterMembership>&) {
  throw std::runtime_error(kMissing);
}

void stopCluster() {}

const ClusterCall& lastClusterCall() {
  static const ClusterCall none{0, kMissing};
  return none;
}

struct ClusterReader::Parts {};

ClusterReader::ClusterReader(const ClusterConfiguration& configuration, const std::string& queue)
    : m_configuration(configuration), m_queue(queue) {}

ClusterReader::~ClusterReader() = default;

void ClusterReader::forEach(unsigned int, unsigned long, const Visitor&) {
  throw ClusterError(kMissing);
}

std::optional<ClusterEvent> ClusterReader::find(unsigned long, unsigned int) {
  throw ClusterError(kMissing);
}

unsigned long ClusterReader::highestId(unsigned int) {
  throw ClusterError(kMissing);
}

std::vector<unsigned int> ClusterReader::dataSelections() {
  throw ClusterError(kMissing);
}

ClusterReport ClusterReader::report() {
  return {{}, {}, kMissing};
}

unsigned long ClusterReader::roundTrips() const {
  return 0;
}

unsigned int forgetCopies(const std::string&, const std::string&, unsigned long, unsigned int) {
  return kClusterNotStarted;
}

}  // namespace EventSystemHost
