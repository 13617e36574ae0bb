// The class sections of event strings: writing one behind the envelope, and the nine parsers.
//
// Thread safety: everything works on its arguments only.

#ifndef EVENTSYSTEM_SRC_EVENTS_SECTIONS_H
#define EVENTSYSTEM_SRC_EVENTS_SECTIONS_H

#include "EventSystem/Event.h"
#include "SectionReader.h"
#include "TextWriter.h"

namespace EventSystem {

// Writes `event`'s envelope and then sections or parts of one. For a NULL buffer everything returns
// what Event::toString() returned.
class SectionWriter {
 public:
  SectionWriter(Event& event, char* buffer, unsigned long size)
      : m_hasBuffer(buffer != nullptr),
        m_envelope(event.Event::toString(buffer, size)),
        m_writer(buffer, m_hasBuffer ? size : 0, static_cast<unsigned long>(m_envelope)) {}

  // As TextWriter::write().
  template <typename... Parts>
  int write(const Parts&... parts) {
    return m_hasBuffer ? m_writer.write(parts...) : m_envelope;
  }

 private:
  bool m_hasBuffer;
  int m_envelope;
  TextWriter m_writer;
};

// Each finds its class's section, hands the event to the reader and returns true; or logs why not
// and returns false.
bool readLegacyEvent(SectionReader& section);
bool readImageRepEvent(SectionReader& section);
bool readLSUStatusEvent(SectionReader& section);
bool readServerStatusEvent(SectionReader& section);
bool readCapacityEvent(SectionReader& section);
bool readAbilitiesEvent(SectionReader& section);
bool readActivityEvent(SectionReader& section);
bool readAuditEvent(SectionReader& section);
bool readKelpEvent(SectionReader& section);

using SectionParser = bool (*)(SectionReader& section);

// The fromString() of a class: runs its parser over the whole text.
int readSection(const char* text, Event** event, SectionParser parse);

// Whether both arguments of a fromString() are there; logs which is not.
bool refuseArguments(Event** event);
inline bool haveArguments(const char* text, Event** event) {
  return (text != nullptr && event != nullptr) || refuseArguments(event);
}

}  // namespace EventSystem

#endif
