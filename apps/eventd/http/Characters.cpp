#include "apps/eventd/http/Characters.h"

#include <algorithm>
#include <cstddef>

namespace EventApps::Http {
namespace {

// How a sequence that begins with `lead` goes on: bytes that follow, and the range of the first.
struct Sequence {
  std::size_t following;
  unsigned char lowest;
  unsigned char highest;
};

constexpr Sequence kNone = {0, 1, 0};

Sequence sequenceOf(unsigned char lead) {
  if (lead < 0x80) return {0, 0, 0};
  if (lead < 0xc2 || lead > 0xf4) return kNone;
  if (lead < 0xe0) return {1, 0x80, 0xbf};
  if (lead == 0xe0) return {2, 0xa0, 0xbf};
  if (lead == 0xed) return {2, 0x80, 0x9f};
  if (lead < 0xf0) return {2, 0x80, 0xbf};
  if (lead == 0xf0) return {3, 0x90, 0xbf};
  if (lead == 0xf4) return {3, 0x80, 0x8f};
  return {3, 0x80, 0xbf};
}

bool isAlphanumeric(char byte) {
  return (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z') ||
         (byte >= 'a' && byte <= 'z');
}

char lowered(char byte) {
  return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte + 32) : byte;
}

}  // namespace

bool isControl(char byte) {
  return static_cast<unsigned char>(byte) < 0x20 || byte == 0x7f;
}

bool isToken(std::string_view text) {
  constexpr std::string_view kMarks = "!#$%&'*+-.^_`|~";
  return !text.empty() && std::all_of(text.begin(), text.end(), [&](char byte) {
    return isAlphanumeric(byte) || kMarks.find(byte) != std::string_view::npos;
  });
}

bool equalInAnyCase(std::string_view one, std::string_view other) {
  return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                    [](char a, char b) { return lowered(a) == lowered(b); });
}

bool isUtf8(std::string_view bytes) {
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const Sequence sequence = sequenceOf(static_cast<unsigned char>(bytes[i]));
    if (sequence.lowest > sequence.highest || bytes.size() - i <= sequence.following) return false;
    for (std::size_t k = 1; k <= sequence.following; ++k) {
      const auto byte = static_cast<unsigned char>(bytes[i + k]);
      const unsigned char lowest = k == 1 ? sequence.lowest : 0x80;
      const unsigned char highest = k == 1 ? sequence.highest : 0xbf;
      if (byte < lowest || byte > highest) return false;
    }
    i += sequence.following;
  }
  return true;
}

}  // namespace EventApps::Http
