// Events that can be told apart: each carries a number in its text, and nothing else is random
// about it than its number. The records of the audit database carry theirs in the same way.
//
// Thread safety: pure functions.

#ifndef EVENTSYSTEM_TESTS_DEATH_EVENTMAKER_H
#define EVENTSYSTEM_TESTS_DEATH_EVENTMAKER_H

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "EventSystem/Event.h"

namespace EventSystemTest {

// The event of that number, of one of the nine kinds; `room` bounds its free text.
std::unique_ptr<EventSystem::Event> makeEvent(std::uint64_t number, unsigned int room);

// What an audit record of that number holds as its content.
std::string auditContentOf(std::uint64_t number);

std::string eventStringOf(EventSystem::Event& event);

// The text as it is when the event has that id; `text` has another one or 0.
std::string withId(const std::string& text, std::uint64_t id);

// The number that an event string carries, and whether it is an audit record's.
struct EventNumber {
  std::uint64_t number = 0;
  bool ofAudit = false;
  bool operator==(const EventNumber&) const = default;
};
std::optional<EventNumber> numberOf(const std::string& text);

}  // namespace EventSystemTest

#endif
