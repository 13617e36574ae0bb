#include "tests/differential/LogCapture.h"

#include <algorithm>
#include <cstdarg>
#include <cstdlib>
#include <cstring>

#include "EventSystem/platform/HostLog.h"

namespace EventSystemTest {
namespace {

thread_local LogCapture* current = nullptr;

bool sameText(const char* one, const char* other) {
  if (one == other) return true;
  return one != nullptr && other != nullptr && strcmp(one, other) == 0;
}

// The arguments of a format that has no conversions but %s, %d and %u.
CapturedLine makeLine(char level, int code, const char* format, va_list arguments) {
  CapturedLine line{.level = level, .code = code, .format = format, .texts = {}, .numbers = {}};
  std::size_t texts = 0;
  std::size_t numbers = 0;
  for (const char* at = strchr(format, '%'); at != nullptr; at = strchr(at + 2, '%')) {
    if (at[1] == 's') {
      line.texts.at(texts++) = va_arg(arguments, const char*);
    } else if (at[1] == 'd') {
      line.numbers.at(numbers++) = va_arg(arguments, int);
    } else if (at[1] == 'u') {
      line.numbers.at(numbers++) = va_arg(arguments, unsigned int);
    } else {
      std::abort();
    }
  }
  return line;
}

void note(const CapturedLine& line) {
  if (current != nullptr) current->add(line);
}

}  // namespace

bool CapturedLine::operator==(const CapturedLine& other) const {
  return level == other.level && code == other.code && sameText(format, other.format) &&
         std::equal(texts.begin(), texts.end(), other.texts.begin(), sameText) &&
         numbers == other.numbers;
}

void LogCapture::add(const CapturedLine& line) {
  if (m_count < m_lines.size()) m_lines[m_count] = line;
  ++m_count;
}

bool LogCapture::operator==(const LogCapture& other) const {
  const std::size_t kept = std::min(m_count, m_lines.size());
  return m_count == other.m_count &&
         std::equal(m_lines.begin(), m_lines.begin() + static_cast<std::ptrdiff_t>(kept),
                    other.m_lines.begin());
}

std::string LogCapture::describe() const {
  std::string text;
  for (std::size_t i = 0; i < std::min(m_count, m_lines.size()); ++i) {
    text += std::string(1, m_lines[i].level) + ' ' + std::to_string(m_lines[i].code) + ' ' +
            m_lines[i].format + '\n';
  }
  return text;
}

void captureLog(LogCapture& capture) {
  current = &capture;
}

}  // namespace EventSystemTest

using namespace EventSystemTest;

// A variadic call cannot be passed on, so each of these takes its own argument list.
#define EVENTSYSTEM_TEST_CAPTURE(level, code)     \
  va_list arguments;                              \
  va_start(arguments, format);                    \
  note(makeLine(level, code, format, arguments)); \
  va_end(arguments)

extern "C" {

int ErrorA(int code, const char* format, ...) {
  EVENTSYSTEM_TEST_CAPTURE('E', code);
  return code;
}

int WarningA(int code, const char* format, ...) {
  EVENTSYSTEM_TEST_CAPTURE('W', code);
  return code;
}

int InfoA(int code, const char* format, ...) {
  EVENTSYSTEM_TEST_CAPTURE('I', code);
  return code;
}

int TraceOn(void) {
  return 1;
}

void __Trace(const char* format, ...) {
  EVENTSYSTEM_TEST_CAPTURE('T', 0);
}

}  // extern "C"
