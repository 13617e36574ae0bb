#include "EventSystem/DetachedEvent.h"

#include "EventText.h"

namespace EventSystem {

DetachedEvent::DetachedEvent(eventType type, char* path, unsigned int size, unsigned long id)
    : Event(type, kDetachedPayload, 0, id), m_payloadSize(size) {
  const bool empty = path == nullptr || *path == '\0';
  copyText(empty ? "Unknown" : path, m_payloadPath, sizeof m_payloadPath);
}

DetachedEvent::~DetachedEvent() = default;

const char* DetachedEvent::getPayloadPath() {
  return m_payloadPath;
}
unsigned int DetachedEvent::getPayloadSize() {
  return m_payloadSize;
}
void DetachedEvent::deletePayloadFile() {}

}  // namespace EventSystem
