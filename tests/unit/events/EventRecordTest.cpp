// The base record: its four values, and the envelope that it writes.

#include <ctime>
#include <string>
#include <type_traits>

#include "EventSystem/Event.h"
#include "tests/support/FakeHostTest.h"
#include "tests/unit/events/EventKinds.h"

namespace EventSystemTest {
namespace {

using namespace EventSystem;
using ::testing::ElementsAre;
using ::testing::Ge;
using ::testing::IsEmpty;
using ::testing::Le;

constexpr unsigned long kLargest = 18446744073709551615ul;

class EventRecord : public FakeHostTest {};

static_assert(std::has_virtual_destructor_v<Event>);
static_assert(!std::is_copy_constructible_v<Event> && !std::is_copy_assignable_v<Event>);
static_assert(sizeof(eventType) == 4 && sizeof(eventPayloadType) == 4);

TEST_F(EventRecord, HoldsWhatItWasGiven) {
  Event event(kCapacityEvent, kInlinePayload, 1700000000, 42);
  EXPECT_EQ(42u, event.getId());
  EXPECT_EQ(kCapacityEvent, event.getType());
  EXPECT_EQ(1700000000u, event.getDate());
}

TEST_F(EventRecord, KeepsUnsignedExtremes) {
  Event event(kKelpEvent, kDetachedPayload, kLargest, kLargest);
  EXPECT_EQ(kLargest, event.getId());
  EXPECT_EQ(kLargest, event.getDate());
  EXPECT_EQ("EVENT{version:1;type:9;id:18446744073709551615;date:18446744073709551615",
            written(event));
}

TEST_F(EventRecord, DateZeroStandsForNow) {
  const auto before = static_cast<unsigned long>(time(nullptr));
  Event event(kCapacityEvent, kInlinePayload, 0, 1);
  const auto after = static_cast<unsigned long>(time(nullptr));
  EXPECT_THAT(event.getDate(), Ge(before));
  EXPECT_THAT(event.getDate(), Le(after));
}

TEST_F(EventRecord, DateOneIsKept) {
  EXPECT_EQ(1u, Event(kCapacityEvent, kInlinePayload, 1, 1).getDate());
}

TEST_F(EventRecord, WritesTheEnvelopeAlone) {
  Event event(kAbilitiesEvent, kInlinePayload, 1700000000, 42);
  EXPECT_EQ("EVENT{version:1;type:6;id:42;date:1700000000", written(event));
  EXPECT_THAT(host().log(), IsEmpty());
}

TEST_F(EventRecord, WritesTheTypeAsASignedNumber) {
  Event event(static_cast<eventType>(-7), kInlinePayload, 2, 0);
  EXPECT_EQ("EVENT{version:1;type:-7;id:0;date:2", written(event));
}

TEST_F(EventRecord, ReturnsTheFullLengthWhateverTheBufferHolds) {
  Event event(kAbilitiesEvent, kInlinePayload, 1700000000, 42);
  const std::string whole = "EVENT{version:1;type:6;id:42;date:1700000000";
  for (std::size_t size = 0; size <= whole.size() + 1; ++size) {
    std::string buffer(whole.size() + 8, '#');
    ASSERT_EQ(whole.size(), static_cast<std::size_t>(event.toString(buffer.data(), size)));
    std::string wanted(buffer.size(), '#');
    if (size > 0) wanted.replace(0, size, whole.substr(0, size - 1) + '\0');
    ASSERT_EQ(wanted, buffer) << size;
  }
}

TEST_F(EventRecord, RefusesToWriteIntoNothing) {
  Event event(kAbilitiesEvent, kInlinePayload, 1, 1);
  EXPECT_EQ(9, event.toString(nullptr, 100));
  EXPECT_THAT(host().log(), ElementsAre(error(9, "%s The string buffer is NULL.", "toString")));
}

TEST_F(EventRecord, TypeNumbersAreFixed) {
  EXPECT_THAT(
      (std::vector<int>{kLegacyEvent, kImageRepEvent, kLSUStatusEvent, kServerStatusEvent,
                        kCapacityEvent, kAbilitiesEvent, kActivityEvent, kAuditEvent, kKelpEvent}),
      ElementsAre(1, 2, 3, 4, 5, 6, 7, 8, 9));
  EXPECT_EQ(0, kInlinePayload);
  EXPECT_EQ(1, kDetachedPayload);
}

}  // namespace
}  // namespace EventSystemTest
