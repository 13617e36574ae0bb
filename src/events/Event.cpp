#include "EventSystem/Event.h"

#include <cstdio>
#include <ctime>

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

namespace EventSystem {
namespace {

constexpr unsigned int kVersion = 1;

struct Envelope {
  int type;
  unsigned long id;
  unsigned long date;
};

bool readEnvelope(const char* string, Envelope& envelope) {
  unsigned int version = 0;
  if (sscanf(string, "EVENT{version:%u;", &version) != 1) return false;
  if (version != kVersion) {
    InfoA(kSuccess, "%s Event version (%u) is different than current version (%u)", "fromString",
          version, kVersion);
  }
  return sscanf(string, "EVENT{version:%*u;type:%d;id:%lu;date:%lu", &envelope.type, &envelope.id,
                &envelope.date) == 3;
}

using Parser = int (*)(const char* string, Event** event);

// NULL for a number that is no type.
Parser parserOf(int type) {
  switch (type) {
    case kLegacyEvent:
      return LegacyEvent::fromString;
    case kImageRepEvent:
      return ImageRepEvent::fromString;
    case kLSUStatusEvent:
      return LSUStatusEvent::fromString;
    case kServerStatusEvent:
      return ServerStatusEvent::fromString;
    case kCapacityEvent:
      return CapacityEvent::fromString;
    case kAbilitiesEvent:
      return AbilitiesEvent::fromString;
    case kActivityEvent:
      return ActivityEvent::fromString;
    case kAuditEvent:
      return AuditEvent::fromString;
    case kKelpEvent:
      return KelpEvent::fromString;
    default:
      return nullptr;
  }
}

}  // namespace

Event::Event(eventType type, eventPayloadType payloadType, unsigned long date, unsigned long id)
    : m_id(id),
      m_type(type),
      m_payloadType(payloadType),
      m_date(date != 0 ? date : static_cast<unsigned long>(time(nullptr))) {}

Event::~Event() = default;

int Event::toString(char* buffer, unsigned long size) {
  if (buffer == nullptr) {
    return ErrorA(kGeneralFailure, "%s The string buffer is NULL.", "toString");
  }
  return snprintf(buffer, size, "EVENT{version:%d;type:%d;id:%lu;date:%lu",
                  static_cast<int>(kVersion), static_cast<int>(m_type), m_id, m_date);
}

unsigned long Event::getId() {
  return m_id;
}
eventType Event::getType() {
  return m_type;
}
unsigned long Event::getDate() {
  return m_date;
}

int Event::fromString(const char* string, Event** event) {
  if (event == nullptr) {
    ErrorA(kGeneralFailure, "%s The event pointer is NULL.", "fromString");
    return kGeneralFailure;
  }
  *event = nullptr;
  if (string == nullptr) {
    ErrorA(kGeneralFailure, "%s The event string buffer is NULL.", "fromString");
    return kGeneralFailure;
  }
  Envelope envelope{};
  if (!readEnvelope(string, envelope)) {
    ErrorA(kGeneralFailure, "%s Invalid event string: %s", "fromString", string);
    return kGeneralFailure;
  }
  const Parser parse = parserOf(envelope.type);
  if (parse == nullptr) {
    ErrorA(kGeneralFailure, "%s Invalid event type: %d", "fromString", envelope.type);
    return kGeneralFailure;
  }
  const int result = parse(string, event);
  if (*event == nullptr) {
    ErrorA(kGeneralFailure, "%s Failed to parse event string: %s", "fromString", string);
    return kGeneralFailure;
  }
  (*event)->m_id = envelope.id;
  (*event)->m_date = envelope.date;
  return result;
}

}  // namespace EventSystem
