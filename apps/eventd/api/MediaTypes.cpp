#include "apps/eventd/api/MediaTypes.h"

#include <algorithm>
#include <cctype>

#include "apps/eventd/api/Problem.h"

namespace EventApps::Api {
namespace {

std::string_view trimmed(std::string_view text) {
  const std::size_t start = text.find_first_not_of(" \t");
  if (start == std::string_view::npos) return {};
  return text.substr(start, text.find_last_not_of(" \t") - start + 1);
}

std::string lowered(std::string_view text) {
  std::string lower(text);
  std::transform(lower.begin(), lower.end(), lower.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return lower;
}

// Takes what stands before the separator, or all that is left.
std::string_view take(std::string_view& text, char separator) {
  const std::size_t end = text.find(separator);
  const std::string_view taken = text.substr(0, end);
  text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
  return trimmed(taken);
}

void requireUtf8(std::string_view parameters, std::string_view contentType) {
  while (!parameters.empty()) {
    const std::string parameter = lowered(take(parameters, ';'));
    if (!parameter.starts_with("charset=")) continue;
    std::string charset = parameter.substr(parameter.find('=') + 1);
    std::erase(charset, '"');
    if (charset == "utf-8" || charset == "us-ascii") continue;
    throw Refused(ProblemKind::kUnsupportedMediaType,
                  "Content-Type is \"" + std::string(contentType) + "\"; send the body in UTF-8");
  }
}

bool covers(std::string_view range, std::string_view mediaType) {
  if (range == "*/*" || range == mediaType) return true;
  return range.ends_with("/*") && mediaType.starts_with(range.substr(0, range.size() - 1));
}

// "q=0", "q=0.0": not this one.
bool isExcluded(std::string_view parameters) {
  while (!parameters.empty()) {
    const std::string parameter = lowered(take(parameters, ';'));
    if (parameter.starts_with("q=")) {
      return parameter.find_first_not_of("0.", 2) == std::string::npos;
    }
  }
  return false;
}

}  // namespace

std::string mediaTypeOf(std::string_view contentType) {
  std::string_view rest = contentType;
  std::string type = lowered(take(rest, ';'));
  requireUtf8(rest, contentType);
  return type;
}

bool accepts(std::string_view accept, std::string_view mediaType) {
  if (trimmed(accept).empty()) return true;
  std::size_t best = 0;  // the most specific range that speaks of the type decides
  bool accepted = false;
  while (!accept.empty()) {
    std::string_view item = take(accept, ',');
    const std::string range = lowered(take(item, ';'));
    if (!covers(range, mediaType)) continue;
    const std::size_t weight = range == "*/*" ? 1 : range.ends_with("/*") ? 2 : 3;
    if (weight < best) continue;
    best = weight;
    accepted = !isExcluded(item);
  }
  return accepted;
}

}  // namespace EventApps::Api
