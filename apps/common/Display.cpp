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

struct CodeRange {
  std::uint32_t first;
  std::uint32_t last;
};

// What is not seen and changes the direction or the joining of what follows, or carries text of its
// own: marks, fillers and tags.
constexpr std::array<CodeRange, 13> kInvisible = {{{0xAD, 0xAD},
                                                   {0x61C, 0x61C},
                                                   {0x115F, 0x1160},
                                                   {0x180E, 0x180E},
                                                   {0x200B, 0x200F},
                                                   {0x2028, 0x202E},
                                                   {0x2060, 0x206F},
                                                   {0x3164, 0x3164},
                                                   {0xFEFF, 0xFEFF},
                                                   {0xFFA0, 0xFFA0},
                                                   {0xFFF9, 0xFFFB},
                                                   {0x1D173, 0x1D17A},
                                                   {0xE0000, 0xE0FFF}}};

bool isInvisible(std::uint32_t code) {
  return std::any_of(kInvisible.begin(), kInvisible.end(), [code](const CodeRange& range) {
    return code >= range.first && code <= range.last;
  });
}

// DEL and those above ASCII, of which some begin a terminal's commands.
bool isControl(std::uint32_t code) {
  return code >= 0x7F && code <= 0x9F;
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

// As one UTF-16 unit, or two.
void appendJsonEscape(std::string& json, std::uint32_t code) {
  if (code > 0xFFFF) {
    appendJsonEscape(json, 0xD800 + ((code - 0x10000) >> 10));
    code = 0xDC00 + (code & 0x3FFu);
  }
  const std::string digits = hex(code);
  json.append("\\u").append(4 - digits.size(), '0').append(digits);
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
    if (printable && !isInvisible(character.code)) {
      shown += text.substr(0, character.bytes);
    } else {
      shown += "\\u{" + hex(character.code) + "}";
    }
    text.remove_prefix(character.bytes);
  }
  return shown;
}

std::string displayJson(std::string json) {
  const auto isPlain = [](char c) { return static_cast<unsigned char>(c) < 0x7F; };
  if (std::all_of(json.begin(), json.end(), isPlain)) return json;
  std::string shown;
  shown.reserve(json.size());
  for (std::string_view rest = json; !rest.empty();) {
    const Character character = firstCharacter(rest);
    const std::size_t bytes = std::max<std::size_t>(1, character.bytes);
    if (isControl(character.code) || isInvisible(character.code)) {
      appendJsonEscape(shown, character.code);
    } else {
      shown += rest.substr(0, bytes);
    }
    rest.remove_prefix(bytes);
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
