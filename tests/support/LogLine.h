// One line of the host's log as tests compare it: level, code, format and formatted text.
//
// Thread safety: plain values.

#ifndef EVENTSYSTEM_TESTS_SUPPORT_LOGLINE_H
#define EVENTSYSTEM_TESTS_SUPPORT_LOGLINE_H

#include <iosfwd>
#include <string>

namespace EventSystemTest {

struct LogLine {
  std::string level;  // "error", "warning", "info" or "trace"
  int code = 0;       // 0 for a trace line
  std::string format;
  std::string text;

  bool operator==(const LogLine&) const = default;
};

// The line that a call of ErrorA (WarningA, InfoA, __Trace) with these arguments makes.
LogLine error(int code, const char* format, ...) __attribute__((format(printf, 2, 3)));
LogLine warning(int code, const char* format, ...) __attribute__((format(printf, 2, 3)));
LogLine info(int code, const char* format, ...) __attribute__((format(printf, 2, 3)));
LogLine trace(const char* format, ...) __attribute__((format(printf, 1, 2)));

std::ostream& operator<<(std::ostream& out, const LogLine& line);

}  // namespace EventSystemTest

#endif
