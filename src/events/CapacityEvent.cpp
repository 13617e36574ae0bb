#include "EventSystem/CapacityEvent.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "EventText.h"

namespace EventSystem {

CapacityEvent::CapacityEvent(char* server, unsigned long capacity, unsigned long capacityphys,
                             unsigned long used, unsigned long usedphys, unsigned long id)
    : Event(kCapacityEvent, kInlinePayload, 0, id),
      m_server(duplicateText(server)),
      m_capacity(capacity),
      m_capacityphys(capacityphys),
      m_used(used),
      m_usedphys(usedphys) {}

CapacityEvent::~CapacityEvent() {
  free(m_server);
}

int CapacityEvent::toString(char* buffer, unsigned long size) {
  return writeSection(
      *this, buffer, size,
      ";CAPACITYEVENT{capacity:%lu;capacityphys:%lu;used:%lu;usedphys:%lu;server:%s;}}", m_capacity,
      m_capacityphys, m_used, m_usedphys, nameOrNull(m_server));
}

int CapacityEvent::fromString(const char* text, Event** event) {
  SectionReader reader(text, event);
  if (!reader.find("CAPACITYEVENT")) return kGeneralFailure;
  unsigned long capacity = 0;
  unsigned long capacityphys = 0;
  unsigned long used = 0;
  unsigned long usedphys = 0;
  if (sscanf(reader.section(), "CAPACITYEVENT{capacity:%lu;capacityphys:%lu;used:%lu;usedphys:%lu;",
             &capacity, &capacityphys, &used, &usedphys) != 4) {
    return reader.fail(SectionReader::kBadFormat);
  }
  char server[kServerNameBound];
  if (!reader.copyLast(";server:", server)) return kGeneralFailure;
  return reader.accept(std::make_unique<CapacityEvent>(nameFromText(server), capacity, capacityphys,
                                                       used, usedphys, 0));
}

}  // namespace EventSystem
