#include "EventSystem/ServerStatusEvent.h"

#include <cstdio>
#include <cstdlib>

#include "EventText.h"

namespace EventSystem {

ServerStatusEvent::ServerStatusEvent(const char* server, serverState state, unsigned long id)
    : Event(kServerStatusEvent, kInlinePayload, 0, id),
      m_server(duplicateText(server)),
      m_state(static_cast<serverState>(validState(state))) {}

ServerStatusEvent::~ServerStatusEvent() {
  free(m_server);
}

int ServerStatusEvent::toString(char* buffer, unsigned long size) {
  // A NULL name goes to %s as it is: the C library writes "(null)", and readers know it so.
  return writeSection(*this, buffer, size, ";SERVERSTATUSEVENT{state:%u;server:%s;}}",
                      static_cast<unsigned int>(m_state), m_server);
}

int ServerStatusEvent::fromString(const char* text, Event** event) {
  SectionReader reader(text, event);
  if (!reader.find("SERVERSTATUSEVENT")) return kGeneralFailure;
  unsigned int state = 0;
  if (sscanf(reader.section(), "SERVERSTATUSEVENT{state:%u;server:", &state) != 1) {
    return reader.fail(SectionReader::kBadFormat);
  }
  char server[kServerNameBound];
  if (!reader.copyLast(";server:", server)) return kGeneralFailure;
  return reader.accept(
      std::make_unique<ServerStatusEvent>(server, static_cast<serverState>(state), 0));
}

unsigned int ServerStatusEvent::getState() {
  return m_state;
}

}  // namespace EventSystem
