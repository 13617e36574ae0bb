#include "EventSystem/AuditEvent.h"

#include "EventText.h"
#include "Sections.h"

namespace EventSystem {

AuditEvent::AuditEvent(char* msg, int version, int action, unsigned long time, int loadSize,
                       unsigned long id)
    : Event(kAuditEvent, kInlinePayload, 0, id),
      m_version(version),
      m_action(action),
      m_loadSize(loadSize),
      m_time(time) {
  copyText(msg, m_message, sizeof m_message);
}

AuditEvent::~AuditEvent() = default;

int AuditEvent::toString(char* buffer, unsigned long size) {
  if (buffer == nullptr) return 0;
  return SectionWriter(*this, buffer, size)
      .write(";AUDITEVENT{version:", m_version, ";action:", m_action, ";time:", m_time,
             ";loadSize:", m_loadSize, ";AUditMSg:", Text{getPayload()}, ";}}");
}

char* AuditEvent::getPayload() {
  return m_message;
}

bool readAuditEvent(SectionReader& section) {
  int version = 0;
  int action = 0;
  unsigned long time = 0;
  int loadSize = 0;
  if (!section.open("AUDITEVENT", "{version:", version, ";action:", action, ";time:", time,
                    ";loadSize:", loadSize) ||
      !section.seekAnywhere(";AUditMSg:", SectionReader::kBadFormat)) {
    return false;
  }
  if (section.rest().size() <= kEnding.size()) {
    return section.fail(SectionReader::kEmptyAuditMessage);
  }
  constexpr unsigned long kBound = 10240;
  std::string_view message;
  if (!section.readLast(message, kBound)) return false;
  auto event = std::make_unique<AuditEvent>(nullptr, version, action, time, loadSize, 0);
  copyText(message, event->getPayload(), kBound);
  return section.accept(std::move(event));
}

int AuditEvent::fromString(const char* text, Event** event) {
  return readSection(text, event, readAuditEvent);
}

}  // namespace EventSystem
