#include "EventSystem/LegacyEvent.h"

#include "EventText.h"
#include "Sections.h"

namespace EventSystem {

LegacyEvent::LegacyEvent(char* payload, unsigned long id)
    : Event(kLegacyEvent, kInlinePayload, 0, id) {
  copyText(payload, m_payload, sizeof m_payload);
}

LegacyEvent::~LegacyEvent() = default;

int LegacyEvent::toString(char* buffer, unsigned long size) {
  return SectionWriter(*this, buffer, size)
      .write(";LEGACYEVENT{payload:", Text{getPayload()}, ";}}");
}

char* LegacyEvent::getPayload() {
  return m_payload;
}

bool readLegacyEvent(SectionReader& section) {
  constexpr unsigned long kBound = 1024;  // half of what an event holds: longer payloads are
                                          // written but not read
  std::string_view payload;
  if (!section.open("LEGACYEVENT", "{payload:") || !section.readLast(payload, kBound)) return false;
  auto event = std::make_unique<LegacyEvent>(nullptr, 0);
  copyText(payload, event->getPayload(), kBound);
  return section.accept(std::move(event));
}

int LegacyEvent::fromString(const char* text, Event** event) {
  return readSection(text, event, readLegacyEvent);
}

}  // namespace EventSystem
