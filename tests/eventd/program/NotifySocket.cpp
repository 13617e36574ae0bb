#include "tests/eventd/program/NotifySocket.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <array>
#include <cstring>
#include <stdexcept>

namespace EventSystemTest {

NotifySocket::NotifySocket(const std::filesystem::path& path)
    : m_path(path), m_socket(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0)) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  std::strncpy(address.sun_path, path.c_str(), sizeof address.sun_path - 1);
  std::filesystem::remove(path);
  if (::bind(m_socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
    throw std::runtime_error("no notification socket at " + path.string());
  }
}

std::string NotifySocket::next(int milliseconds) {
  pollfd wait{m_socket.get(), POLLIN, 0};
  if (::poll(&wait, 1, milliseconds) <= 0) return "";
  std::array<char, 4096> message{};
  const ssize_t bytes = ::recv(m_socket.get(), message.data(), message.size(), 0);
  return bytes > 0 ? std::string(message.data(), static_cast<std::size_t>(bytes)) : "";
}

}  // namespace EventSystemTest
