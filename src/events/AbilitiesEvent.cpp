#include "EventSystem/AbilitiesEvent.h"

#include <cstdlib>

#include "EventText.h"
#include "Sections.h"

namespace EventSystem {

AbilitiesEvent::AbilitiesEvent(int flags, char* server, unsigned long id)
    : Event(kAbilitiesEvent, kInlinePayload, 0, id),
      m_server(duplicateText(server)),
      m_flags(flags) {}

AbilitiesEvent::~AbilitiesEvent() {
  free(m_server);
}

int AbilitiesEvent::toString(char* buffer, unsigned long size) {
  return SectionWriter(*this, buffer, size)
      .write(";ABILITIESEVENT{flags:0x", UpperHex{static_cast<unsigned int>(m_flags)},
             ";server:", Text{nameOrNull(m_server)}, ";}}");
}

bool readAbilitiesEvent(SectionReader& section) {
  unsigned int flags = 0;
  char server[kServerNameBound];
  return section.open("ABILITIESEVENT", "{flags:0x", HexInto{flags}) &&
         section.readLast(";server:", server) &&
         section.accept(
             std::make_unique<AbilitiesEvent>(static_cast<int>(flags), nameFromText(server), 0));
}

int AbilitiesEvent::fromString(const char* text, Event** event) {
  return readSection(text, event, readAbilitiesEvent);
}

}  // namespace EventSystem
