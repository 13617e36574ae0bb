// Writing, and what else needs the members of events.

#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <typeinfo>

#include "EventSystem/AbilitiesEvent.h"
#include "EventSystem/ActivityEvent.h"
#include "EventSystem/AuditEvent.h"
#include "EventSystem/CapacityEvent.h"
#include "EventSystem/ImageRepEvent.h"
#include "EventSystem/KelpEvent.h"
#include "EventSystem/LSUStatusEvent.h"
#include "EventSystem/LegacyEvent.h"
#include "EventSystem/ResultCode.h"
#include "EventSystem/ServerStatusEvent.h"
#include "EventSystem/platform/HostLog.h"
#include "EventSystem/platform/HostText.h"
#include "tests/oracle/events/EventMembers.h"
#include "tests/oracle/events/EventOracle.h"
#include "tests/support/PrivateAccess.h"

namespace EventSystemTest {

using namespace EventSystem;

EVENTSYSTEM_TEST_ACCESS(OracleId, unsigned long Event::*, &Event::m_id)
EVENTSYSTEM_TEST_ACCESS(OracleType, eventType Event::*, &Event::m_type)
EVENTSYSTEM_TEST_ACCESS(OraclePayloadType, eventPayloadType Event::*, &Event::m_payloadType)
EVENTSYSTEM_TEST_ACCESS(OracleDate, unsigned long Event::*, &Event::m_date)
EVENTSYSTEM_TEST_ACCESS(LsuStatusServer, char* LSUStatusEvent::*, &LSUStatusEvent::m_server)
EVENTSYSTEM_TEST_ACCESS(LsuStatusState, LSUStatusEvent::lsuState LSUStatusEvent::*,
                        &LSUStatusEvent::m_state)
EVENTSYSTEM_TEST_ACCESS(ServerStatusServer, char* ServerStatusEvent::*,
                        &ServerStatusEvent::m_server)
EVENTSYSTEM_TEST_ACCESS(ServerStatusState, ServerStatusEvent::serverState ServerStatusEvent::*,
                        &ServerStatusEvent::m_state)
EVENTSYSTEM_TEST_ACCESS(CapacityServerName, char* CapacityEvent::*, &CapacityEvent::m_server)
EVENTSYSTEM_TEST_ACCESS(CapacityCapacity, unsigned long CapacityEvent::*,
                        &CapacityEvent::m_capacity)
EVENTSYSTEM_TEST_ACCESS(CapacityCapacityphys, unsigned long CapacityEvent::*,
                        &CapacityEvent::m_capacityphys)
EVENTSYSTEM_TEST_ACCESS(CapacityUsedSpace, unsigned long CapacityEvent::*, &CapacityEvent::m_used)
EVENTSYSTEM_TEST_ACCESS(CapacityUsedphys, unsigned long CapacityEvent::*,
                        &CapacityEvent::m_usedphys)
EVENTSYSTEM_TEST_ACCESS(AbilitiesServerName, char* AbilitiesEvent::*, &AbilitiesEvent::m_server)
EVENTSYSTEM_TEST_ACCESS(AbilitiesFlagBits, int AbilitiesEvent::*, &AbilitiesEvent::m_flags)
EVENTSYSTEM_TEST_ACCESS(ActivityMsg, char* ActivityEvent::*, &ActivityEvent::m_msg)
EVENTSYSTEM_TEST_ACCESS(ActivityActionCode, int ActivityEvent::*, &ActivityEvent::m_action)
EVENTSYSTEM_TEST_ACCESS(ActivitySeverityCode, int ActivityEvent::*, &ActivityEvent::m_severity)
EVENTSYSTEM_TEST_ACCESS(ActivityTimeOf, unsigned long ActivityEvent::*, &ActivityEvent::m_time)
EVENTSYSTEM_TEST_ACCESS(AuditVersionOf, int AuditEvent::*, &AuditEvent::m_version)
EVENTSYSTEM_TEST_ACCESS(AuditActionOf, int AuditEvent::*, &AuditEvent::m_action)
EVENTSYSTEM_TEST_ACCESS(AuditLoadSizeOf, int AuditEvent::*, &AuditEvent::m_loadSize)
EVENTSYSTEM_TEST_ACCESS(AuditTimeOf, unsigned long AuditEvent::*, &AuditEvent::m_time)
EVENTSYSTEM_TEST_ACCESS(KelpVersionOf, int KelpEvent::*, &KelpEvent::m_version)
EVENTSYSTEM_TEST_ACCESS(KelpSeverityOf, int KelpEvent::*, &KelpEvent::m_severity)
EVENTSYSTEM_TEST_ACCESS(KelpIssueOf, int KelpEvent::*, &KelpEvent::m_issue)
EVENTSYSTEM_TEST_ACCESS(KelpShareTypeOf, int KelpEvent::*, &KelpEvent::m_shareType)
EVENTSYSTEM_TEST_ACCESS(KelpDurationOf, int KelpEvent::*, &KelpEvent::m_issueDuration)
EVENTSYSTEM_TEST_ACCESS(KelpGroupOf, unsigned long KelpEvent::*, &KelpEvent::m_fileGroup)
EVENTSYSTEM_TEST_ACCESS(KelpNameOf, int KelpEvent::*, &KelpEvent::m_name)
EVENTSYSTEM_TEST_ACCESS(KelpHostOf, int KelpEvent::*, &KelpEvent::m_host)
EVENTSYSTEM_TEST_ACCESS(KelpStringOf, char* KelpEvent::*, &KelpEvent::m_string)

namespace {

constexpr int kFileGroupIssue = 3;

int writeEnvelope(Event& event, char* buffer, unsigned long size) {
  if (buffer == nullptr) {
    return ErrorA(kGeneralFailure, "%s The string buffer is NULL.", "toString");
  }
  return snprintf(buffer, size, "EVENT{version:%d;type:%d;id:%lu;date:%lu", 1,
                  static_cast<int>(event.*access(OracleType())), event.*access(OracleId()),
                  event.*access(OracleDate()));
}

__attribute__((format(printf, 3, 4))) int append(char* buffer, unsigned long size,
                                                 const char* format, ...) {
  const unsigned long length = kvrstrlen(buffer, size);
  va_list arguments;
  va_start(arguments, format);
  const int section = vsnprintf(buffer + length, size - length, format, arguments);
  va_end(arguments);
  return section;
}

const char* nameOrNull(const char* server) {
  return server == nullptr ? "(NULL)" : server;
}

int writeSection(LegacyEvent& event, char* buffer, unsigned long size) {
  return append(buffer, size, ";LEGACYEVENT{payload:%s;}}", event.getPayload());
}

int writeSection(ImageRepEvent& event, char* buffer, unsigned long size) {
  return append(buffer, size, ";lsu:%s;IMAGEREPEVENT{size:%u;path:%s;}}", event.getLSU(),
                event.getPayloadSize(), event.getPayloadPath());
}

int writeSection(LSUStatusEvent& event, char* buffer, unsigned long size) {
  return append(buffer, size, ";LSUSTATUSEVENT{state:%u;server:%s;}}",
                static_cast<unsigned int>(event.*access(LsuStatusState())),
                event.*access(LsuStatusServer()));
}

int writeSection(ServerStatusEvent& event, char* buffer, unsigned long size) {
  return append(buffer, size, ";SERVERSTATUSEVENT{state:%u;server:%s;}}",
                static_cast<unsigned int>(event.*access(ServerStatusState())),
                event.*access(ServerStatusServer()));
}

int writeSection(CapacityEvent& event, char* buffer, unsigned long size) {
  return append(buffer, size,
                ";CAPACITYEVENT{capacity:%lu;capacityphys:%lu;used:%lu;usedphys:%lu;server:%s;}}",
                event.*access(CapacityCapacity()), event.*access(CapacityCapacityphys()),
                event.*access(CapacityUsedSpace()), event.*access(CapacityUsedphys()),
                nameOrNull(event.*access(CapacityServerName())));
}

int writeSection(AbilitiesEvent& event, char* buffer, unsigned long size) {
  return append(buffer, size, ";ABILITIESEVENT{flags:0x%X;server:%s;}}",
                static_cast<unsigned int>(event.*access(AbilitiesFlagBits())),
                nameOrNull(event.*access(AbilitiesServerName())));
}

int writeSection(ActivityEvent& event, char* buffer, unsigned long size) {
  const char* const msg = event.*access(ActivityMsg());
  return append(buffer, size, ";{ACTIVITYEVENT{version:1;action:%d;time:%lu;severity:%d;msg:%s;}}",
                event.*access(ActivityActionCode()), event.*access(ActivityTimeOf()),
                event.*access(ActivitySeverityCode()), msg == nullptr ? "" : msg);
}

int writeSection(AuditEvent& event, char* buffer, unsigned long size) {
  return append(buffer, size,
                ";AUDITEVENT{version:%d;action:%d;time:%lu;loadSize:%d;AUditMSg:%s;}}",
                event.*access(AuditVersionOf()), event.*access(AuditActionOf()),
                event.*access(AuditTimeOf()), event.*access(AuditLoadSizeOf()), event.getPayload());
}

int writeSection(KelpEvent& event, char* buffer, unsigned long size) {
  append(buffer, size, ";KELPEVENT{version:%d;severity:%d;issue:%d;share_type:%d;",
         event.*access(KelpVersionOf()), event.*access(KelpSeverityOf()),
         event.*access(KelpIssueOf()), event.*access(KelpShareTypeOf()));
  if (event.*access(KelpIssueOf()) == kFileGroupIssue) {
    return append(buffer, size, "file_group:%llu;name:%d;host:%d;string:%s;}}",
                  static_cast<unsigned long long>(event.*access(KelpGroupOf())),
                  event.*access(KelpNameOf()), event.*access(KelpHostOf()),
                  event.*access(KelpStringOf()));
  }
  return append(buffer, size, "issue_duration:%d;name:%d;host:%d;string:%s;}}",
                event.*access(KelpDurationOf()), event.*access(KelpNameOf()),
                event.*access(KelpHostOf()), event.*access(KelpStringOf()));
}

bool sameText(const char* one, const char* other) {
  if (one == nullptr || other == nullptr) return one == other;
  return strcmp(one, other) == 0;
}

template <typename Class, typename... Tags>
bool sameNumbers(Class& one, Class& other, Tags... tags) {
  return ((one.*access(tags) == other.*access(tags)) && ...);
}

bool same(LegacyEvent& one, LegacyEvent& other) {
  return sameText(one.getPayload(), other.getPayload());
}

bool same(ImageRepEvent& one, ImageRepEvent& other) {
  return one.getPayloadSize() == other.getPayloadSize() &&
         sameText(one.getPayloadPath(), other.getPayloadPath()) &&
         sameText(one.getLSU(), other.getLSU());
}

bool same(LSUStatusEvent& one, LSUStatusEvent& other) {
  return sameNumbers(one, other, LsuStatusState()) &&
         sameText(one.*access(LsuStatusServer()), other.*access(LsuStatusServer()));
}

bool same(ServerStatusEvent& one, ServerStatusEvent& other) {
  return sameNumbers(one, other, ServerStatusState()) &&
         sameText(one.*access(ServerStatusServer()), other.*access(ServerStatusServer()));
}

bool same(CapacityEvent& one, CapacityEvent& other) {
  return sameNumbers(one, other, CapacityCapacity(), CapacityCapacityphys(), CapacityUsedSpace(),
                     CapacityUsedphys()) &&
         sameText(one.*access(CapacityServerName()), other.*access(CapacityServerName()));
}

bool same(AbilitiesEvent& one, AbilitiesEvent& other) {
  return sameNumbers(one, other, AbilitiesFlagBits()) &&
         sameText(one.*access(AbilitiesServerName()), other.*access(AbilitiesServerName()));
}

bool same(ActivityEvent& one, ActivityEvent& other) {
  return sameNumbers(one, other, ActivityActionCode(), ActivitySeverityCode(), ActivityTimeOf()) &&
         sameText(one.*access(ActivityMsg()), other.*access(ActivityMsg()));
}

bool same(AuditEvent& one, AuditEvent& other) {
  return sameNumbers(one, other, AuditVersionOf(), AuditActionOf(), AuditLoadSizeOf(),
                     AuditTimeOf()) &&
         sameText(one.getPayload(), other.getPayload());
}

bool same(KelpEvent& one, KelpEvent& other) {
  return sameNumbers(one, other, KelpVersionOf(), KelpSeverityOf(), KelpIssueOf(),
                     KelpShareTypeOf(), KelpDurationOf(), KelpGroupOf(), KelpNameOf(),
                     KelpHostOf()) &&
         sameText(one.*access(KelpStringOf()), other.*access(KelpStringOf()));
}

// Calls `use` with the event as its own class, which the type number names.
template <typename Use>
auto withClass(Event& event, Use use) {
  switch (event.*access(OracleType())) {
    case kLegacyEvent:
      return use(static_cast<LegacyEvent&>(event));
    case kImageRepEvent:
      return use(static_cast<ImageRepEvent&>(event));
    case kLSUStatusEvent:
      return use(static_cast<LSUStatusEvent&>(event));
    case kServerStatusEvent:
      return use(static_cast<ServerStatusEvent&>(event));
    case kCapacityEvent:
      return use(static_cast<CapacityEvent&>(event));
    case kAbilitiesEvent:
      return use(static_cast<AbilitiesEvent&>(event));
    case kActivityEvent:
      return use(static_cast<ActivityEvent&>(event));
    case kAuditEvent:
      return use(static_cast<AuditEvent&>(event));
    default:
      return use(static_cast<KelpEvent&>(event));
  }
}

}  // namespace

namespace Oracle {

int write(Event& event, char* buffer, unsigned long size) {
  if (buffer == nullptr && event.*access(OracleType()) == kAuditEvent) return 0;
  const int envelope = writeEnvelope(event, buffer, size);
  if (buffer == nullptr) return envelope;
  return withClass(event, [&](auto& own) { return writeSection(own, buffer, size); });
}

}  // namespace Oracle

void setEnvelope(Event& event, unsigned long id, unsigned long date) {
  event.*access(OracleId()) = id;
  event.*access(OracleDate()) = date;
}

bool sameMembers(Event& one, Event& other) {
  return typeid(one) == typeid(other) &&
         sameNumbers(one, other, OracleId(), OracleType(), OraclePayloadType(), OracleDate()) &&
         withClass(one,
                   [&other](auto& own) { return same(own, static_cast<decltype(own)>(other)); });
}

}  // namespace EventSystemTest
