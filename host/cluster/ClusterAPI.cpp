#include "EventSystem/platform/ClusterAPI.h"

#include "EventSystem/platform/HostLog.h"
#include "host/cluster/ClusterService.h"
#include "host/cluster/LastCall.h"

namespace {

std::shared_ptr<EventSystemHost::ClusterClient> startedClient(const char* operation) {
  // What stands if the call does not return.
  EventSystemHost::noteClusterCall({.failure = "the call was given up", .open = true});
  auto client = EventSystemHost::clusterClient();
  if (!client) {
    EventSystemHost::noteClusterCall({.failure = "the cluster service is not started"});
    ErrorA(4, "%s the cluster service is not started", operation);
  }
  return client;
}

// The library writes an event string into a buffer of this size, and cuts what does not fit.
constexpr std::size_t kLibraryBuffer = 2048;

// Every section ends so. A text within it may hold "}}", as JSON does, where it happens to be cut.
constexpr const char* kEndOfSection = ";}}";

bool isCut(const std::string& eventString) {
  return eventString.size() >= kLibraryBuffer - 1 && !eventString.ends_with(kEndOfSection);
}

}  // namespace

ClusterAPI& ClusterAPI::instance() {
  static ClusterAPI theOne;
  return theOne;
}

unsigned int ClusterAPI::newEvent(const std::string& a, const std::string& b,
                                  const std::string& eventString, unsigned long id,
                                  unsigned long& newId, unsigned int dsid) {
  const auto client = startedClient(__func__);
  if (!client) return EventSystemHost::kClusterNotStarted;
  if (isCut(eventString)) {
    EventSystemHost::noteClusterCall({.failure = "the event string does not fit and was cut"});
    ErrorA(4, "%s The event string does not fit and was cut; it is not stored: %s", __func__,
           eventString.c_str());
    return EventSystemHost::kClusterBadArgument;
  }
  const unsigned int status = client->newEvent(a, b, eventString, id, newId, dsid);
  if (status == 0) EventSystemHost::noteClusterCall({.newId = newId});
  return status;
}

unsigned int ClusterAPI::getNextEvent(const std::string& a, unsigned long afterId,
                                      unsigned long& id, std::string& second,
                                      std::string& eventString, unsigned int dsid) {
  const auto client = startedClient(__func__);
  if (!client) return EventSystemHost::kClusterNotStarted;
  return client->getNextEvent(a, afterId, id, second, eventString, dsid);
}

unsigned int ClusterAPI::deleteEventById(const std::string& a, unsigned long id,
                                         unsigned int dsid) {
  const auto client = startedClient(__func__);
  if (!client) return EventSystemHost::kClusterNotStarted;
  return client->deleteEventById(a, id, dsid);
}
