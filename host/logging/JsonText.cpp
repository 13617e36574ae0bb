#include "host/logging/JsonText.h"

#include <cstddef>

namespace EventSystemHost {

namespace {

constexpr std::string_view kReplacement = "\xef\xbf\xbd";

unsigned char byteAt(std::string_view text, std::size_t place) {
  return place < text.size() ? static_cast<unsigned char>(text[place]) : 0;
}

bool isBetween(unsigned char byte, unsigned char low, unsigned char high) {
  return byte >= low && byte <= high;
}

// Bytes of the UTF-8 character of more than one byte that `text` begins with; 0 when it begins with
// none (table 3-7 of the Unicode standard).
std::size_t sequenceLength(std::string_view text) {
  const unsigned char first = byteAt(text, 0);
  const unsigned char second = byteAt(text, 1);
  if (isBetween(first, 0xC2, 0xDF)) return isBetween(second, 0x80, 0xBF) ? 2 : 0;
  const bool thirdFollows = isBetween(byteAt(text, 2), 0x80, 0xBF);
  if (isBetween(first, 0xE0, 0xEF)) {
    const unsigned char low = first == 0xE0 ? 0xA0 : 0x80;
    const unsigned char high = first == 0xED ? 0x9F : 0xBF;
    return isBetween(second, low, high) && thirdFollows ? 3 : 0;
  }
  if (isBetween(first, 0xF0, 0xF4)) {
    const unsigned char low = first == 0xF0 ? 0x90 : 0x80;
    const unsigned char high = first == 0xF4 ? 0x8F : 0xBF;
    const bool fourthFollows = isBetween(byteAt(text, 3), 0x80, 0xBF);
    return isBetween(second, low, high) && thirdFollows && fourthFollows ? 4 : 0;
  }
  return 0;
}

void appendAscii(std::string& line, char c) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  const auto byte = static_cast<unsigned char>(c);
  if (c == '"' || c == '\\') {
    line += {'\\', c};
  } else if (c == '\n') {
    line += "\\n";
  } else if (c == '\t') {
    line += "\\t";
  } else if (byte < 0x20 || byte == 0x7f) {
    line += "\\u00";
    line += {kDigits[byte >> 4], kDigits[byte & 15]};
  } else {
    line += c;
  }
}

}  // namespace

void appendJsonText(std::string& line, std::string_view text) {
  while (!text.empty()) {
    std::size_t taken = 1;
    if (static_cast<unsigned char>(text.front()) < 0x80) {
      appendAscii(line, text.front());
    } else if (const std::size_t length = sequenceLength(text); length > 0) {
      line.append(text.substr(0, length));
      taken = length;
    } else {
      line.append(kReplacement);
    }
    text.remove_prefix(taken);
  }
}

}  // namespace EventSystemHost
