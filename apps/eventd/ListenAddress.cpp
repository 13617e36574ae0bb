#include "apps/eventd/ListenAddress.h"

#include <arpa/inet.h>
#include <netinet/in.h>

#include <array>
#include <cstring>

#include "apps/common/Numbers.h"

namespace EventApps {
namespace {

bool isLoopback(const in_addr& address) {
  constexpr std::uint32_t kNetwork = 127;
  return ntohl(address.s_addr) >> 24 == kNetwork;
}

// ::1, and what an IPv4 address looks like on an IPv6 socket.
bool isLoopback(const in6_addr& address) {
  if (IN6_IS_ADDR_LOOPBACK(&address) != 0) return true;
  if (IN6_IS_ADDR_V4MAPPED(&address) == 0) return false;
  in_addr mapped{};
  std::memcpy(&mapped, &address.s6_addr[12], sizeof mapped);
  return isLoopback(mapped);
}

std::optional<ListenAddress> parseHost(const std::string& host, bool bracketed) {
  if (bracketed) {
    in6_addr address{};
    if (::inet_pton(AF_INET6, host.c_str(), &address) != 1) return std::nullopt;
    return ListenAddress{host, 0, isLoopback(address)};
  }
  in_addr address{};
  if (host == "localhost") return ListenAddress{"127.0.0.1", 0, true};
  if (::inet_pton(AF_INET, host.c_str(), &address) != 1) return std::nullopt;
  return ListenAddress{host, 0, isLoopback(address)};
}

}  // namespace

std::optional<ListenAddress> parseListenAddress(std::string_view text) {
  const std::size_t colon = text.rfind(':');
  if (colon == std::string_view::npos) return std::nullopt;
  std::string_view host = text.substr(0, colon);
  const bool bracketed = host.starts_with('[') && host.ends_with(']') && host.size() > 2;
  if (bracketed) host = host.substr(1, host.size() - 2);
  auto address = parseHost(std::string(host), bracketed);
  const auto port = parseNumber<std::uint16_t>(text.substr(colon + 1));
  if (!address || !port) return std::nullopt;
  address->port = *port;
  return address;
}

std::string textOf(const ListenAddress& address) {
  const bool isV6 = address.host.find(':') != std::string::npos;
  std::string text = isV6 ? "[" : "";
  text.append(address.host).append(isV6 ? "]:" : ":");
  return text.append(std::to_string(address.port));
}

std::optional<ListenAddress> addressOf(const sockaddr_storage& bound) {
  std::array<char, INET6_ADDRSTRLEN> text{};
  if (bound.ss_family == AF_INET) {
    sockaddr_in address{};
    std::memcpy(&address, &bound, sizeof address);
    ::inet_ntop(AF_INET, &address.sin_addr, text.data(), text.size());
    return ListenAddress{text.data(), ntohs(address.sin_port), isLoopback(address.sin_addr)};
  }
  if (bound.ss_family == AF_INET6) {
    sockaddr_in6 address{};
    std::memcpy(&address, &bound, sizeof address);
    ::inet_ntop(AF_INET6, &address.sin6_addr, text.data(), text.size());
    return ListenAddress{text.data(), ntohs(address.sin6_port), isLoopback(address.sin6_addr)};
  }
  return std::nullopt;
}

}  // namespace EventApps
