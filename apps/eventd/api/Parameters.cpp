#include "apps/eventd/api/Parameters.h"

#include <algorithm>
#include <charconv>
#include <sstream>
#include <system_error>

#include "apps/common/EventKinds.h"
#include "apps/common/Numbers.h"
#include "apps/eventd/api/Problem.h"
#include "apps/eventd/http/Characters.h"

namespace EventApps::Api {
namespace {

[[noreturn]] void refuse(const std::string& detail) {
  throw Refused(ProblemKind::kBadRequest, detail);
}

std::string quoted(std::string_view name, const std::string& value) {
  return "the parameter " + std::string(name) + " is \"" + value + "\"";
}

std::string kindNames() {
  std::string names;
  for (const EventKind& kind : eventKinds())
    names.append(names.empty() ? "" : ", ").append(kind.name);
  return names;
}

std::string listed(std::initializer_list<std::string_view> known) {
  if (known.size() == 0) return "none is taken here";
  std::string names = "those taken here are ";
  for (const std::string_view name : known) {
    names.append(name == *known.begin() ? "" : ", ").append(name);
  }
  return names;
}

// Digits and at most one point: no sign, no exponent, no "inf".
std::optional<double> parseDecimal(const std::string& text) {
  double value = 0;
  const char* const end = text.data() + text.size();
  if (text.empty() || text.find_first_not_of("0123456789.") != std::string::npos) return {};
  const auto result = std::from_chars(text.data(), end, value, std::chars_format::fixed);
  if (result.ec != std::errc() || result.ptr != end) return {};
  return value;
}

}  // namespace

Parameters::Parameters(const Http::Request& request, std::initializer_list<std::string_view> known)
    : m_request(request) {
  std::set<std::string_view> seen;
  for (const auto& [name, value] : request.query) {
    if (std::find(known.begin(), known.end(), name) == known.end()) {
      refuse("there is no parameter \"" + name + "\"; " + listed(known));
    }
    if (!seen.insert(name).second) refuse("the parameter " + name + " is there twice; keep one");
  }
}

std::optional<unsigned long> Parameters::number(std::string_view name, unsigned long low,
                                                unsigned long high) const {
  const std::string* const value = find(name);
  if (value == nullptr) return std::nullopt;
  const auto number = parseNumber<unsigned long>(*value);
  if (number && *number >= low && *number <= high) return number;
  refuse(quoted(name, *value) + ", not a whole number from " + std::to_string(low) + " to " +
         std::to_string(high));
}

std::optional<std::chrono::milliseconds> Parameters::seconds(std::string_view name,
                                                             int most) const {
  constexpr double kMilliseconds = 1000;
  const std::string* const value = find(name);
  if (value == nullptr) return std::nullopt;
  const auto seconds = parseDecimal(*value);
  if (seconds && *seconds <= most) {
    return std::chrono::milliseconds(static_cast<long>(*seconds * kMilliseconds));
  }
  refuse(quoted(name, *value) + ", not a number of seconds from 0 to " + std::to_string(most));
}

bool Parameters::flag(std::string_view name, bool otherwise) const {
  const std::string* const value = find(name);
  if (value == nullptr) return otherwise;
  if (*value != "true" && *value != "false") {
    refuse(quoted(name, *value) + ", neither \"true\" nor \"false\"");
  }
  return *value == "true";
}

std::set<int> Parameters::kinds(std::string_view name) const {
  const std::string* const value = find(name);
  if (value == nullptr) return {};
  std::set<int> numbers;
  std::istringstream list(*value + ",");
  for (std::string one; std::getline(list, one, ',');) {
    const EventKind* const kind = kindNamed(one);
    if (kind == nullptr) {
      refuse(quoted(name, *value) + ", and \"" + one + "\" is no kind of event; those are " +
             kindNames());
    }
    numbers.insert(kind->number);
  }
  return numbers;
}

std::optional<std::string_view> onlyHeader(const Http::Request& request, std::string_view name) {
  std::optional<std::string_view> found;
  for (const auto& [given, value] : request.headers) {
    if (!Http::equalInAnyCase(given, name)) continue;
    if (found) refuse("the header " + std::string(name) + " is there twice");
    found = value;
  }
  return found;
}

unsigned long requireNumber(std::string_view text, unsigned long high, const std::string& what) {
  const auto number = parseNumber<unsigned long>(text);
  if (number && *number <= high) return *number;
  refuse(what + " \"" + std::string(text) + "\" is not a whole number from 0 to " +
         std::to_string(high));
}

}  // namespace EventApps::Api
