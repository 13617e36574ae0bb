// Each allocation fails while an event of each kind is made, parsed, written and copied by its
// text: the failure comes out, and no event with it.

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <new>

#include "EventSystem/AbilitiesEvent.h"
#include "EventSystem/ActivityEvent.h"
#include "EventSystem/AuditEvent.h"
#include "EventSystem/CapacityEvent.h"
#include "EventSystem/ImageRepEvent.h"
#include "EventSystem/KelpEvent.h"
#include "EventSystem/LSUStatusEvent.h"
#include "EventSystem/LegacyEvent.h"
#include "EventSystem/ServerStatusEvent.h"
#include "FailingNew.h"
#include "FaultTable.h"
#include "tests/support/Events.h"
#include "tests/support/FakeHostTest.h"

namespace EventSystemTest {
namespace {

using namespace EventSystem;

using OwnedEvent = std::unique_ptr<Event>;

struct EventKind {
  std::string name;
  std::function<OwnedEvent()> make;
};

char text[] = "some text";

const std::vector<EventKind>& kinds() {
  static const std::vector<EventKind> all = {
      {"LegacyEvent", [] { return std::make_unique<LegacyEvent>(text, 0); }},
      {"ImageRepEvent", [] { return std::make_unique<ImageRepEvent>(text, 7u, 0, "lsu"); }},
      {"LSUStatusEvent",
       [] { return std::make_unique<LSUStatusEvent>(text, LSUStatusEvent::lsuState(2), 0); }},
      {"ServerStatusEvent",
       [] {
         return std::make_unique<ServerStatusEvent>(text, ServerStatusEvent::serverState(1), 0);
       }},
      {"CapacityEvent", [] { return std::make_unique<CapacityEvent>(text, 1, 2, 3, 4, 0); }},
      {"AbilitiesEvent", [] { return std::make_unique<AbilitiesEvent>(5, text, 0); }},
      {"ActivityEvent", [] { return std::make_unique<ActivityEvent>(1, 2, 3, text, 0); }},
      {"AuditEvent", [] { return std::make_unique<AuditEvent>(text, 1, 2, 3, 4, 0); }},
      {"KelpEvent", [] { return std::make_unique<KelpEvent>(1, 2, 3, 4, 5, 6, 7, 8, text, 0); }}};
  return all;
}

class EventMemory : public FakeHostTest, public testing::WithParamInterface<std::size_t> {
 protected:
  void SetUp() override {
    FakeHostTest::SetUp();
    FailingNew::exempt(FakeHost::isInside);
  }

  const EventKind& kind() const { return kinds().at(GetParam()); }

  // Runs it with each allocation failing in turn; how many there are.
  std::size_t failEach(const std::string& operation, const std::function<void()>& body) {
    std::size_t allocations = 0;
    for (std::size_t n = 0; n <= allocations; ++n) {
      std::string result = "done";
      try {
        const FailingNew failing(n);
        body();
        if (n == 0) allocations = failing.count();
      } catch (const std::bad_alloc&) {
        result = "bad_alloc";
      }
      EXPECT_EQ(n == 0 ? "done" : "bad_alloc", result) << operation << ", allocation " << n;
      if (n != 0) FaultTable::instance().note(kind().name + operation, "allocation fails", result);
    }
    return allocations;
  }
};

TEST_P(EventMemory, IsWantedInVainWhenAnEventIsMade) {
  EXPECT_LT(0u, failEach("()", [this] { kind().make(); }));
}

TEST_P(EventMemory, IsNotWantedWhenAnEventIsWritten) {
  const OwnedEvent event = kind().make();
  char buffer[2048];
  EXPECT_EQ(0u, failEach("::toString", [&] { event->toString(buffer, sizeof buffer); }));
  EXPECT_EQ(textOf(*event), buffer);
}

TEST_P(EventMemory, IsWantedInVainWhenAnEventIsParsedAndNoEventComesOfIt) {
  const std::string written = textOf(*kind().make());
  Event* parsed = nullptr;
  const auto parse = [&] {
    delete parsed;
    parsed = nullptr;
    Event::fromString(written.c_str(), &parsed);
  };
  const std::size_t allocations = failEach("::fromString", parse);
  EXPECT_LT(0u, allocations);
  EXPECT_EQ(nullptr, parsed) << "the last of them failed";
  parse();
  const OwnedEvent event(parsed);
  EXPECT_EQ(written, textOf(*event));
}

INSTANTIATE_TEST_SUITE_P(OfEachKind, EventMemory, testing::Range(std::size_t{0}, kinds().size()),
                         [](const auto& instance) { return kinds().at(instance.param).name; });

}  // namespace
}  // namespace EventSystemTest
