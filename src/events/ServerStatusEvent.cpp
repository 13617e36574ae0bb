#include "EventSystem/ServerStatusEvent.h"

#include <cstdlib>

#include "EventText.h"
#include "Sections.h"

namespace EventSystem {

ServerStatusEvent::ServerStatusEvent(const char* server, serverState state, unsigned long id)
    : Event(kServerStatusEvent, kInlinePayload, 0, id),
      m_server(duplicateText(server)),
      m_state(static_cast<serverState>(validState(state))) {}

ServerStatusEvent::~ServerStatusEvent() {
  free(m_server);
}

int ServerStatusEvent::toString(char* buffer, unsigned long size) {
  // A NULL name is written as "(null)", and readers know it so.
  return SectionWriter(*this, buffer, size)
      .write(";SERVERSTATUSEVENT{state:", static_cast<unsigned int>(m_state),
             ";server:", Text{m_server}, ";}}");
}

bool readServerStatusEvent(SectionReader& section) {
  unsigned int state = 0;
  char server[kServerNameBound];
  return section.open("SERVERSTATUSEVENT", "{state:", state) &&
         section.readLast(";server:", server) &&
         section.accept(std::make_unique<ServerStatusEvent>(
             server, static_cast<ServerStatusEvent::serverState>(state), 0));
}

int ServerStatusEvent::fromString(const char* text, Event** event) {
  return readSection(text, event, readServerStatusEvent);
}

unsigned int ServerStatusEvent::getState() {
  return m_state;
}

}  // namespace EventSystem
