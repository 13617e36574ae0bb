// JSON from outside, bounded: how deep it goes, how many members an object has, how many elements
// the outermost array has. A member that is named twice is refused, because readers disagree about
// which one counts.
//
// Thread safety: pure functions of their arguments.

#ifndef EVENTSYSTEM_APPS_EVENTD_API_JSONREADER_H
#define EVENTSYSTEM_APPS_EVENTD_API_JSONREADER_H

#include <cstddef>
#include <nlohmann/json_fwd.hpp>
#include <string_view>

namespace EventApps::Api {

struct JsonBounds {
  std::size_t depth = 4;
  std::size_t members = 64;
  std::size_t elements = 1;  // of the outermost array
};

// Throws Refused: for what is no JSON with the place, for what is beyond the bounds with the bound.
nlohmann::json readJson(std::string_view text, const JsonBounds& bounds);

}  // namespace EventApps::Api

#endif
