// Writes literals, numbers and texts in a row into a bounded buffer, with the results of snprintf:
// what does not fit is cut, the buffer is terminated wherever it has room for a byte, and the
// length is told as it would be without the bound.
//
// Thread safety: an object belongs to one thread.

#ifndef EVENTSYSTEM_SRC_EVENTS_TEXTWRITER_H
#define EVENTSYSTEM_SRC_EVENTS_TEXTWRITER_H

#include <climits>
#include <cstring>
#include <string_view>

namespace EventSystem {

// A text to be written as %s writes it: NULL gives "(null)".
struct Text {
  explicit Text(const char* text) : value(text == nullptr ? "(null)" : text) {}
  std::string_view value;
};

// A number to be written as %X writes it.
struct UpperHex {
  unsigned int value;
};

class TextWriter {
 public:
  // Goes on behind `written` characters: as many as the buffer would hold without its bound.
  TextWriter(char* buffer, unsigned long size, unsigned long written)
      : m_next(buffer), m_terminates(size != 0) {
    if (!m_terminates) return;
    const unsigned long held = written < size ? written : size - 1;
    m_next += held;
    m_room = size - 1 - held;
  }

  // Writes the parts: literals as they stand, numbers in decimal, Text and UpperHex. Returns the
  // length that they have without the bound; -1 when that is no int.
  template <typename... Parts>
  int write(const Parts&... parts) {
    if ((longest(parts) + ...) > m_room) return writeCut(parts...);
    char* at = m_next;
    ((at = put(at, parts)), ...);
    *at = '\0';
    const auto length = static_cast<unsigned long>(at - m_next);
    m_next = at;
    m_room -= length;
    return result(length);
  }

 private:
  static constexpr unsigned long kLongestNumber = 20;

  // The same where the parts may have to be cut.
  template <typename... Parts>
  [[gnu::noinline]] int writeCut(const Parts&... parts) {
    unsigned long length = 0;
    ((length += append(parts)), ...);
    if (m_terminates) *m_next = '\0';
    return result(length);
  }

  template <unsigned long N>
  unsigned long append(const char (&literal)[N]) {
    return append(Text(literal));
  }
  template <typename Number>
  unsigned long append(Number number) {
    char digits[kLongestNumber + 1];
    *put(digits, number) = '\0';
    return append(Text(digits));
  }
  unsigned long append(Text text);

  // The room that a part takes at most.
  template <unsigned long N>
  static constexpr unsigned long longest(const char (&)[N]) {
    return N - 1;
  }
  static unsigned long longest(const Text& text) { return text.value.size(); }
  template <typename Number>
  static constexpr unsigned long longest(const Number&) {
    return kLongestNumber;
  }

  // Each writes a part that has room, and returns what is behind it.
  template <unsigned long N>
  static char* put(char* at, const char (&literal)[N]) {
    memcpy(at, literal, N - 1);
    return at + N - 1;
  }
  static char* put(char* at, const Text& text) {
    memcpy(at, text.value.data(), text.value.size());
    return at + text.value.size();
  }
  static char* put(char* at, unsigned long number) {
    if (number >= 10) return putDecimal(at, number);
    *at = static_cast<char>('0' + number);
    return at + 1;
  }
  static char* put(char* at, unsigned int number) {
    return put(at, static_cast<unsigned long>(number));
  }
  static char* put(char* at, int number) {
    if (number >= 0) return put(at, static_cast<unsigned long>(number));
    *at = '-';
    return put(at + 1, 0ul - static_cast<unsigned long>(number));
  }
  static char* put(char* at, UpperHex number);
  static char* putDecimal(char* at, unsigned long number);

  static int result(unsigned long length) {
    return length > INT_MAX ? -1 : static_cast<int>(length);
  }

  char* m_next;
  unsigned long m_room = 0;  // for characters before the terminator
  bool m_terminates;         // there is room for a terminator
};

}  // namespace EventSystem

#endif
