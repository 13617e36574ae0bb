#include "EventSystem/AuditEvent.h"

#include <cstdio>
#include <cstring>

#include "EventSystem/platform/HostText.h"
#include "EventText.h"

namespace EventSystem {

AuditEvent::AuditEvent(char* msg, int version, int action, unsigned long time, int loadSize,
                       unsigned long id)
    : Event(kAuditEvent, kInlinePayload, 0, id),
      m_version(version),
      m_action(action),
      m_loadSize(loadSize),
      m_time(time) {
  kvrstrcpy(m_message, msg, sizeof m_message);
}

AuditEvent::~AuditEvent() = default;

int AuditEvent::toString(char* buffer, unsigned long size) {
  if (buffer == nullptr) return 0;
  return writeSection(*this, buffer, size,
                      ";AUDITEVENT{version:%d;action:%d;time:%lu;loadSize:%d;AUditMSg:%s;}}",
                      m_version, m_action, m_time, m_loadSize, getPayload());
}

char* AuditEvent::getPayload() {
  return m_message;
}

int AuditEvent::fromString(const char* text, Event** event) {
  SectionReader reader(text, event);
  if (!reader.find("AUDITEVENT")) return kGeneralFailure;
  int version = 0;
  int action = 0;
  unsigned long time = 0;
  int loadSize = 0;
  const char* const source = SectionReader::after(text, ";AUditMSg:");
  if (sscanf(reader.section(), "AUDITEVENT{version:%d;action:%d;time:%lu;loadSize:%d;AUditMSg:",
             &version, &action, &time, &loadSize) != 4 ||
      source == nullptr) {
    return reader.fail(SectionReader::kBadFormat);
  }
  constexpr unsigned long kShortest = 4;  // one character and the ending
  if (kvrstrlen(source, kShortest) < kShortest) {
    return reader.fail(SectionReader::kEmptyAuditMessage);
  }
  char message[sizeof m_message];
  if (!reader.copyLast(source, message, sizeof message)) return kGeneralFailure;
  return reader.accept(std::make_unique<AuditEvent>(message, version, action, time, loadSize, 0));
}

}  // namespace EventSystem
