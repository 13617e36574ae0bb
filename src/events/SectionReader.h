// One run of a class parser over an event string. Everything that fails logs the reason with the
// whole text, sets the caller's event to NULL and returns false.
//
// Thread safety: an object belongs to one thread.

#ifndef EVENTSYSTEM_SRC_EVENTS_SECTIONREADER_H
#define EVENTSYSTEM_SRC_EVENTS_SECTIONREADER_H

#include <memory>
#include <string_view>

#include "EventSystem/Event.h"
#include "EventText.h"
#include "TextScanner.h"

namespace EventSystem {

// What closes a section and the envelope.
inline constexpr std::string_view kEnding = ";}}";

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

  // `body` is the part of the text that searches run over: all of it, or what follows an envelope,
  // in which nothing that a section has can begin. The text is terminated.
  SectionReader(const char* text, std::string_view body, Event** event)
      : m_text(text), m_body(body), m_event(event), m_scanner(body) {}

  // Goes behind the first occurrence of the class's tag and reads the parts that follow it.
  template <unsigned long N, typename... Parts>
  bool open(const char (&tag)[N], Parts&&... parts) {
    if (!m_scanner.read(";", tag) && !m_scanner.skipBehind(tag)) return fail(kWrongType);
    m_opened = m_scanner.rest();
    return read(parts...);
  }

  // Reads on, as TextScanner::read().
  template <typename... Parts>
  bool read(Parts&&... parts) {
    return m_scanner.read(parts...) || fail(kBadFormat);
  }

  // Goes behind the next occurrence of `key`, or behind its first one in the whole body.
  template <unsigned long N>
  bool seek(const char (&key)[N], Flaw flaw) {
    return m_scanner.skipBehind(key) || fail(flaw);
  }
  template <unsigned long N>
  bool seekAnywhere(const char (&key)[N], Flaw flaw) {
    // What was read since the section was opened are numbers and other keys.
    const std::size_t at = m_body.substr(0, m_body.size() - m_opened.size()).find(key);
    if (at == std::string_view::npos) return seek(key, flaw);
    m_scanner = TextScanner(m_body.substr(at + N - 1));
    return true;
  }

  // Takes everything up to the ending as `text`. More than `bound` bytes, the ending and a
  // terminator included, is a bad ending.
  bool readLast(std::string_view& text, unsigned long bound) {
    text = rest().substr(0, bound - 1);
    if (!text.ends_with(kEnding)) return fail(kBadEnding);
    text.remove_suffix(kEnding.size());
    return true;
  }
  // Copies what follows the next occurrence of `key`, likewise.
  template <unsigned long M, unsigned long N>
  bool readLast(const char (&key)[M], char (&value)[N]) {
    std::string_view text;
    if (!seek(key, kBadFormat) || !readLast(text, N)) return false;
    copyText(text, value, N);
    return true;
  }

  // Everything from here to the end of the text, and the whole body.
  std::string_view rest() const { return m_scanner.rest(); }
  std::string_view body() const { return m_body; }

  // Logs the flaw; returns false.
  bool fail(Flaw flaw);

  // Hands the parsed event to the caller; returns true.
  bool accept(std::unique_ptr<Event> event) {
    *m_event = event.release();
    return true;
  }

 private:
  const char* m_text;
  std::string_view m_body;
  Event** m_event;
  TextScanner m_scanner;
  std::string_view m_opened{};  // what follows the tag
};

}  // namespace EventSystem

#endif
