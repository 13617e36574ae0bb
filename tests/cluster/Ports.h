// Free ports of the loopback interface.
//
// Thread safety: any thread.

#ifndef EVENTSYSTEM_TESTS_CLUSTER_PORTS_H
#define EVENTSYSTEM_TESTS_CLUSTER_PORTS_H

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <stdexcept>
#include <utility>
#include <vector>

namespace EventSystemTest {

// A socket that is closed by its owner's end.
class Socket {
 public:
  explicit Socket(int descriptor = -1) : m_descriptor(descriptor) {}
  ~Socket() { close(); }
  Socket(Socket&& other) noexcept : m_descriptor(std::exchange(other.m_descriptor, -1)) {}
  Socket& operator=(Socket&& other) noexcept {
    std::swap(m_descriptor, other.m_descriptor);
    return *this;
  }

  int get() const { return m_descriptor; }
  void close() {
    if (m_descriptor >= 0) ::close(std::exchange(m_descriptor, -1));
  }

 private:
  int m_descriptor;
};

inline sockaddr_in loopback(unsigned short port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  address.sin_port = htons(port);
  return address;
}

// A socket bound to a port of its own.
inline Socket boundSocket() {
  Socket socket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
  const sockaddr_in address = loopback(0);
  if (bind(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
    throw std::runtime_error("no free port");
  }
  return socket;
}

inline unsigned short portOf(const Socket& socket) {
  sockaddr_in address{};
  socklen_t size = sizeof address;
  if (getsockname(socket.get(), reinterpret_cast<sockaddr*>(&address), &size) != 0) {
    throw std::runtime_error("no port");
  }
  return ntohs(address.sin_port);
}

// Different ports, free a moment ago.
inline std::vector<unsigned short> freePorts(int count) {
  std::vector<Socket> sockets;
  std::vector<unsigned short> ports;
  for (int i = 0; i < count; ++i) {
    sockets.push_back(boundSocket());
    ports.push_back(portOf(sockets.back()));
  }
  return ports;
}

}  // namespace EventSystemTest

#endif
