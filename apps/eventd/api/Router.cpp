#include "apps/eventd/api/Router.h"

#include <optional>
#include <set>

#include "apps/common/Display.h"
#include "apps/eventd/api/Problem.h"

namespace EventApps::Api {
namespace {

// Takes the first segment of a path off.
std::string_view takeSegment(std::string_view& path) {
  path.remove_prefix(1);
  const std::string_view segment = path.substr(0, path.find('/'));
  path.remove_prefix(segment.size());
  return segment;
}

std::optional<PathArguments> matched(std::string_view pattern, std::string_view path) {
  PathArguments arguments;
  while (pattern.starts_with('/') && path.starts_with('/')) {
    const std::string_view wanted = takeSegment(pattern);
    const std::string_view found = takeSegment(path);
    if (wanted.starts_with('{') && !found.empty()) {
      arguments.emplace(wanted.substr(1, wanted.size() - 2), found);
    } else if (wanted != found) {
      return std::nullopt;
    }
  }
  if (!pattern.empty() || !path.empty()) return std::nullopt;
  return arguments;
}

// A fixed path is meant before one with arguments: ".../events/stream" is no event's id.
bool isFixed(const Route& route) {
  return route.pattern.ends_with("/stream") || route.pattern.find('{') == std::string_view::npos;
}

[[noreturn]] void refuseMethod(std::string_view method, const std::set<std::string>& allowed) {
  std::string list;
  for (const std::string& one : allowed) list.append(list.empty() ? "" : ", ").append(one);
  throw Refused(Problem{.kind = ProblemKind::kMethodNotAllowed,
                        .detail = displayText(method) + " does nothing here; there is " + list,
                        .headers = {{"Allow", list}}});
}

}  // namespace

Match findRoute(std::string_view method, std::string_view path) {
  const std::string_view wanted = method == "HEAD" ? "GET" : method;
  std::set<std::string> allowed;
  Match match;
  for (const Route& route : routes()) {
    auto arguments = matched(route.pattern, path);
    if (!arguments) continue;
    allowed.emplace(route.method);
    if (route.method == "GET") allowed.emplace("HEAD");
    const bool isBetter = match.route == nullptr || isFixed(route);
    if (route.method == wanted && isBetter) match = {&route, std::move(*arguments)};
  }
  if (match.route == nullptr && !allowed.empty()) refuseMethod(method, allowed);
  return match;
}

}  // namespace EventApps::Api
