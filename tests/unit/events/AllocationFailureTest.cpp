// What happens when there is no memory for a parsed event: the exception reaches the caller of the
// class parser, and the caller's pointer is as it was.

#include <cstdlib>
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
#include "tests/support/FakeHostTest.h"
#include "tests/unit/events/EventKinds.h"

namespace {

// Allocations of exactly this size fail on this thread; 0: none does.
thread_local std::size_t refusedSize = 0;

}  // namespace

void* operator new(std::size_t size) {
  if (refusedSize != 0 && size == refusedSize) throw std::bad_alloc();
  if (void* const memory = std::malloc(size == 0 ? 1 : size)) return memory;
  throw std::bad_alloc();
}
void operator delete(void* memory) noexcept {
  std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
  std::free(memory);
}

namespace EventSystemTest {
namespace {

using namespace EventSystem;

std::size_t objectSize(int type) {
  switch (type) {
    case kLegacyEvent:
      return sizeof(LegacyEvent);
    case kImageRepEvent:
      return sizeof(ImageRepEvent);
    case kLSUStatusEvent:
      return sizeof(LSUStatusEvent);
    case kServerStatusEvent:
      return sizeof(ServerStatusEvent);
    case kCapacityEvent:
      return sizeof(CapacityEvent);
    case kAbilitiesEvent:
      return sizeof(AbilitiesEvent);
    case kActivityEvent:
      return sizeof(ActivityEvent);
    case kAuditEvent:
      return sizeof(AuditEvent);
    default:
      return sizeof(KelpEvent);
  }
}

class AllocationFailure : public FakeHostTest, public ::testing::WithParamInterface<Kind> {};

INSTANTIATE_TEST_SUITE_P(Events, AllocationFailure, ::testing::ValuesIn(allKinds()), nameOfKind);

TEST_P(AllocationFailure, LeavesTheCallersPointerAlone) {
  const std::string text = GetParam().line("text");
  const EventPtr other = GetParam().make("other", 1);
  Event* event = other.get();
  bool thrown = false;
  refusedSize = objectSize(GetParam().type);
  try {
    GetParam().parse(text.c_str(), &event);
  } catch (const std::bad_alloc&) {
    thrown = true;
  }
  refusedSize = 0;
  EXPECT_TRUE(thrown);
  EXPECT_EQ(other.get(), event);
  EXPECT_EQ(0, parse(text).code);
}

}  // namespace
}  // namespace EventSystemTest
