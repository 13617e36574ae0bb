#include "EventSystem/platform/HostLog.h"

#include <array>
#include <cstdarg>
#include <cstdio>
#include <new>
#include <string>

#include "host/logging/LineWriter.h"

namespace {

using EventSystemHost::LogLevel;

constexpr std::size_t kUsualLine = 1024;

__attribute__((format(printf, 3, 0))) void writeLong(LogLevel level, int code, const char* format,
                                                     std::size_t length, std::va_list arguments) {
  try {
    std::string line(length + 1, '\0');
    std::vsnprintf(line.data(), line.size(), format, arguments);
    EventSystemHost::writeLine(level, code, {line.data(), length});
  } catch (const std::bad_alloc&) {
    EventSystemHost::writeLine(level, code, format);
  }
}

__attribute__((format(printf, 3, 0))) void writeFormatted(LogLevel level, int code,
                                                          const char* format,
                                                          std::va_list arguments) {
  std::array<char, kUsualLine> line;
  std::va_list again;
  va_copy(again, arguments);
  const int length = std::vsnprintf(line.data(), line.size(), format, arguments);
  if (length < 0) {
    EventSystemHost::writeLine(level, code, format);
  } else if (const auto size = static_cast<std::size_t>(length); size < line.size()) {
    EventSystemHost::writeLine(level, code, {line.data(), size});
  } else {
    writeLong(level, code, format, size, again);
  }
  va_end(again);
}

}  // namespace

// A variadic call cannot be passed on, so each of these takes its own argument list.
#define EVENTSYSTEM_LOG_CALL(level, code, format)          \
  if (format != nullptr && EventSystemHost::logs(level)) { \
    std::va_list arguments;                                \
    va_start(arguments, format);                           \
    writeFormatted(level, code, format, arguments);        \
    va_end(arguments);                                     \
  }

int ErrorA(int code, const char* format, ...) {
  EVENTSYSTEM_LOG_CALL(LogLevel::kError, code, format)
  return code;
}

int WarningA(int code, const char* format, ...) {
  EVENTSYSTEM_LOG_CALL(LogLevel::kWarning, code, format)
  return code;
}

int InfoA(int code, const char* format, ...) {
  EVENTSYSTEM_LOG_CALL(LogLevel::kInfo, code, format)
  return code;
}

int TraceOn(void) {
  return EventSystemHost::logs(LogLevel::kTrace) ? 1 : 0;
}

void __Trace(const char* format, ...) {
  EVENTSYSTEM_LOG_CALL(LogLevel::kTrace, 0, format)
}
