// Where the event classes keep things: hosts compiled against version 1 rely on it.

#include <type_traits>

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
#include "tests/support/ObjectLayout.h"
#include "tests/support/PrivateAccess.h"
#include "tests/unit/events/EventKinds.h"

namespace EventSystemTest {

using namespace EventSystem;

EVENTSYSTEM_TEST_ACCESS(EventId, unsigned long Event::*, &Event::m_id)
EVENTSYSTEM_TEST_ACCESS(EventType, eventType Event::*, &Event::m_type)
EVENTSYSTEM_TEST_ACCESS(EventPayloadType, eventPayloadType Event::*, &Event::m_payloadType)
EVENTSYSTEM_TEST_ACCESS(EventDate, unsigned long Event::*, &Event::m_date)
EVENTSYSTEM_TEST_ACCESS(LsuServer, char* LSUStatusEvent::*, &LSUStatusEvent::m_server)
EVENTSYSTEM_TEST_ACCESS(LsuState, LSUStatusEvent::lsuState LSUStatusEvent::*,
                        &LSUStatusEvent::m_state)
EVENTSYSTEM_TEST_ACCESS(ServerServer, char* ServerStatusEvent::*, &ServerStatusEvent::m_server)
EVENTSYSTEM_TEST_ACCESS(ServerState, ServerStatusEvent::serverState ServerStatusEvent::*,
                        &ServerStatusEvent::m_state)
EVENTSYSTEM_TEST_ACCESS(CapacityServer, char* CapacityEvent::*, &CapacityEvent::m_server)
EVENTSYSTEM_TEST_ACCESS(CapacityTotal, unsigned long CapacityEvent::*, &CapacityEvent::m_capacity)
EVENTSYSTEM_TEST_ACCESS(CapacityPhysical, unsigned long CapacityEvent::*,
                        &CapacityEvent::m_capacityphys)
EVENTSYSTEM_TEST_ACCESS(CapacityUsed, unsigned long CapacityEvent::*, &CapacityEvent::m_used)
EVENTSYSTEM_TEST_ACCESS(CapacityUsedPhysical, unsigned long CapacityEvent::*,
                        &CapacityEvent::m_usedphys)
EVENTSYSTEM_TEST_ACCESS(AbilitiesServer, char* AbilitiesEvent::*, &AbilitiesEvent::m_server)
EVENTSYSTEM_TEST_ACCESS(AbilitiesFlags, int AbilitiesEvent::*, &AbilitiesEvent::m_flags)
EVENTSYSTEM_TEST_ACCESS(ActivityMessage, char* ActivityEvent::*, &ActivityEvent::m_msg)
EVENTSYSTEM_TEST_ACCESS(ActivityAction, int ActivityEvent::*, &ActivityEvent::m_action)
EVENTSYSTEM_TEST_ACCESS(ActivitySeverity, int ActivityEvent::*, &ActivityEvent::m_severity)
EVENTSYSTEM_TEST_ACCESS(ActivityTime, unsigned long ActivityEvent::*, &ActivityEvent::m_time)
EVENTSYSTEM_TEST_ACCESS(AuditVersion, int AuditEvent::*, &AuditEvent::m_version)
EVENTSYSTEM_TEST_ACCESS(AuditAction, int AuditEvent::*, &AuditEvent::m_action)
EVENTSYSTEM_TEST_ACCESS(AuditLoadSize, int AuditEvent::*, &AuditEvent::m_loadSize)
EVENTSYSTEM_TEST_ACCESS(AuditTime, unsigned long AuditEvent::*, &AuditEvent::m_time)
EVENTSYSTEM_TEST_ACCESS(DetachedSize, unsigned int DetachedEvent::*, &DetachedEvent::m_payloadSize)
EVENTSYSTEM_TEST_ACCESS(KelpVersion, int KelpEvent::*, &KelpEvent::m_version)
EVENTSYSTEM_TEST_ACCESS(KelpDuration, int KelpEvent::*, &KelpEvent::m_issueDuration)
EVENTSYSTEM_TEST_ACCESS(KelpGroup, unsigned long KelpEvent::*, &KelpEvent::m_fileGroup)
EVENTSYSTEM_TEST_ACCESS(KelpName, int KelpEvent::*, &KelpEvent::m_name)
EVENTSYSTEM_TEST_ACCESS(KelpHost, int KelpEvent::*, &KelpEvent::m_host)
EVENTSYSTEM_TEST_ACCESS(KelpString, char* KelpEvent::*, &KelpEvent::m_string)

namespace {

// The places of the functions that every event has, and how many there are in all.
template <typename Class>
void expectCommonSlots(const char* name, std::size_t size) {
  SCOPED_TRACE(name);
  EXPECT_EQ(2u, vtableSlot(&Class::toString));
  EXPECT_EQ(3u, vtableSlot(&Class::getId));
  EXPECT_EQ(4u, vtableSlot(&Class::getType));
  EXPECT_EQ(5u, vtableSlot(&Class::getDate));
  EXPECT_EQ(size, vtableSize(name));
}

TEST(EventLayout, VirtualFunctionsKeepTheirPlaces) {
  expectCommonSlots<Event>("Event", 6);
  expectCommonSlots<DetachedEvent>("DetachedEvent", 6);
  expectCommonSlots<ImageRepEvent>("ImageRepEvent", 6);
  expectCommonSlots<LSUStatusEvent>("LSUStatusEvent", 6);
  expectCommonSlots<ServerStatusEvent>("ServerStatusEvent", 6);
  expectCommonSlots<CapacityEvent>("CapacityEvent", 6);
  expectCommonSlots<AbilitiesEvent>("AbilitiesEvent", 6);
  expectCommonSlots<ActivityEvent>("ActivityEvent", 6);
  expectCommonSlots<KelpEvent>("KelpEvent", 6);
  expectCommonSlots<AuditEvent>("AuditEvent", 7);
  expectCommonSlots<LegacyEvent>("LegacyEvent", 7);
}

TEST(EventLayout, PayloadIsTheLastVirtualFunctionOfTheTwoClassesThatHaveIt) {
  EXPECT_EQ(6u, vtableSlot(&AuditEvent::getPayload));
  EXPECT_EQ(6u, vtableSlot(&LegacyEvent::getPayload));
}

TEST(EventLayout, AccessorsOfSingleClassesAreNotVirtual) {
  EXPECT_EQ(kNotVirtual, vtableSlot(&LSUStatusEvent::getState));
  EXPECT_EQ(kNotVirtual, vtableSlot(&ServerStatusEvent::getState));
  EXPECT_EQ(kNotVirtual, vtableSlot(&DetachedEvent::getPayloadPath));
  EXPECT_EQ(kNotVirtual, vtableSlot(&DetachedEvent::getPayloadSize));
  EXPECT_EQ(kNotVirtual, vtableSlot(&DetachedEvent::deletePayloadFile));
  EXPECT_EQ(kNotVirtual, vtableSlot(&ImageRepEvent::setLSU));
  EXPECT_EQ(kNotVirtual, vtableSlot(&ImageRepEvent::getLSU));
}

// getId(), getType() and getDate() are the base's in every class.
template <typename Class>
constexpr bool kInheritsAccessors =
    std::is_same_v<decltype(&Class::getId), unsigned long (Event::*)()>&&
        std::is_same_v<decltype(&Class::getType), eventType (Event::*)()>&&
            std::is_same_v<decltype(&Class::getDate), unsigned long (Event::*)()>;
static_assert(kInheritsAccessors<LSUStatusEvent> && kInheritsAccessors<ServerStatusEvent> &&
              kInheritsAccessors<CapacityEvent> && kInheritsAccessors<AbilitiesEvent> &&
              kInheritsAccessors<ActivityEvent> && kInheritsAccessors<AuditEvent> &&
              kInheritsAccessors<LegacyEvent> && kInheritsAccessors<DetachedEvent> &&
              kInheritsAccessors<ImageRepEvent> && kInheritsAccessors<KelpEvent>);
static_assert(
    std::is_same_v<decltype(&DetachedEvent::toString), int (Event::*)(char*, unsigned long)>);

TEST(EventLayout, SizesAreFixed) {
  EXPECT_EQ(32u, sizeof(Event));
  EXPECT_EQ(48u, sizeof(LSUStatusEvent));
  EXPECT_EQ(48u, sizeof(ServerStatusEvent));
  EXPECT_EQ(72u, sizeof(CapacityEvent));
  EXPECT_EQ(48u, sizeof(AbilitiesEvent));
  EXPECT_EQ(56u, sizeof(ActivityEvent));
  EXPECT_EQ(10296u, sizeof(AuditEvent));
  EXPECT_EQ(2080u, sizeof(LegacyEvent));
  EXPECT_EQ(2088u, sizeof(DetachedEvent));
  EXPECT_EQ(3112u, sizeof(ImageRepEvent));
  EXPECT_EQ(80u, sizeof(KelpEvent));
}

TEST(EventLayout, TheRecordHoldsIdTypePayloadTypeAndDateInThisOrder) {
  EXPECT_EQ(8u, memberOffset(access(EventId())));
  EXPECT_EQ(16u, memberOffset(access(EventType())));
  EXPECT_EQ(20u, memberOffset(access(EventPayloadType())));
  EXPECT_EQ(24u, memberOffset(access(EventDate())));
}

TEST(EventLayout, StatusEventsHoldTheServerFirst) {
  EXPECT_EQ(32u, memberOffset(access(LsuServer())));
  EXPECT_EQ(40u, memberOffset(access(LsuState())));
  EXPECT_EQ(32u, memberOffset(access(ServerServer())));
  EXPECT_EQ(40u, memberOffset(access(ServerState())));
  EXPECT_EQ(32u, memberOffset(access(CapacityServer())));
  EXPECT_EQ(40u, memberOffset(access(CapacityTotal())));
  EXPECT_EQ(48u, memberOffset(access(CapacityPhysical())));
  EXPECT_EQ(56u, memberOffset(access(CapacityUsed())));
  EXPECT_EQ(64u, memberOffset(access(CapacityUsedPhysical())));
  EXPECT_EQ(32u, memberOffset(access(AbilitiesServer())));
  EXPECT_EQ(40u, memberOffset(access(AbilitiesFlags())));
}

TEST(EventLayout, MessageEventsHoldTheMessageFirst) {
  EXPECT_EQ(32u, memberOffset(access(ActivityMessage())));
  EXPECT_EQ(40u, memberOffset(access(ActivityAction())));
  EXPECT_EQ(44u, memberOffset(access(ActivitySeverity())));
  EXPECT_EQ(48u, memberOffset(access(ActivityTime())));
  EXPECT_EQ(32u + 10240u, memberOffset(access(AuditVersion())));
  EXPECT_EQ(32u + 10244u, memberOffset(access(AuditAction())));
  EXPECT_EQ(32u + 10248u, memberOffset(access(AuditLoadSize())));
  EXPECT_EQ(32u + 10256u, memberOffset(access(AuditTime())));
}

TEST(EventLayout, FileShareAndPayloadFileEventsKeepTheirOrder) {
  EXPECT_EQ(32u + 2048u, memberOffset(access(DetachedSize())));
  EXPECT_EQ(32u, memberOffset(access(KelpVersion())));
  EXPECT_EQ(48u, memberOffset(access(KelpDuration())));
  EXPECT_EQ(56u, memberOffset(access(KelpGroup())));
  EXPECT_EQ(64u, memberOffset(access(KelpName())));
  EXPECT_EQ(68u, memberOffset(access(KelpHost())));
  EXPECT_EQ(72u, memberOffset(access(KelpString())));
}

class PayloadType : public FakeHostTest, public ::testing::WithParamInterface<Kind> {};

INSTANTIATE_TEST_SUITE_P(Events, PayloadType, ::testing::ValuesIn(allKinds()), nameOfKind);

TEST_P(PayloadType, IsDetachedForImagesOnly) {
  const int expected = GetParam().type == 2 ? 1 : 0;
  const EventPtr made = GetParam().make("text", 1);
  EXPECT_EQ(expected, (*made).*access(EventPayloadType()));
  const Parsed parsed = parse(GetParam().line("text"));
  ASSERT_EQ(0, parsed.code);
  EXPECT_EQ(expected, (*parsed.event).*access(EventPayloadType()));
}

// A text field that is absent is a null pointer inside, not an empty text.
TEST(EventLayout, NullNamesAreNullInside) {
  CapacityEvent capacity(nullptr, 1, 2, 3, 4, 1);
  EXPECT_EQ(nullptr, capacity.*access(CapacityServer()));
  for (const char* name : {"(NULL)", "(NULL) x"}) {
    const Parsed parsed = parseWith(AbilitiesEvent::fromString,
                                    std::string("ABILITIESEVENT{flags:0x1;server:") + name + ";}}");
    ASSERT_EQ(0, parsed.code);
    EXPECT_EQ(nullptr, dynamic_cast<AbilitiesEvent&>(*parsed.event).*access(AbilitiesServer()));
  }
}

TEST(EventLayout, EmptyMessagesAreNotNullInside) {
  const Parsed parsed = parseWith(ActivityEvent::fromString,
                                  "ACTIVITYEVENT{version:1;action:1;time:1;severity:1;msg:;}}");
  ASSERT_EQ(0, parsed.code);
  EXPECT_STREQ("", dynamic_cast<ActivityEvent&>(*parsed.event).*access(ActivityMessage()));
}

TEST(EventLayout, TheUnusedNumberOfAFileShareEventIsZeroAfterParsing) {
  const Parsed group = parse(eventString(
      9,
      ";KELPEVENT{version:1;severity:2;issue:3;share_type:1;issue_duration:60;file_group:77;"
      "name:4;host:5;string:s;}}"));
  ASSERT_EQ(0, group.code);
  EXPECT_EQ(0, dynamic_cast<KelpEvent&>(*group.event).*access(KelpDuration()));
  EXPECT_EQ(77u, dynamic_cast<KelpEvent&>(*group.event).*access(KelpGroup()));
  const Parsed duration = parse(eventString(
      9,
      ";KELPEVENT{version:1;severity:2;issue:5;share_type:1;file_group:77;issue_duration:60;"
      "name:4;host:5;string:s;}}"));
  ASSERT_EQ(0, duration.code);
  EXPECT_EQ(60, dynamic_cast<KelpEvent&>(*duration.event).*access(KelpDuration()));
  EXPECT_EQ(0u, dynamic_cast<KelpEvent&>(*duration.event).*access(KelpGroup()));
}

}  // namespace
}  // namespace EventSystemTest
