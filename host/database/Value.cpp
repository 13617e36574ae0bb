#include "host/database/Value.h"

#include <charconv>

#include "EventSystem/platform/HostText.h"

namespace EventSystemHost {

std::optional<std::int64_t> parseNumber(std::string_view text) {
  std::int64_t number = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc() || stop != end) return std::nullopt;
  return number;
}

std::optional<std::int64_t> asNumber(const Value& value) {
  if (const auto* number = std::get_if<std::int64_t>(&value)) return *number;
  if (const auto* text = std::get_if<std::string>(&value)) return parseNumber(*text);
  return std::nullopt;
}

bool copyText(const Value& value, char* buffer, unsigned int size) {
  if (buffer == nullptr || size == 0) return false;
  if (const auto* number = std::get_if<std::int64_t>(&value)) {
    char digits[24];
    *std::to_chars(digits, digits + sizeof digits, *number).ptr = '\0';
    kvrstrcpy(buffer, digits, size);
  } else if (const auto* text = std::get_if<std::string>(&value)) {
    kvrstrcpy(buffer, text->c_str(), size);
  } else {
    buffer[0] = '\0';
  }
  return true;
}

std::string quotedForLog(std::string_view text) {
  constexpr std::size_t kMaxShown = 64;
  std::string shown = "'";
  shown += text.substr(0, kMaxShown);
  shown += text.size() > kMaxShown ? "...'" : "'";
  return shown;
}

}  // namespace EventSystemHost
