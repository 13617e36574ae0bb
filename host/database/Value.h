// One value of a row, and its conversions from and to text.
//
// Thread safety: plain values and pure functions.

#ifndef EVENTSYSTEM_HOST_DATABASE_VALUE_H
#define EVENTSYSTEM_HOST_DATABASE_VALUE_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace EventSystemHost {

// Nothing, a number or text.
using Value = std::variant<std::monostate, std::int64_t, std::string>;

// A row's values in the order of the table's columns.
using Row = std::vector<Value>;

// Exactly a decimal number, without blanks, a plus sign or anything after it.
std::optional<std::int64_t> parseNumber(std::string_view text);

// A number, or text that is one.
std::optional<std::int64_t> asNumber(const Value& value);

// Copies the value's text, at most `size` bytes with the terminator. False when `size` is 0.
bool copyText(const Value& value, char* buffer, unsigned int size);

// Text for a log line: in quotes, cut when it is long.
std::string quotedForLog(std::string_view text);

}  // namespace EventSystemHost

#endif
