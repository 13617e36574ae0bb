#include "apps/eventd/http/Target.h"

#include <algorithm>
#include <cstddef>
#include <string>

#include "apps/eventd/http/Characters.h"
#include "apps/eventd/http/RefusedRequest.h"

namespace EventApps::Http {
namespace {

enum class Part { kPath, kQuery };

[[noreturn]] void refuse(const std::string& detail) {
  throw RefusedRequest(400, detail);
}

const char* nameOf(Part part) {
  return part == Part::kPath ? "path" : "query";
}

int digitOf(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

char unescape(std::string_view escape, Part part) {
  const int high = escape.size() < 3 ? -1 : digitOf(escape[1]);
  const int low = escape.size() < 3 ? -1 : digitOf(escape[2]);
  if (high < 0 || low < 0) {
    refuse(std::string("The ") + nameOf(part) +
           " has a \"%\" that two hexadecimal digits do not follow; write \"%25\" for it.");
  }
  const char byte = static_cast<char>(high * 16 + low);
  if (isControl(byte)) {
    refuse(std::string("The ") + nameOf(part) + " has an escaped control character.");
  }
  if (part == Part::kPath && byte == '/') refuse("The path has an escaped slash.");
  return byte;
}

std::string decode(std::string_view text, Part part) {
  std::string decoded;
  decoded.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '%') {
      decoded += unescape(text.substr(i, 3), part);
      i += 2;
    } else {
      decoded += part == Part::kQuery && text[i] == '+' ? ' ' : text[i];
    }
  }
  if (!isUtf8(decoded)) refuse(std::string("The ") + nameOf(part) + " is not UTF-8.");
  return decoded;
}

void readQuery(std::string_view text, Request& request) {
  while (!text.empty()) {
    const std::string_view one = text.substr(0, text.find('&'));
    text.remove_prefix(std::min(text.size(), one.size() + 1));
    if (one.empty()) continue;
    const std::size_t equals = std::min(one.find('='), one.size());
    request.query.emplace_back(decode(one.substr(0, equals), Part::kQuery),
                               decode(one.substr(std::min(one.size(), equals + 1)), Part::kQuery));
  }
}

bool beginsWith(std::string_view text, std::string_view prefix) {
  return equalInAnyCase(text.substr(0, prefix.size()), prefix);
}

// What follows scheme and authority of an absolute target; the whole of any other.
std::string_view withoutAuthority(std::string_view target) {
  const std::size_t scheme = beginsWith(target, "http://")    ? 7
                             : beginsWith(target, "https://") ? 8
                                                              : 0;
  if (scheme == 0) return target;
  target.remove_prefix(scheme);
  const std::size_t end = std::min(target.find_first_of("/?"), target.size());
  const std::string_view authority = target.substr(0, end);
  if (authority.empty() || authority.find('@') != std::string_view::npos) {
    refuse("The target's address has no host, or a user's name.");
  }
  return target.substr(end);
}

}  // namespace

void readTarget(std::string_view target, Request& request) {
  const bool printable =
      std::all_of(target.begin(), target.end(), [](char c) { return c > 0x20 && c < 0x7f; });
  if (!printable || target.find('#') != std::string_view::npos) {
    refuse("The target has a character that must be escaped.");
  }
  if (target == "*" && request.method == "OPTIONS") {
    request.path = "*";
    return;
  }
  const std::string_view local = withoutAuthority(target);
  const std::size_t mark = std::min(local.find('?'), local.size());
  const std::string_view path = local.substr(0, mark);
  const bool absolute = local.size() != target.size();
  if (!path.starts_with('/') && !(absolute && path.empty())) {
    refuse("The target must be a path that begins with a slash.");
  }
  request.path = path.empty() ? "/" : decode(path, Part::kPath);
  readQuery(local.substr(std::min(local.size(), mark + 1)), request);
}

}  // namespace EventApps::Http
