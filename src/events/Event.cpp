#include "EventSystem/Event.h"

#include <ctime>

#include "EventSystem/ResultCode.h"
#include "EventSystem/platform/HostLog.h"
#include "Sections.h"

namespace EventSystem {
namespace {

constexpr unsigned int kVersion = 1;

struct Envelope {
  int type = 0;
  unsigned long id = 0;
  unsigned long date = 0;
};

bool readEnvelope(TextScanner& scanner, Envelope& envelope) {
  unsigned int version = 0;
  if (!scanner.read("EVENT{version:", version)) return false;
  if (version != kVersion) {
    InfoA(kSuccess, "%s Event version (%u) is different than current version (%u)", "fromString",
          version, kVersion);
  }
  return scanner.read(";type:", envelope.type, ";id:", envelope.id, ";date:", envelope.date);
}

// NULL for a number that is no type.
SectionParser parserOf(int type) {
  switch (type) {
    case kLegacyEvent:
      return readLegacyEvent;
    case kImageRepEvent:
      return readImageRepEvent;
    case kLSUStatusEvent:
      return readLSUStatusEvent;
    case kServerStatusEvent:
      return readServerStatusEvent;
    case kCapacityEvent:
      return readCapacityEvent;
    case kAbilitiesEvent:
      return readAbilitiesEvent;
    case kActivityEvent:
      return readActivityEvent;
    case kAuditEvent:
      return readAuditEvent;
    case kKelpEvent:
      return readKelpEvent;
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
  return TextWriter(buffer, size, 0)
      .write("EVENT{version:", kVersion, ";type:", static_cast<int>(m_type), ";id:", m_id,
             ";date:", m_date);
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
  if (!haveArguments(string, event)) return kGeneralFailure;
  *event = nullptr;
  TextScanner scanner(string);
  Envelope envelope;
  if (!readEnvelope(scanner, envelope)) {
    ErrorA(kGeneralFailure, "%s Invalid event string: %s", "fromString", string);
    return kGeneralFailure;
  }
  const SectionParser parse = parserOf(envelope.type);
  if (parse == nullptr) {
    ErrorA(kGeneralFailure, "%s Invalid event type: %d", "fromString", envelope.type);
    return kGeneralFailure;
  }
  SectionReader section(string, scanner.rest(), event);
  if (!parse(section)) {
    ErrorA(kGeneralFailure, "%s Failed to parse event string: %s", "fromString", string);
    return kGeneralFailure;
  }
  (*event)->m_id = envelope.id;
  (*event)->m_date = envelope.date;
  return kSuccess;
}

}  // namespace EventSystem
