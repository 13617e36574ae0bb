#include "host/cluster/Endpoint.h"

#include <stdexcept>

namespace EventSystemHost {

void checkEndpoint(const std::string& text) {
  const auto colon = text.rfind(':');
  const bool hasBoth = colon != std::string::npos && colon > 0 && colon + 1 < text.size();
  const bool hasPort =
      hasBoth && text.find_first_not_of("0123456789", colon + 1) == std::string::npos;
  const std::string host = hasPort ? text.substr(0, colon) : "";
  const bool bracketed = host.size() > 2 && host.front() == '[' && host.back() == ']';
  const bool plain = !host.empty() && host.find_first_of(":/[] ") == std::string::npos;
  if (bracketed || plain) return;
  throw std::runtime_error("the etcd endpoint \"" + text + "\" is not host:port");
}

}  // namespace EventSystemHost
