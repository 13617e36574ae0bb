#include <cstdarg>
#include <cstdio>
#include <ostream>
#include <vector>

#include "EventSystem/platform/HostLog.h"
#include "tests/support/FakeHostInternals.h"
#include "tests/support/LogLine.h"

namespace EventSystemTest {

namespace {

__attribute__((format(printf, 1, 0))) std::string formatted(const char* format, va_list arguments) {
  va_list again;
  va_copy(again, arguments);
  const int length = std::vsnprintf(nullptr, 0, format, arguments);
  std::vector<char> text(static_cast<std::size_t>(length) + 1);
  std::vsnprintf(text.data(), text.size(), format, again);
  va_end(again);
  return std::string(text.data());
}

__attribute__((format(printf, 3, 0))) LogLine makeLine(const char* level, int code,
                                                       const char* format, va_list arguments) {
  return LogLine{level, code, format, formatted(format, arguments)};
}

void note(const char* function, const LogLine& line) {
  Call call{line.level == "trace" ? CallKind::kTrace : CallKind::kLog, function, line.text, line};
  if (line.level != "trace") call.arguments = std::to_string(line.code) + ", " + line.text;
  host().enter(std::move(call));
}

}  // namespace

#define EVENTSYSTEM_TEST_LINE(level, code)                       \
  va_list arguments;                                             \
  va_start(arguments, format);                                   \
  const LogLine line = makeLine(level, code, format, arguments); \
  va_end(arguments)

LogLine error(int code, const char* format, ...) {
  EVENTSYSTEM_TEST_LINE("error", code);
  return line;
}

LogLine warning(int code, const char* format, ...) {
  EVENTSYSTEM_TEST_LINE("warning", code);
  return line;
}

LogLine info(int code, const char* format, ...) {
  EVENTSYSTEM_TEST_LINE("info", code);
  return line;
}

LogLine trace(const char* format, ...) {
  EVENTSYSTEM_TEST_LINE("trace", 0);
  return line;
}

std::ostream& operator<<(std::ostream& out, const LogLine& line) {
  return out << line.level << " " << line.code << " \"" << line.text << "\" (" << line.format
             << ")";
}

}  // namespace EventSystemTest

using namespace EventSystemTest;

extern "C" {

int ErrorA(int code, const char* format, ...) {
  const Guard guard;
  EVENTSYSTEM_TEST_LINE("error", code);
  note("ErrorA", line);
  return code;
}

int WarningA(int code, const char* format, ...) {
  const Guard guard;
  EVENTSYSTEM_TEST_LINE("warning", code);
  note("WarningA", line);
  return code;
}

int InfoA(int code, const char* format, ...) {
  const Guard guard;
  EVENTSYSTEM_TEST_LINE("info", code);
  note("InfoA", line);
  return code;
}

int TraceOn(void) {
  const Guard guard;
  host().enter({CallKind::kTrace, "TraceOn", "", {}});
  return state().tracing ? 1 : 0;
}

void __Trace(const char* format, ...) {
  const Guard guard;
  EVENTSYSTEM_TEST_LINE("trace", 0);
  note("__Trace", line);
}

}  // extern "C"
