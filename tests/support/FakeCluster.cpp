#include "EventSystem/platform/ClusterAPI.h"
#include "tests/support/FakeHostInternals.h"

using namespace EventSystemTest;

namespace {

std::optional<unsigned int> enterCluster(const char* name, const std::string& arguments) {
  const std::optional<int> failure = host().enter({CallKind::kCluster, name, arguments, {}});
  if (!failure) return std::nullopt;
  return static_cast<unsigned int>(*failure);
}

}  // namespace

ClusterAPI& ClusterAPI::instance() {
  static ClusterAPI service;
  return service;
}

unsigned int ClusterAPI::newEvent(const std::string& a, const std::string& b,
                                  const std::string& eventString, unsigned long id,
                                  unsigned long& newId, unsigned int dsid) {
  const Guard guard;
  const std::optional<unsigned int> failure =
      enterCluster("ClusterAPI::newEvent", a + ", " + b + ", " + eventString + ", " +
                                               std::to_string(id) + ", " + std::to_string(dsid));
  if (failure) return *failure;
  unsigned long& maxId = state().clusterMaxIds[dsid];
  const std::string copy = std::to_string(dsid) + "/" + b + "/" + std::to_string(id);
  const bool stored = id != 0 && !state().clusterCopies.insert(copy).second;
  newId = id > maxId || stored ? id : maxId + 1;
  if (stored) return 0;
  maxId = newId;
  state().cluster[dsid][newId] = FakeHost::ClusterEvent{b, eventString};
  return 0;
}

unsigned int ClusterAPI::getNextEvent(const std::string& a, unsigned long afterId,
                                      unsigned long& id, std::string& second,
                                      std::string& eventString, unsigned int dsid) {
  const Guard guard;
  const std::optional<unsigned int> failure = enterCluster(
      "ClusterAPI::getNextEvent", a + ", " + std::to_string(afterId) + ", " + std::to_string(dsid));
  if (failure) return *failure;
  const auto& queue = state().cluster[dsid];
  const auto found = queue.upper_bound(afterId);
  id = found == queue.end() ? 0 : found->first;
  if (id != 0) {
    second = found->second.member;
    eventString = found->second.text;
  }
  return 0;
}

unsigned int ClusterAPI::deleteEventById(const std::string& a, unsigned long id,
                                         unsigned int dsid) {
  const Guard guard;
  const std::optional<unsigned int> failure = enterCluster(
      "ClusterAPI::deleteEventById", a + ", " + std::to_string(id) + ", " + std::to_string(dsid));
  if (failure) return *failure;
  state().cluster[dsid].erase(id);
  return 0;
}
