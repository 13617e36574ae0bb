// Writing and reading the class section of an event string, for all event classes: the NULL
// checks, the search for tags and keys, the bounded copies and the ending are here once.
//
// Thread safety: everything works on its arguments only.

#ifndef EVENTSYSTEM_SRC_EVENTS_EVENTTEXT_H
#define EVENTSYSTEM_SRC_EVENTS_EVENTTEXT_H

#include <memory>

#include "EventSystem/Event.h"
#include "EventSystem/ResultCode.h"

namespace EventSystem {

// A copy of `text` to be released with free(); NULL for NULL.
char* duplicateText(const char* text);

// Writes `event`'s envelope and appends a section. Returns the length that the section alone would
// have without the bound, or what Event::toString() returns for a NULL buffer.
int writeSection(Event& event, char* buffer, unsigned long size, const char* format, ...)
    __attribute__((format(printf, 4, 5)));

// The server name as two of the classes write it, "(NULL)" for NULL, and its way back: NULL for a
// text that begins with "(NULL)".
const char* nameOrNull(const char* server);
char* nameFromText(char* server);

// What the server status classes store: states above 2 become 1.
unsigned int validState(unsigned int state);

// The room of a server name in an event string, its closing ";}}" and terminator included.
constexpr unsigned long kServerNameBound = 128;

// Appends to the text in `buffer`, bounded by `size` in all. Returns what snprintf returns.
int appendText(char* buffer, unsigned long size, const char* format, ...)
    __attribute__((format(printf, 3, 4)));

// One run of a class parser over an event string. Everything that fails logs the reason with the
// whole text and sets the caller's event to NULL; the parser then returns kGeneralFailure.
class SectionReader {
 public:
  enum Flaw {
    kWrongType,
    kBadFormat,
    kBadEnding,
    kEmptyAuditMessage,
    kNoFileGroup,
    kNoIssueDuration,
    kNoString
  };

  SectionReader(const char* text, Event** event) : m_text(text), m_event(event) {}

  // Checks both arguments and looks for the tag anywhere in the text.
  bool find(const char* tag);

  // The text from the tag on.
  const char* section() const { return m_section; }

  // What follows the first occurrence of `key` in `from`; NULL when there is none.
  static const char* after(const char* from, const char* key);

  static bool startsWith(const char* text, const char* opening);

  // Whether the text ends with the closing ";}}".
  static bool hasEnding(const char* text);

  // Cuts as many characters as the ending has, whatever they are.
  static void cutEnding(char* value);

  // Copies what follows `key` in the section, up to the closing ";}}", into `value`.
  template <unsigned long N>
  bool copyLast(const char* key, char (&value)[N]) {
    return copyLast(after(m_section, key), value, N);
  }

  // The same from `source` on, which is NULL where the key was not found.
  bool copyLast(const char* source, char* value, unsigned long bound);

  // Logs the flaw; returns kGeneralFailure.
  int fail(Flaw flaw);

  // Hands the parsed event to the caller; returns kSuccess.
  int accept(std::unique_ptr<Event> event);

 private:
  const char* m_text;
  Event** m_event;
  const char* m_section = nullptr;
};

}  // namespace EventSystem

#endif
