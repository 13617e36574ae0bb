// Decimal numbers eight digits at a time: a word of text and its value, with a few multiplications
// instead of a loop. The first character is the lowest byte of a word.
//
// Thread safety: pure functions.

#ifndef EVENTSYSTEM_SRC_EVENTS_DECIMAL_H
#define EVENTSYSTEM_SRC_EVENTS_DECIMAL_H

#include <bit>
#include <cstdint>
#include <cstring>

namespace EventSystem {

static_assert(std::endian::native == std::endian::little,
              "EventSystem needs a little-endian machine");

inline constexpr std::uint64_t kZeros = 0x3030303030303030;  // "00000000"

inline std::uint64_t wordAt(const char* text) {
  std::uint64_t word;
  memcpy(&word, text, sizeof word);
  return word;
}

// 0 when all eight characters are digits; otherwise the lowest bit tells the first that is none.
inline std::uint64_t findOther(std::uint64_t word) {
  const std::uint64_t values = word ^ kZeros;
  // A byte above 9 sets its highest bit; what it carries into later bytes comes behind it.
  return ((values + 0x7676767676767676) | values) & 0x8080808080808080;
}

// How many digits stand before the other character.
inline unsigned long digitsBefore(std::uint64_t other) {
  return static_cast<unsigned long>(std::countr_zero(other)) / 8;
}

// The value of the word's first `count` characters, which are 1 to 8 digits.
inline std::uint64_t digitsToNumber(std::uint64_t word, unsigned long count) {
  const std::uint64_t digits = (word ^ kZeros) << (64 - 8 * count);
  const std::uint64_t pairs = (digits * 10 + (digits >> 8)) & 0x00ff00ff00ff00ff;
  const std::uint64_t fours = (pairs * 100 + (pairs >> 16)) & 0x0000ffff0000ffff;
  return (fours * 10000 + (fours >> 32)) & 0xffffffff;
}

}  // namespace EventSystem

#endif
