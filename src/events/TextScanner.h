// Reads literals and numbers in a row, accepting what sscanf accepts for the same format: blanks
// and a sign before a number, a minus also before an unsigned one, which wraps around; numbers out
// of range become the nearest 64-bit number before they are cut to their own width.
//
// Thread safety: an object belongs to one thread.

#ifndef EVENTSYSTEM_SRC_EVENTS_TEXTSCANNER_H
#define EVENTSYSTEM_SRC_EVENTS_TEXTSCANNER_H

#include <concepts>
#include <cstring>
#include <string_view>

namespace EventSystem {

// A number to be read as %X reads it: with or without a "0x" of its own.
struct HexInto {
  unsigned int& value;
};

class TextScanner {
 public:
  explicit TextScanner(std::string_view text) : m_at(text.data()), m_end(m_at + text.size()) {}

  // Whether the parts follow one upon the other: literals as they stand, numbers of the type of
  // the variables that take them, HexInto. Stays where it is when one is not there.
  template <typename... Parts>
  bool read(Parts&&... parts) {
    const char* at = m_at;
    const bool complete = (((at = behind(at, parts)) != nullptr) && ...);
    if (complete) m_at = at;
    return complete;
  }

  // Goes behind the next occurrence of `key`; stays where it is when there is none.
  template <unsigned long N>
  bool skipBehind(const char (&key)[N]) {
    return read(key) || find({key, N - 1});
  }

  std::string_view rest() const { return {m_at, left(m_at)}; }

 private:
  // Where a part ends that begins at `at`; NULL when it does not.
  template <unsigned long N>
  const char* behind(const char* at, const char (&literal)[N]) const {
    constexpr unsigned long kLength = N - 1;
    return left(at) >= kLength && memcmp(at, literal, kLength) == 0 ? at + kLength : nullptr;
  }
  template <typename Unsigned>
  requires std::unsigned_integral<Unsigned>
  const char* behind(const char* at, Unsigned& number) const {
    const Scanned scanned = isOneDigit(at) ? oneDigit(at) : scanUnsigned(at, m_end);
    number = static_cast<Unsigned>(scanned.bits);
    return scanned.behind;
  }
  const char* behind(const char* at, int& number) const {
    const Scanned scanned = isOneDigit(at) ? oneDigit(at) : scanSigned(at, m_end);
    number = static_cast<int>(scanned.bits);
    return scanned.behind;
  }
  const char* behind(const char* at, HexInto number) const {
    const Scanned scanned = scanHex(at, m_end);
    number.value = static_cast<unsigned int>(scanned.bits);
    return scanned.behind;
  }

  struct Scanned {
    const char* behind;  // NULL: no number
    unsigned long bits;  // of the unsigned or signed 64-bit number
  };
  static Scanned scanPlain(const char* at, const char* end);
  static Scanned scanUnsigned(const char* at, const char* end);
  static Scanned scanSigned(const char* at, const char* end);
  static Scanned scanHex(const char* at, const char* end);

  // Most numbers are short.
  bool isOneDigit(const char* at) const {
    return left(at) >= 2 && isDigit(at[0]) && !isDigit(at[1]);
  }
  static Scanned oneDigit(const char* at) {
    return {at + 1, static_cast<unsigned long>(*at - '0')};
  }
  static bool isDigit(char c) { return c >= '0' && c <= '9'; }

  unsigned long left(const char* at) const { return static_cast<unsigned long>(m_end - at); }
  bool find(std::string_view key);

  const char* m_at;
  const char* m_end;
};

}  // namespace EventSystem

#endif
