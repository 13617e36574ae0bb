#include "tests/cluster/LogCapture.h"

#include <array>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <mutex>

#include "EventSystem/platform/HostLog.h"

namespace EventSystemTest {
namespace {

std::mutex g_mutex;
std::string g_lines;

__attribute__((format(printf, 3, 0))) int keep(const char* level, int code, const char* format,
                                               va_list arguments) {
  std::array<char, 4096> text{};
  std::vsnprintf(text.data(), text.size(), format, arguments);
  const std::lock_guard lock(g_mutex);
  if (std::getenv("EVENTSYSTEM_TEST_LOG") != nullptr)
    std::fprintf(stderr, "%s %d: %s\n", level, code, text.data());
  g_lines += std::string(level) + " " + std::to_string(code) + ": " + text.data() + "\n";
  return code;
}

}  // namespace

void clearLog() {
  const std::lock_guard lock(g_mutex);
  g_lines.clear();
}

std::string logged() {
  const std::lock_guard lock(g_mutex);
  return g_lines;
}

}  // namespace EventSystemTest

int ErrorA(int code, const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  const int result = EventSystemTest::keep("error", code, format, arguments);
  va_end(arguments);
  return result;
}

int WarningA(int code, const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  const int result = EventSystemTest::keep("warning", code, format, arguments);
  va_end(arguments);
  return result;
}

int InfoA(int code, const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  const int result = EventSystemTest::keep("info", code, format, arguments);
  va_end(arguments);
  return result;
}

int TraceOn(void) {
  return 0;
}

void __Trace(const char*, ...) {}
