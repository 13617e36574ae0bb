#include "EventText.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace EventSystem {

char* duplicateText(const char* text) {
  if (text == nullptr) return nullptr;
  char* const copy = strdup(text);
  if (copy == nullptr) throw std::bad_alloc();
  return copy;
}

// Not inline: where compilers see the bound, they copy in a way that is slow for short texts.
void copyText(std::string_view text, char* value, unsigned long bound) {
  const unsigned long length = std::min(text.size(), bound - 1);
  memmove(value, text.data(), length);
  value[length] = '\0';
}

void copyText(const char* text, char* value, unsigned long bound) {
  const char* const source = text == nullptr ? "" : text;
  copyText(std::string_view(source, strnlen(source, bound - 1)), value, bound);
}

unsigned int validState(unsigned int state) {
  return state > 2 ? 1 : state;
}

}  // namespace EventSystem
