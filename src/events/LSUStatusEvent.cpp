#include "EventSystem/LSUStatusEvent.h"

#include <cstdio>
#include <cstdlib>

#include "EventText.h"

namespace EventSystem {

LSUStatusEvent::LSUStatusEvent(char* server, lsuState state, unsigned long id)
    : Event(kLSUStatusEvent, kInlinePayload, 0, id),
      m_server(duplicateText(server)),
      m_state(static_cast<lsuState>(validState(state))) {}

LSUStatusEvent::~LSUStatusEvent() {
  free(m_server);
}

int LSUStatusEvent::toString(char* buffer, unsigned long size) {
  // A NULL name goes to %s as it is: the C library writes "(null)", and readers know it so.
  return writeSection(*this, buffer, size, ";LSUSTATUSEVENT{state:%u;server:%s;}}",
                      static_cast<unsigned int>(m_state), m_server);
}

int LSUStatusEvent::fromString(const char* text, Event** event) {
  SectionReader reader(text, event);
  if (!reader.find("LSUSTATUSEVENT")) return kGeneralFailure;
  unsigned int state = 0;
  if (sscanf(reader.section(), "LSUSTATUSEVENT{state:%u;", &state) != 1) {
    return reader.fail(SectionReader::kBadFormat);
  }
  char server[kServerNameBound];
  if (!reader.copyLast(";server:", server)) return kGeneralFailure;
  return reader.accept(std::make_unique<LSUStatusEvent>(server, static_cast<lsuState>(state), 0));
}

unsigned int LSUStatusEvent::getState() {
  return m_state;
}

}  // namespace EventSystem
