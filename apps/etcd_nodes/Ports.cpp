#include "apps/etcd_nodes/Ports.h"

#include <arpa/inet.h>
#include <sys/socket.h>

#include <fstream>
#include <random>
#include <stdexcept>

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

Descriptor lastingSocket(std::random_device& random) {
  const unsigned short end = lowestEphemeral();
  if (end <= kLowest) return boundSocket();
  std::uniform_int_distribution<int> ports(kLowest, end - 1);
  for (int i = 0; i < kTries; ++i) {
    Descriptor socket = bindTo(static_cast<unsigned short>(ports(random)));
    if (socket.get() >= 0) return socket;
  }
  return boundSocket();
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

std::vector<unsigned short> freePorts(int count) {
  std::random_device random;
  std::vector<Descriptor> sockets;
  std::vector<unsigned short> ports;
  for (int i = 0; i < count; ++i) {
    sockets.push_back(lastingSocket(random));
    ports.push_back(portOf(sockets.back()));
  }
  return ports;
}

}  // namespace EtcdNodes
