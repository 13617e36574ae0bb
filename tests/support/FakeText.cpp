#include <algorithm>
#include <cstring>
#include <string>

#include "EventSystem/platform/HostClock.h"
#include "EventSystem/platform/HostText.h"
#include "tests/support/FakeHostInternals.h"

using namespace EventSystemTest;

extern "C" {

char* kvrstrcpy(char* destination, const char* source, unsigned long bound) {
  return kvrstrncpy(destination, source, bound, bound);
}

char* kvrstrncpy(char* destination, const char* source, unsigned long count, unsigned long bound) {
  if (bound == 0) return destination;
  const unsigned long length = source == nullptr ? 0 : strnlen(source, std::min(count, bound - 1));
  if (length != 0) std::memcpy(destination, source, length);
  destination[length] = '\0';
  return destination;
}

unsigned long kvrstrlen(const char* text, unsigned long bound) {
  return strnlen(text, bound);
}

int QMStringEscapeA(const char* text, char* escaped, unsigned long size) {
  const Guard guard;
  const std::optional<int> failure =
      host().enter({CallKind::kText, "QMStringEscapeA", std::to_string(size), {}});
  std::string field = "\"";
  for (const char* c = text; *c != '\0'; ++c) {
    if (*c == '"') field += '"';
    field += *c;
  }
  field += '"';
  const bool cut = field.size() >= size || failure;
  if (cut) field.resize(failure ? 1 : size - 1);
  kvrstrcpy(escaped, field.c_str(), size);
  return cut ? 1 : 0;
}

long gethrtime(void) {
  const Guard guard;
  host().enter({CallKind::kClock, "gethrtime", "", {}});
  return state().clock;
}

double hrtime2seconds(long difference) {
  const Guard guard;
  host().enter({CallKind::kClock, "hrtime2seconds", std::to_string(difference), {}});
  return static_cast<double>(difference) / 1e9;
}

}  // extern "C"
