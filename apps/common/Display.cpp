#include "apps/common/Display.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <ctime>
#include <cwchar>

namespace EventApps {
namespace {

// One character at the start of a text; `bytes` is 0 when the text does not start with UTF-8.
struct Character {
  std::uint32_t code = 0;
  std::size_t bytes = 0;
};

bool isContinuation(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0u) == 0x80u;
}

Character firstCharacter(std::string_view text) {
  const auto lead = static_cast<unsigned char>(text[0]);
  if (lead < 0x80) return {lead, 1};
  const std::size_t bytes = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || text.size() < bytes) return {};
  std::uint32_t code = lead & (0xFFu >> (bytes + 1));
  for (std::size_t i = 1; i < bytes; ++i) {
    if (!isContinuation(text[i])) return {};
    code = (code << 6) | (static_cast<unsigned char>(text[i]) & 0x3Fu);
  }
  constexpr std::array<std::uint32_t, 5> kLeast = {0, 0, 0x80, 0x800, 0x10000};
  const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
  if (code < kLeast[bytes] || code > 0x10FFFF || surrogate) return {};
  return {code, bytes};
}

// Marks that change the direction or the joining of what follows without being seen.
bool isInvisibleMark(std::uint32_t code) {
  return (code >= 0x200B && code <= 0x200F) || (code >= 0x2028 && code <= 0x202E) ||
         (code >= 0x2060 && code <= 0x206F) || code == 0xFEFF || code == 0x061C;
}

std::size_t columnsOf(const Character& character) {
  const int width = ::wcwidth(static_cast<wchar_t>(character.code));
  return width > 0 ? static_cast<std::size_t>(width) : 0;
}

std::string hex(std::uint32_t value) {
  std::array<char, 8> digits{};
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value, 16);
  return {digits.data(), end.ptr};
}

std::string escapedByte(unsigned char byte) {
  switch (byte) {
    case '\n':
      return "\\n";
    case '\r':
      return "\\r";
    case '\t':
      return "\\t";
    default:
      return (byte < 0x10 ? "\\x0" : "\\x") + hex(byte);
  }
}

// The longest start of `text` that fits into `columns`, in bytes.
std::size_t fittingBytes(std::string_view text, std::size_t columns) {
  std::size_t used = 0;
  std::size_t position = 0;
  while (position < text.size()) {
    const Character character = firstCharacter(text.substr(position));
    const std::size_t width = character.bytes == 0 ? 1 : columnsOf(character);
    if (used + width > columns) break;
    used += width;
    position += character.bytes == 0 ? 1 : character.bytes;
  }
  return position;
}

}  // namespace

std::string displayText(std::string_view text) {
  std::string shown;
  shown.reserve(text.size());
  while (!text.empty()) {
    const Character character = firstCharacter(text);
    if (character.bytes == 0 || character.code < 0x20 || character.code == 0x7F) {
      shown += escapedByte(static_cast<unsigned char>(text[0]));
      text.remove_prefix(1);
      continue;
    }
    const bool printable = ::wcwidth(static_cast<wchar_t>(character.code)) >= 0;
    if (printable && !isInvisibleMark(character.code)) {
      shown += text.substr(0, character.bytes);
    } else {
      shown += "\\u{" + hex(character.code) + "}";
    }
    text.remove_prefix(character.bytes);
  }
  return shown;
}

bool isUtf8(std::string_view text) {
  while (!text.empty()) {
    const std::size_t bytes = firstCharacter(text).bytes;
    if (bytes == 0) return false;
    text.remove_prefix(bytes);
  }
  return true;
}

std::string hexOfBytes(std::string_view bytes) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string digits;
  digits.reserve(2 * bytes.size());
  for (const char byte : bytes) {
    const auto value = static_cast<unsigned char>(byte);
    digits += kDigits[value >> 4];
    digits += kDigits[value & 0xFu];
  }
  return digits;
}

std::size_t displayWidth(std::string_view text) {
  std::size_t width = 0;
  while (!text.empty()) {
    const Character character = firstCharacter(text);
    width += character.bytes == 0 ? 1 : columnsOf(character);
    text.remove_prefix(character.bytes == 0 ? 1 : character.bytes);
  }
  return width;
}

std::string cutToWidth(std::string_view text, std::size_t columns) {
  if (displayWidth(text) <= columns) return std::string(text);
  if (columns == 0) return "";
  return std::string(text.substr(0, fittingBytes(text, columns - 1))) + "…";
}

std::string displayStart(std::string_view text, std::size_t columns) {
  constexpr std::size_t kMostBytes = 4;  // of one character
  std::size_t bytes = std::min(text.size(), kMostBytes * columns);
  const bool isWhole = bytes == text.size();
  for (std::size_t i = 1; !isWhole && i < kMostBytes && isContinuation(text[bytes]); ++i) --bytes;
  const std::string shown = displayText(text.substr(0, bytes));
  return cutToWidth(isWhole ? shown : shown + "…", columns);
}

std::vector<std::string> wrapToWidth(std::string_view text, std::size_t columns) {
  std::vector<std::string> lines;
  while (displayWidth(text) > columns) {
    std::size_t end = fittingBytes(text, columns);
    if (end == 0) end = 1;  // a column too narrow for a wide character
    const std::size_t blank = text.rfind(' ', end);
    const bool atBlank = blank != std::string_view::npos && blank > 0;
    lines.emplace_back(text.substr(0, atBlank ? blank : end));
    text.remove_prefix(atBlank ? blank + 1 : end);
  }
  lines.emplace_back(text);
  return lines;
}

std::string displayTime(unsigned long seconds, bool iso) {
  const auto when = static_cast<std::time_t>(seconds);
  std::tm parts{};
  std::array<char, 64> buffer{};
  constexpr unsigned long kYear10000 = 253402300800UL;
  if (seconds >= kYear10000 || ::gmtime_r(&when, &parts) == nullptr) {
    return "@" + std::to_string(seconds);
  }
  const std::size_t length =
      iso ? std::strftime(buffer.data(), buffer.size(), "%Y-%m-%dT%H:%M:%SZ", &parts)
          : std::strftime(buffer.data(), buffer.size(), "%Y-%m-%d %H:%M:%S", &parts);
  return {buffer.data(), length};
}

std::string displayCount(unsigned long count) {
  std::string digits = std::to_string(count);
  for (std::size_t i = digits.size(); i > 3; i -= 3) digits.insert(i - 3, ",");
  return digits;
}

}  // namespace EventApps
