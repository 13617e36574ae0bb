#include "apps/eventd/http/Request.h"

#include <algorithm>

#include "apps/eventd/http/Characters.h"

namespace EventApps::Http {

const std::string* Request::find(std::string_view name) const {
  const auto found =
      std::find_if(query.begin(), query.end(), [&](const auto& one) { return one.first == name; });
  return found == query.end() ? nullptr : &found->second;
}

std::string_view Request::header(std::string_view name) const {
  const auto found = std::find_if(headers.begin(), headers.end(),
                                  [&](const auto& one) { return equalInAnyCase(one.first, name); });
  return found == headers.end() ? std::string_view() : std::string_view(found->second);
}

}  // namespace EventApps::Http
