#include "apps/eventd/api/EventStreams.h"

#include <vector>

namespace EventApps::Api {

void EventStreams::add(const std::shared_ptr<EventStream>& stream) {
  const std::lock_guard lock(m_mutex);
  m_streams.insert(stream);
}

void EventStreams::remove(const std::shared_ptr<EventStream>& stream) {
  const std::lock_guard lock(m_mutex);
  m_streams.erase(stream);
}

// A stream that ends meanwhile removes itself.
void EventStreams::tick() {
  std::vector<std::shared_ptr<EventStream>> streams;
  {
    const std::lock_guard lock(m_mutex);
    streams.assign(m_streams.begin(), m_streams.end());
  }
  const auto now = EventStream::Clock::now();
  for (const auto& stream : streams) stream->tick(now, m_heartbeat);
}

}  // namespace EventApps::Api
