// All clients that are sent events as they arrive.
//
// Thread safety: any thread.

#ifndef EVENTSYSTEM_APPS_EVENTD_API_EVENTSTREAMS_H
#define EVENTSYSTEM_APPS_EVENTD_API_EVENTSTREAMS_H

#include <chrono>
#include <memory>
#include <mutex>
#include <set>

#include "apps/eventd/api/EventStream.h"

namespace EventApps::Api {

class EventStreams {
 public:
  explicit EventStreams(std::chrono::milliseconds heartbeat) : m_heartbeat(heartbeat) {}

  void add(const std::shared_ptr<EventStream>& stream);
  void remove(const std::shared_ptr<EventStream>& stream);

  // To be called several times a second.
  void tick();

 private:
  const std::chrono::milliseconds m_heartbeat;
  std::mutex m_mutex;
  std::set<std::shared_ptr<EventStream>> m_streams;
};

}  // namespace EventApps::Api

#endif
