#include "EventSystem/LSUStatusEvent.h"

#include <cstdlib>

#include "EventText.h"
#include "Sections.h"

namespace EventSystem {

LSUStatusEvent::LSUStatusEvent(char* server, lsuState state, unsigned long id)
    : Event(kLSUStatusEvent, kInlinePayload, 0, id),
      m_server(duplicateText(server)),
      m_state(static_cast<lsuState>(validState(state))) {}

LSUStatusEvent::~LSUStatusEvent() {
  free(m_server);
}

int LSUStatusEvent::toString(char* buffer, unsigned long size) {
  // A NULL name is written as "(null)", and readers know it so.
  return SectionWriter(*this, buffer, size)
      .write(";LSUSTATUSEVENT{state:", static_cast<unsigned int>(m_state),
             ";server:", Text{m_server}, ";}}");
}

bool readLSUStatusEvent(SectionReader& section) {
  unsigned int state = 0;
  char server[kServerNameBound];
  return section.open("LSUSTATUSEVENT", "{state:", state) && section.readLast(";server:", server) &&
         section.accept(std::make_unique<LSUStatusEvent>(
             server, static_cast<LSUStatusEvent::lsuState>(state), 0));
}

int LSUStatusEvent::fromString(const char* text, Event** event) {
  return readSection(text, event, readLSUStatusEvent);
}

unsigned int LSUStatusEvent::getState() {
  return m_state;
}

}  // namespace EventSystem
