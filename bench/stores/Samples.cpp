#include "bench/stores/Samples.h"

#include <string>

#include "EventSystem/AuditEvent.h"
#include "EventSystem/CapacityEvent.h"

namespace EventSystemBench {

std::unique_ptr<EventSystem::Event> makeEvent(Sample sample) {
  if (sample == kShort) {
    char server[] = "storage-server-17.example.com";
    return std::make_unique<EventSystem::CapacityEvent>(server, 1099511627776UL, 824633720832UL,
                                                        549755813888UL, 412316860416UL, 0);
  }
  std::string message(700, 'm');
  return std::make_unique<EventSystem::AuditEvent>(message.data(), 1, 2, 1700000000UL, 3, 0);
}

std::unique_ptr<EventSystem::Event> throughText(EventSystem::Event& event) {
  char text[2048];
  event.toString(text, sizeof text);
  EventSystem::Event* parsed = nullptr;
  EventSystem::Event::fromString(text, &parsed);
  return std::unique_ptr<EventSystem::Event>(parsed);
}

}  // namespace EventSystemBench
