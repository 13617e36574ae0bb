#include "EventSystem/CapacityEvent.h"

#include <cstdlib>

#include "EventText.h"
#include "Sections.h"

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
  return SectionWriter(*this, buffer, size)
      .write(";CAPACITYEVENT{capacity:", m_capacity, ";capacityphys:", m_capacityphys,
             ";used:", m_used, ";usedphys:", m_usedphys, ";server:", Text{nameOrNull(m_server)},
             ";}}");
}

bool readCapacityEvent(SectionReader& section) {
  unsigned long capacity = 0;
  unsigned long capacityphys = 0;
  unsigned long used = 0;
  unsigned long usedphys = 0;
  char server[kServerNameBound];
  return section.open("CAPACITYEVENT", "{capacity:", capacity, ";capacityphys:", capacityphys,
                      ";used:", used, ";usedphys:", usedphys) &&
         section.readLast(";server:", server) &&
         section.accept(std::make_unique<CapacityEvent>(nameFromText(server), capacity,
                                                        capacityphys, used, usedphys, 0));
}

int CapacityEvent::fromString(const char* text, Event** event) {
  return readSection(text, event, readCapacityEvent);
}

}  // namespace EventSystem
