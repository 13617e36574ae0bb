// Events for tests.
//
// Thread safety: pure functions and plain values; LiveEvent counts its objects without a lock.

#ifndef EVENTSYSTEM_TESTS_SUPPORT_EVENTS_H
#define EVENTSYSTEM_TESTS_SUPPORT_EVENTS_H

#include <ctime>
#include <memory>
#include <string>

#include "EventSystem/CapacityEvent.h"
#include "EventSystem/Event.h"

namespace EventSystemTest {

constexpr long kDay = 86400;

inline unsigned long now() {
  return static_cast<unsigned long>(std::time(nullptr));
}
inline unsigned long secondsAgo(long seconds) {
  return now() - static_cast<unsigned long>(seconds);
}

// The event string of a capacity event.
inline std::string capacityText(unsigned long id, unsigned long date,
                                const std::string& server = "node1") {
  return "EVENT{version:1;type:5;id:" + std::to_string(id) + ";date:" + std::to_string(date) +
         ";CAPACITYEVENT{capacity:1000;capacityphys:800;used:500;usedphys:400;server:" + server +
         ";}}";
}

inline std::unique_ptr<EventSystem::Event> parsed(const std::string& text) {
  EventSystem::Event* event = nullptr;
  EventSystem::Event::fromString(text.c_str(), &event);
  return std::unique_ptr<EventSystem::Event>(event);
}

// A capacity event without an id, dated now.
inline std::unique_ptr<EventSystem::Event> newCapacityEvent(std::string server = "node1") {
  return std::make_unique<EventSystem::CapacityEvent>(server.data(), 1000, 800, 500, 400, 0);
}

inline std::string textOf(EventSystem::Event& event) {
  std::string buffer(32768, '\0');
  event.toString(buffer.data(), buffer.size());
  return buffer.c_str();
}

// An event whose event string is whatever the test says.
class TextEvent : public EventSystem::Event {
 public:
  explicit TextEvent(std::string text, unsigned long date = 1700000000, unsigned long id = 0)
      : Event(EventSystem::kCapacityEvent, EventSystem::kInlinePayload, date, id),
        m_text(std::move(text)) {}

  int toString(char* buffer, unsigned long size) override;

 private:
  std::string m_text;
};

inline int TextEvent::toString(char* buffer, unsigned long size) {
  const std::size_t length = m_text.copy(buffer, size - 1);
  buffer[length] = '\0';
  return static_cast<int>(m_text.size());
}

// An event that is counted while it lives.
class LiveEvent : public TextEvent {
 public:
  LiveEvent(unsigned long id, unsigned long date) : TextEvent(capacityText(id, date), date, id) {
    ++count;
  }
  ~LiveEvent() override { --count; }

  static inline int count = 0;
};

}  // namespace EventSystemTest

#endif
