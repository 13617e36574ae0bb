// Reads a whole queue through a client.
//
// Thread safety: as ClusterClient.

#ifndef EVENTSYSTEM_TESTS_CLUSTER_QUEUEREADER_H
#define EVENTSYSTEM_TESTS_CLUSTER_QUEUEREADER_H

#include <stdexcept>
#include <string>
#include <tuple>
#include <vector>

#include "host/cluster/ClusterClient.h"

namespace EventSystemTest {

struct StoredEvent {
  unsigned long id = 0;
  std::string member;
  std::string text;

  friend bool operator==(const StoredEvent&, const StoredEvent&) = default;
};

// The first event after an id; id 0 at the end of the queue.
inline StoredEvent eventAfter(EventSystemHost::ClusterClient& client, unsigned long afterId,
                              const std::string& queue = "events", unsigned int dsid = 0) {
  StoredEvent event;
  if (client.getNextEvent(queue, afterId, event.id, event.member, event.text, dsid) != 0) {
    throw std::runtime_error("getNextEvent failed");
  }
  return event;
}

inline std::vector<StoredEvent> allEvents(EventSystemHost::ClusterClient& client,
                                          const std::string& queue = "events",
                                          unsigned int dsid = 0) {
  std::vector<StoredEvent> events;
  for (StoredEvent event = eventAfter(client, 0, queue, dsid); event.id != 0;
       event = eventAfter(client, event.id, queue, dsid)) {
    events.push_back(event);
  }
  return events;
}

// Stores an event in the global queue "events": its id, or 0 when that failed.
inline unsigned long store(EventSystemHost::ClusterClient& client, const std::string& text,
                           unsigned long id = 0, const std::string& member = "alpha") {
  unsigned long newId = 0;
  return client.newEvent("events", member, text, id, newId, 0) == 0 ? newId : 0;
}

}  // namespace EventSystemTest

#endif
