#include "TextWriter.h"

#include <algorithm>
#include <bit>

namespace EventSystem {
namespace {

constexpr unsigned long kEightDigits = 100000000;

// "00" to "99".
struct Pairs {
  char text[100][2];
};
constexpr Pairs kPairs = [] {
  Pairs pairs{};
  for (int i = 0; i < 100; ++i) {
    pairs.text[i][0] = static_cast<char>('0' + i / 10);
    pairs.text[i][1] = static_cast<char>('0' + i % 10);
  }
  return pairs;
}();

char* putTwo(char* at, unsigned int number) {
  memcpy(at, kPairs.text[number], 2);
  return at + 2;
}

char* putFour(char* at, unsigned int number) {
  return putTwo(putTwo(at, number / 100), number % 100);
}

char* putEight(char* at, unsigned int number) {
  return putFour(putFour(at, number / 10000), number % 10000);
}

char* putOneOrTwo(char* at, unsigned int number) {
  if (number >= 10) return putTwo(at, number);
  *at = static_cast<char>('0' + number);
  return at + 1;
}

// A number of at most eight digits, without leading zeros.
char* putUpToEight(char* at, unsigned int number) {
  if (number < 100) return putOneOrTwo(at, number);
  if (number < 10000) return putTwo(putOneOrTwo(at, number / 100), number % 100);
  if (number < 1000000) return putFour(putOneOrTwo(at, number / 10000), number % 10000);
  at = putOneOrTwo(at, number / 1000000);
  return putFour(putTwo(at, number / 10000 % 100), number % 10000);
}

}  // namespace

// Eight digits at a time, because division is what takes the time.
char* TextWriter::putDecimal(char* at, unsigned long number) {
  if (number < kEightDigits) return putUpToEight(at, static_cast<unsigned int>(number));
  const unsigned long high = number / kEightDigits;
  if (high < kEightDigits) {
    at = putUpToEight(at, static_cast<unsigned int>(high));
  } else {
    at = putUpToEight(at, static_cast<unsigned int>(high / kEightDigits));
    at = putEight(at, static_cast<unsigned int>(high % kEightDigits));
  }
  return putEight(at, static_cast<unsigned int>(number % kEightDigits));
}

char* TextWriter::put(char* at, UpperHex number) {
  const int digits =
      number.value == 0 ? 1 : (static_cast<int>(std::bit_width(number.value)) + 3) / 4;
  for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4) {
    *at++ = "0123456789ABCDEF"[(number.value >> shift) % 16];
  }
  return at;
}

unsigned long TextWriter::append(Text text) {
  const unsigned long fitting = std::min(text.value.size(), m_room);
  memcpy(m_next, text.value.data(), fitting);
  m_next += fitting;
  m_room -= fitting;
  return text.value.size();
}

}  // namespace EventSystem
