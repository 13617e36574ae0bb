#include "host/cluster/Endpoint.h"

#include <charconv>
#include <stdexcept>

namespace EventSystemHost {
namespace {

bool isPort(const std::string& text) {
  unsigned short port = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, failure] = std::from_chars(text.data(), end, port);
  return failure == std::errc() && stop == end && port != 0;
}

}  // namespace

void checkEndpoint(const std::string& text) {
  const auto colon = text.rfind(':');
  const bool hasBoth = colon != std::string::npos && colon > 0 && colon + 1 < text.size();
  const bool hasPort = hasBoth && isPort(text.substr(colon + 1));
  const std::string host = hasPort ? text.substr(0, colon) : "";
  const bool bracketed = host.size() > 2 && host.front() == '[' && host.back() == ']';
  const bool plain = !host.empty() && host.find_first_of(":/[] ") == std::string::npos;
  if (bracketed || plain) return;
  throw std::runtime_error("the etcd endpoint \"" + text + "\" is not host:port");
}

}  // namespace EventSystemHost
