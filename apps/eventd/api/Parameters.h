// What a query says, read strictly: a parameter that is misspelt, repeated or out of range is told,
// never passed over. A wrong "upto" must not delete what a right one would have kept.
//
// Thread safety: none; refers to a request that outlives it.

#ifndef EVENTSYSTEM_APPS_EVENTD_API_PARAMETERS_H
#define EVENTSYSTEM_APPS_EVENTD_API_PARAMETERS_H

#include <chrono>
#include <initializer_list>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "apps/eventd/http/Request.h"

namespace EventApps::Api {

class Parameters {
 public:
  // Throws Refused for parameters that are not among those known, and for repeated ones. So do all
  // of the following for values that are not what they ask for.
  Parameters(const Http::Request& request, std::initializer_list<std::string_view> known);

  const std::string* find(std::string_view name) const { return m_request.find(name); }

  // A whole number from `low` to `high`.
  std::optional<unsigned long> number(std::string_view name, unsigned long low,
                                      unsigned long high) const;

  // Seconds with or without a fraction, from 0 to `most`.
  std::optional<std::chrono::milliseconds> seconds(std::string_view name, int most) const;

  // "true" or "false".
  bool flag(std::string_view name, bool otherwise) const;

  // The numbers of kinds that are named, separated by commas; none when there is no such parameter.
  std::set<int> kinds(std::string_view name) const;

 private:
  const Http::Request& m_request;
};

// The one value of a header; nothing when it is not there. Throws Refused for two: readers disagree
// about which one counts.
std::optional<std::string_view> onlyHeader(const Http::Request& request, std::string_view name);

// A number in a path or header. Throws Refused, with `what` in its words.
unsigned long requireNumber(std::string_view text, unsigned long high, const std::string& what);

}  // namespace EventApps::Api

#endif
