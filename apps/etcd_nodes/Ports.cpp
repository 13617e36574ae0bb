#include "apps/etcd_nodes/Ports.h"

#include <arpa/inet.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <cstddef>
#include <fstream>
#include <random>
#include <stdexcept>
#include <string>
#include <utility>

namespace EtcdNodes {
namespace {

constexpr unsigned short kLowest = 10240;  // well-known servers are below
constexpr int kTries = 100;

// A socket bound to the port, 0 being any; none when the port is taken.
Descriptor bindTo(unsigned short port) {
  Descriptor socket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
  const sockaddr_in address = loopback(port);
  if (bind(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
    return Descriptor();
  }
  return socket;
}

// The lowest port that outgoing connections get.
unsigned short lowestEphemeral() {
  unsigned short lowest = 32768;
  std::ifstream("/proc/sys/net/ipv4/ip_local_port_range") >> lowest;
  return lowest;
}

// Of a port for which a server may come back; none when the port drawn is taken.
Descriptor lastingSocket(std::random_device& random) {
  const unsigned short end = lowestEphemeral();
  if (end <= kLowest) return boundSocket();
  std::uniform_int_distribution<int> ports(kLowest, end - 1);
  return bindTo(static_cast<unsigned short>(ports(random)));
}

}  // namespace

sockaddr_in loopback(unsigned short port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  address.sin_port = htons(port);
  return address;
}

Descriptor boundSocket() {
  Descriptor socket = bindTo(0);
  if (socket.get() < 0) throw std::runtime_error("no port of the loopback interface is free");
  return socket;
}

unsigned short portOf(const Descriptor& socket) {
  sockaddr_in address{};
  socklen_t size = sizeof address;
  if (getsockname(socket.get(), reinterpret_cast<sockaddr*>(&address), &size) != 0) {
    throw std::runtime_error("the socket has no port");
  }
  return ntohs(address.sin_port);
}

// A name in the abstract namespace goes with its socket, however its process ends.
Descriptor claimPort(unsigned short port) {
  Descriptor claim(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0));
  const std::string name = "eventsystem-port-" + std::to_string(port);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  name.copy(address.sun_path + 1, sizeof address.sun_path - 1);
  const auto size = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + name.size());
  if (bind(claim.get(), reinterpret_cast<const sockaddr*>(&address), size) != 0) {
    return Descriptor();
  }
  return claim;
}

std::vector<ClaimedPort> freePorts(int count) {
  std::random_device random;
  std::vector<Descriptor> sockets;
  std::vector<ClaimedPort> ports;
  for (int tries = 0; ports.size() < static_cast<std::size_t>(count); ++tries) {
    if (tries == count + 2 * kTries) throw std::runtime_error("others have claimed all free ports");
    Descriptor socket = tries < count + kTries ? lastingSocket(random) : boundSocket();
    if (socket.get() < 0) continue;
    const unsigned short port = portOf(socket);
    sockets.push_back(std::move(socket));
    Descriptor claim = claimPort(port);
    if (claim.get() >= 0) ports.push_back({port, std::move(claim)});
  }
  return ports;
}

}  // namespace EtcdNodes
