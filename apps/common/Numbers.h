// Numbers given as text: strict, so that a typing error is never taken for a smaller number.
//
// Thread safety: pure functions of their arguments.

#ifndef EVENTSYSTEM_APPS_COMMON_NUMBERS_H
#define EVENTSYSTEM_APPS_COMMON_NUMBERS_H

#include <charconv>
#include <optional>
#include <string_view>
#include <system_error>

namespace EventApps {

// The number that the whole text spells, or nothing when it is no number of this type.
template <typename Number>
std::optional<Number> parseNumber(std::string_view text, int base = 10) {
  Number value{};
  const char* const end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, value, base);
  if (result.ec != std::errc() || result.ptr != end || text.empty()) return std::nullopt;
  return value;
}

}  // namespace EventApps

#endif
