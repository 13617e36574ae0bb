#include "EventSystem/AbilitiesEvent.h"

#include <cstdio>
#include <cstdlib>

#include "EventText.h"

namespace EventSystem {

AbilitiesEvent::AbilitiesEvent(int flags, char* server, unsigned long id)
    : Event(kAbilitiesEvent, kInlinePayload, 0, id),
      m_server(duplicateText(server)),
      m_flags(flags) {}

AbilitiesEvent::~AbilitiesEvent() {
  free(m_server);
}

int AbilitiesEvent::toString(char* buffer, unsigned long size) {
  return writeSection(*this, buffer, size, ";ABILITIESEVENT{flags:0x%X;server:%s;}}",
                      static_cast<unsigned int>(m_flags), nameOrNull(m_server));
}

int AbilitiesEvent::fromString(const char* text, Event** event) {
  SectionReader reader(text, event);
  if (!reader.find("ABILITIESEVENT")) return kGeneralFailure;
  unsigned int flags = 0;
  if (sscanf(reader.section(), "ABILITIESEVENT{flags:0x%X;server:", &flags) != 1) {
    return reader.fail(SectionReader::kBadFormat);
  }
  char server[kServerNameBound];
  if (!reader.copyLast(";server:", server)) return kGeneralFailure;
  return reader.accept(
      std::make_unique<AbilitiesEvent>(static_cast<int>(flags), nameFromText(server), 0));
}

}  // namespace EventSystem
