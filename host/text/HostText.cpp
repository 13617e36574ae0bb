#include "EventSystem/platform/HostText.h"

#include <algorithm>
#include <cstring>

unsigned long kvrstrlen(const char* text, unsigned long bound) {
  return text == nullptr ? 0 : strnlen(text, bound);
}

char* kvrstrncpy(char* destination, const char* source, unsigned long count, unsigned long bound) {
  if (destination == nullptr || bound == 0) return destination;
  const unsigned long length = kvrstrlen(source, std::min(count, bound - 1));
  if (length > 0) std::memmove(destination, source, length);
  destination[length] = '\0';
  return destination;
}

char* kvrstrcpy(char* destination, const char* source, unsigned long bound) {
  return kvrstrncpy(destination, source, bound, bound);
}

int QMStringEscapeA(const char* text, char* escaped, unsigned long size) {
  if (escaped == nullptr || size == 0) return 1;
  const char* source = text == nullptr ? "" : text;
  unsigned long used = 0;
  const unsigned long room = size - 1;
  const auto append = [&](const char* piece, unsigned long length) {
    if (room - used < length) return false;
    std::memcpy(escaped + used, piece, length);
    used += length;
    return true;
  };
  bool fits = append("\"", 1);
  while (fits && *source != '\0') {
    const unsigned long plain = strcspn(source, "\"");
    const unsigned long taken = std::min(plain, room - used);
    append(source, taken);
    source += taken;
    fits = taken == plain;
    // A doubled quote goes in whole or not at all: half of one would read as the closing quote.
    if (fits && *source == '"') {
      fits = append("\"\"", 2);
      ++source;
    }
  }
  fits = fits && append("\"", 1);
  escaped[used] = '\0';
  return fits ? 0 : 1;
}
