#include "apps/eventd/http/PeerOf.h"

#include <arpa/inet.h>
#include <netinet/in.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <iterator>

namespace EventApps::Http {
namespace {

constexpr std::size_t kNetworkBytes = 8;  // of an IPv6 address: a /64

const sockaddr_in& v4(const sockaddr_storage& address) {
  return reinterpret_cast<const sockaddr_in&>(address);
}

const sockaddr_in6& v6(const sockaddr_storage& address) {
  return reinterpret_cast<const sockaddr_in6&>(address);
}

// A client of IPv4 that has come to a socket of IPv6 is one of IPv4.
sockaddr_storage unmapped(const sockaddr_storage& address) {
  if (address.ss_family != AF_INET6 || !IN6_IS_ADDR_V4MAPPED(&v6(address).sin6_addr)) {
    return address;
  }
  sockaddr_storage plain{};
  auto& target = reinterpret_cast<sockaddr_in&>(plain);
  target.sin_family = AF_INET;
  target.sin_port = v6(address).sin6_port;
  std::memcpy(&target.sin_addr, v6(address).sin6_addr.s6_addr + 12, sizeof target.sin_addr);
  return plain;
}

std::string hostOf(const sockaddr_storage& address) {
  std::array<char, INET6_ADDRSTRLEN> text{};
  const bool isV6 = address.ss_family == AF_INET6;
  const void* const bytes = isV6 ? static_cast<const void*>(&v6(address).sin6_addr)
                                 : static_cast<const void*>(&v4(address).sin_addr);
  inet_ntop(address.ss_family, bytes, text.data(), text.size());
  return text.data();
}

std::string textOf(const sockaddr_storage& address) {
  const bool isV6 = address.ss_family == AF_INET6;
  const std::uint16_t port = ntohs(isV6 ? v6(address).sin6_port : v4(address).sin_port);
  std::string whole(isV6 ? "[" : "");
  return whole.append(hostOf(address)).append(isV6 ? "]:" : ":").append(std::to_string(port));
}

bool isLoopback(const sockaddr_storage& address) {
  if (address.ss_family == AF_INET6) return IN6_IS_ADDR_LOOPBACK(&v6(address).sin6_addr);
  return ntohl(v4(address).sin_addr.s_addr) >> 24 == 127;
}

Peer unixPeer(int descriptor) {
  Peer peer;
  peer.via = Peer::Via::kUnix;
  peer.loopback = true;
  peer.address = "unix";
  ucred credentials{};
  socklen_t length = sizeof credentials;
  if (getsockopt(descriptor, SOL_SOCKET, SO_PEERCRED, &credentials, &length) == 0) {
    peer.uid = credentials.uid;
    peer.gid = credentials.gid;
    peer.pid = credentials.pid;
  }
  return peer;
}

}  // namespace

Peer peerOf(int descriptor, const sockaddr_storage& given) {
  if (given.ss_family == AF_UNIX) return unixPeer(descriptor);
  const sockaddr_storage address = unmapped(given);
  Peer peer;
  peer.via = Peer::Via::kTcp;
  peer.loopback = isLoopback(address);
  peer.address = textOf(address);
  peer.network = networkOf(address);
  return peer;
}

std::string networkOf(const sockaddr_storage& given) {
  if (given.ss_family == AF_UNIX) return {};
  sockaddr_storage address = unmapped(given);
  if (address.ss_family != AF_INET6) return hostOf(address);
  auto& bytes = reinterpret_cast<sockaddr_in6&>(address).sin6_addr.s6_addr;
  std::fill(std::begin(bytes) + kNetworkBytes, std::end(bytes), 0);
  return hostOf(address) + "/64";
}

}  // namespace EventApps::Http
