// The host's log for programs that compare very many parses: a line is kept as level, code, format
// and arguments, unformatted.
//
// Thread safety: every thread captures its own lines.

#ifndef EVENTSYSTEM_TESTS_DIFFERENTIAL_LOGCAPTURE_H
#define EVENTSYSTEM_TESTS_DIFFERENTIAL_LOGCAPTURE_H

#include <array>
#include <cstddef>
#include <string>

namespace EventSystemTest {

struct CapturedLine {
  char level = 0;  // 'E', 'W', 'I' or 'T'
  int code = 0;
  const char* format = nullptr;
  std::array<const char*, 4> texts{};  // of its %s, in order
  std::array<long, 4> numbers{};       // of its %d and %u, in order

  // Texts are compared by what they point to, so both lines' arguments must still be alive.
  bool operator==(const CapturedLine& other) const;
};

// A parse logs three lines at most; of more lines only the count is kept.
class LogCapture {
 public:
  void clear() { m_count = 0; }
  std::size_t count() const { return m_count; }
  void add(const CapturedLine& line);
  bool operator==(const LogCapture& other) const;
  std::string describe() const;

 private:
  std::size_t m_count = 0;
  std::array<CapturedLine, 4> m_lines{};
};

// Where this thread's log lines go from now on.
void captureLog(LogCapture& capture);

}  // namespace EventSystemTest

#endif
