#include <memory>
#include <stdexcept>

#include "EventSystem/EventManager.h"
#include "bench/stores/BenchHome.h"
#include "bench/stores/Samples.h"
#include "bench/stores/StoreTables.h"

namespace EventSystemBench {

void repeatCall(const std::string& call, int count) {
  constexpr int kHeld = 10000;
  const BenchHome home("relaxed");
  const EventSystemHost::Host host(optionsFor(home.path()));
  EventSystem::EventManager manager;
  const auto event = makeEvent(kShort);
  const int first = call == "delete" ? count : kHeld;
  for (int i = 0; i < first; ++i) manager.newEvent(event.get(), 0);
  for (int i = 0; i < count; ++i) {
    if (call == "new") {
      manager.newEvent(event.get(), 0);
    } else if (call == "next") {
      EventSystem::Event* next = nullptr;
      manager.getNextEvent(static_cast<unsigned long>(i % kHeld), &next, 0);
      delete next;
    } else if (call == "delete") {
      manager.deleteEvent(static_cast<unsigned long>(i) + 1, 0);
    } else {
      throw std::invalid_argument("no call is named " + call);
    }
  }
}

}  // namespace EventSystemBench
