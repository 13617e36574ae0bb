#include "TextScanner.h"

#include <charconv>
#include <climits>

#include "Decimal.h"

namespace EventSystem {
namespace {

// A number as sscanf takes it apart.
struct Number {
  const char* behind = nullptr;  // NULL: there is none
  unsigned long magnitude = 0;
  bool negative = false;
  bool tooLarge = false;
};

bool isBlank(char c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}

Number scanNumber(const char* at, const char* end, int base) {
  Number number;
  while (at != end && isBlank(*at)) ++at;
  if (at != end && (*at == '-' || *at == '+')) {
    number.negative = *at == '-';
    ++at;
  }
  // The zero of a prefix is a number already, whatever follows.
  const bool prefixed =
      base == 16 && end - at >= 2 && at[0] == '0' && (at[1] == 'x' || at[1] == 'X');
  if (prefixed) at += 2;
  const auto [behind, error] = std::from_chars(at, end, number.magnitude, base);
  if (error == std::errc::invalid_argument && !prefixed) return number;
  number.tooLarge = error == std::errc::result_out_of_range;
  number.behind = behind;
  return number;
}

unsigned long asUnsigned(const Number& number) {
  if (number.tooLarge) return ULONG_MAX;
  return number.negative ? 0 - number.magnitude : number.magnitude;
}

unsigned long asSigned(const Number& number) {
  constexpr unsigned long kLargest = LONG_MAX;
  const bool tooLarge = number.tooLarge || number.magnitude > kLargest;
  const unsigned long magnitude = tooLarge ? kLargest + number.negative : number.magnitude;
  return number.negative ? 0 - magnitude : magnitude;
}

}  // namespace

// A number as it usually is: one to fifteen digits, not too close to the end of the text.
[[gnu::always_inline]] inline TextScanner::Scanned TextScanner::scanPlain(const char* at,
                                                                          const char* end) {
  constexpr unsigned long kPowers[] = {1, 10, 100, 1000, 10000, 100000, 1000000, 10000000};
  constexpr Scanned kNotPlain{nullptr, 0};
  if (end - at < 16) return kNotPlain;
  const std::uint64_t first = wordAt(at);
  if (const std::uint64_t other = findOther(first); other != 0) {
    const unsigned long count = digitsBefore(other);
    return count == 0 ? kNotPlain : Scanned{at + count, digitsToNumber(first, count)};
  }
  const std::uint64_t second = wordAt(at + 8);
  const std::uint64_t other = findOther(second);
  if (other == 0) return kNotPlain;
  const unsigned long high = digitsToNumber(first, 8);
  const unsigned long count = digitsBefore(other);
  if (count == 0) return {at + 8, high};
  return {at + 8 + count, high * kPowers[count] + digitsToNumber(second, count)};
}

TextScanner::Scanned TextScanner::scanUnsigned(const char* at, const char* end) {
  const Scanned plain = scanPlain(at, end);
  if (plain.behind != nullptr) return plain;
  const Number number = scanNumber(at, end, 10);
  return {number.behind, asUnsigned(number)};
}

TextScanner::Scanned TextScanner::scanSigned(const char* at, const char* end) {
  const Scanned plain = scanPlain(at, end);
  if (plain.behind != nullptr) return plain;
  const Number number = scanNumber(at, end, 10);
  return {number.behind, asSigned(number)};
}

TextScanner::Scanned TextScanner::scanHex(const char* at, const char* end) {
  unsigned long plain = 0;
  if (at != end && *at != '0') {
    const auto [behind, error] = std::from_chars(at, end, plain, 16);
    if (error == std::errc()) return {behind, plain};
  }
  const Number number = scanNumber(at, end, 16);
  return {number.behind, asUnsigned(number)};
}

bool TextScanner::find(std::string_view key) {
  const std::size_t at = rest().find(key);
  if (at == std::string_view::npos) return false;
  m_at += at + key.size();
  return true;
}

}  // namespace EventSystem
