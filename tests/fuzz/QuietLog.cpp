// The host's log for targets that link parts of the host: a line is formatted, so that what it
// takes is read, and thrown away.

#include <cstdarg>
#include <cstdio>

#include "EventSystem/platform/HostLog.h"

namespace {

__attribute__((format(printf, 1, 0))) void discard(const char* format, std::va_list arguments) {
  char line[2048];
  std::vsnprintf(line, sizeof line, format, arguments);
}

}  // namespace

// A variadic call cannot be passed on, so each of these takes its own argument list.
#define EVENTSYSTEM_TEST_DISCARD \
  std::va_list arguments;        \
  va_start(arguments, format);   \
  discard(format, arguments);    \
  va_end(arguments)

extern "C" {

int ErrorA(int code, const char* format, ...) {
  EVENTSYSTEM_TEST_DISCARD;
  return code;
}

int WarningA(int code, const char* format, ...) {
  EVENTSYSTEM_TEST_DISCARD;
  return code;
}

int InfoA(int code, const char* format, ...) {
  EVENTSYSTEM_TEST_DISCARD;
  return code;
}

int TraceOn(void) {
  return 1;
}

void __Trace(const char* format, ...) {
  EVENTSYSTEM_TEST_DISCARD;
}

}  // extern "C"
