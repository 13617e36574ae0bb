#include "EventSystem/LegacyEvent.h"

#include <cstring>

#include "EventSystem/platform/HostText.h"
#include "EventText.h"

namespace EventSystem {

LegacyEvent::LegacyEvent(char* payload, unsigned long id)
    : Event(kLegacyEvent, kInlinePayload, 0, id) {
  kvrstrcpy(m_payload, payload, sizeof m_payload);
}

LegacyEvent::~LegacyEvent() = default;

int LegacyEvent::toString(char* buffer, unsigned long size) {
  return writeSection(*this, buffer, size, ";LEGACYEVENT{payload:%s;}}", getPayload());
}

char* LegacyEvent::getPayload() {
  return m_payload;
}

int LegacyEvent::fromString(const char* text, Event** event) {
  SectionReader reader(text, event);
  if (!reader.find("LEGACYEVENT")) return kGeneralFailure;
  constexpr char kOpening[] = "LEGACYEVENT{payload:";
  if (!SectionReader::startsWith(reader.section(), kOpening)) {
    return reader.fail(SectionReader::kBadFormat);
  }
  char payload[1024];  // half of what an event holds: longer payloads are written but not read
  if (!reader.copyLast(reader.section() + strlen(kOpening), payload, sizeof payload)) {
    return kGeneralFailure;
  }
  return reader.accept(std::make_unique<LegacyEvent>(payload, 0));
}

}  // namespace EventSystem
