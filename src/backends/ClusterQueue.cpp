#include "ClusterQueue.h"

#include <mutex>

#include "EventSystem/ResultCode.h"
#include "EventSystem/platform/ClusterAPI.h"
#include "EventSystem/platform/HostConfig.h"
#include "EventSystem/platform/HostLog.h"

namespace EventSystem {
namespace {

// A text of the host's configuration, read when nobody is changing it.
std::string configured(const char* text) {
  { const std::lock_guard<ConfigManager> settled(configManager); }
  return text;
}

void traceCall(const char* function) {
  if (TraceOn()) __Trace("%s", function);
}

}  // namespace

int ClusterQueue::write(Event* event) const {
  constexpr char kFunction[] = "writeEvent";
  traceCall(kFunction);
  if (event == nullptr) {
    ErrorA(kStoreFailure, "%s New event is NULL!", kFunction);
    return kGeneralFailure;
  }
  ClusterAPI& service = ClusterAPI::instance();
  char eventString[2048] = "";
  event->toString(eventString, sizeof eventString);
  unsigned long newId = 0;
  const unsigned int result = service.newEvent(configured(configManager.clusterQueue),
                                               configured(configManager.clusterMember), eventString,
                                               event->getId(), newId, m_dsid);
  if (result == kSuccess && newId != 0) return kSuccess;
  ErrorA(kStoreFailure, "%s Failed to write event", kFunction);
  return kStoreFailure;
}

int ClusterQueue::next(unsigned long afterId, Entry& entry, Event** event) const {
  traceCall("getNextEvent");
  if (event == nullptr) {
    ErrorA(kStoreFailure, "%s The event pointer is NULL.", "getNextEvent");
    return kGeneralFailure;
  }
  *event = nullptr;
  const int found = ask(afterId, entry);
  if (found != kSuccess || entry.id == 0) return found;
  return Event::fromString(entry.eventString.c_str(), event);
}

int ClusterQueue::ask(unsigned long afterId, Entry& entry) const {
  constexpr char kFunction[] = "getNextEvent";
  ClusterAPI& service = ClusterAPI::instance();
  std::string member;
  if (service.getNextEvent(configured(configManager.clusterQueue), afterId, entry.id, member,
                           entry.eventString, m_dsid) != kSuccess) {
    ErrorA(kStoreFailure, "%s Failed to get next event", kFunction);
    return kStoreFailure;
  }
  if (entry.id == 0) {
    InfoA(2, "%s No event exists in the database with event id greater than: %lu", kFunction,
          afterId);
  }
  return kSuccess;
}

void ClusterQueue::reportUnreadable(const Entry& entry) {
  ErrorA(kStoreFailure,
         "%s The event record for id %lu retrieved from the database is unreadable: %s",
         "getNextEvent", entry.id, entry.eventString.c_str());
}

void ClusterQueue::remove(unsigned long id) const {
  constexpr char kFunction[] = "deleteEvent";
  traceCall(kFunction);
  ClusterAPI& service = ClusterAPI::instance();
  if (service.deleteEventById(configured(configManager.clusterQueue), id, m_dsid) != kSuccess) {
    ErrorA(kStoreFailure, "%s Error deleting event", kFunction);
  }
}

}  // namespace EventSystem
