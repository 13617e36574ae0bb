#include "tests/cluster/Proxy.h"

#include <poll.h>

#include <array>
#include <string_view>
#include <vector>

namespace EventSystemTest {

using EtcdNodes::Descriptor;

namespace {

// Frames that only keep a connection going are smaller, answers larger.
constexpr ssize_t kLeastMessage = 40;

unsigned short portOfEndpoint(const std::string& endpoint) {
  return static_cast<unsigned short>(std::stoi(endpoint.substr(endpoint.rfind(':') + 1)));
}

// What was read, or 0 at the end of the stream.
ssize_t readSome(const Descriptor& from, std::array<char, 65536>& buffer) {
  const ssize_t size = recv(from.get(), buffer.data(), buffer.size(), 0);
  return size < 0 ? 0 : size;
}

bool writeAll(const Descriptor& to, const char* data, ssize_t size) {
  while (size > 0) {
    const ssize_t written = send(to.get(), data, static_cast<std::size_t>(size), MSG_NOSIGNAL);
    if (written <= 0) return false;
    data += written;
    size -= written;
  }
  return true;
}

// Whether a request begins in what a client has sent: an HTTP/2 frame of headers. Connections also
// open, acknowledge and take their leave, and nobody waits for an answer to that.
bool beginsRequest(const std::array<char, 65536>& sent, ssize_t size) {
  constexpr std::string_view kPreface = "PRI * HTTP/2.0\r\n\r\nSM\r\n\r\n";
  constexpr std::size_t kFrameHead = 9;
  constexpr char kHeaders = 1;
  const std::string_view all(sent.data(), static_cast<std::size_t>(size));
  std::size_t at = all.starts_with(kPreface) ? kPreface.size() : 0;
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(all[at + i]); };
  while (at + kFrameHead <= all.size()) {
    if (all[at + 3] == kHeaders) return true;
    at += kFrameHead + (std::size_t{byte(0)} << 16 | std::size_t{byte(1)} << 8 | byte(2));
  }
  return false;
}

}  // namespace

Proxy::Proxy(const std::string& target)
    : m_targetPort(portOfEndpoint(target)), m_listener(EtcdNodes::boundSocket()) {
  std::array<int, 2> pair{};
  if (listen(m_listener.get(), 16) != 0 ||
      socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, pair.data()) != 0) {
    throw std::runtime_error("the proxy cannot listen");
  }
  m_wakeReader = Descriptor(pair[0]);
  m_wakeWriter = Descriptor(pair[1]);
  m_thread = std::thread([this] { run(); });
}

Proxy::~Proxy() {
  m_stopping = true;
  wake();
  m_thread.join();
}

std::string Proxy::endpoint() const {
  return "127.0.0.1:" + std::to_string(EtcdNodes::portOf(m_listener));
}

void Proxy::setMute(bool mute) {
  m_mute = mute;
  if (!mute) m_cutAll = true;
  wake();
}

void Proxy::setDeaf(bool deaf) {
  m_deaf = deaf;
  if (!deaf) m_cutAll = true;
  wake();
}

void Proxy::setDown(bool down) {
  m_down = down;
  if (down) m_cutAll = true;
  wake();
}

void Proxy::wake() const {
  writeAll(m_wakeWriter, "!", 1);
}

void Proxy::run() {
  while (!m_stopping) {
    std::vector<pollfd> polled{{m_listener.get(), POLLIN, 0}, {m_wakeReader.get(), POLLIN, 0}};
    for (const Connection& connection : m_connections) {
      polled.push_back({connection.client.get(), POLLIN, 0});
      polled.push_back({connection.server.get(), POLLIN, 0});
    }
    if (poll(polled.data(), polled.size(), -1) < 0) continue;
    std::array<char, 65536> ignored{};
    if (polled[1].revents != 0) readSome(m_wakeReader, ignored);
    if (m_cutAll.exchange(false)) {
      m_connections.clear();
      continue;
    }
    std::size_t next = 2;
    for (Connection& connection : m_connections) {
      serve(connection, polled[next].revents != 0, polled[next + 1].revents != 0);
      next += 2;
    }
    m_connections.remove_if([](const Connection& connection) { return connection.broken; });
    if (polled[0].revents != 0) accept();
  }
}

void Proxy::accept() {
  Connection connection;
  connection.client = Descriptor(accept4(m_listener.get(), nullptr, nullptr, SOCK_CLOEXEC));
  if (m_down) return;
  connection.server = Descriptor(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
  const sockaddr_in address = EtcdNodes::loopback(m_targetPort);
  if (connect(connection.server.get(), reinterpret_cast<const sockaddr*>(&address),
              sizeof address) != 0) {
    return;
  }
  m_connections.push_back(std::move(connection));
}

void Proxy::serve(Connection& connection, bool clientReady, bool serverReady) {
  std::array<char, 65536> buffer;
  if (clientReady) {
    const ssize_t size = readSome(connection.client, buffer);
    if (beginsRequest(buffer, size) && m_losing.exchange(false)) connection.awaitsAnswer = true;
    connection.broken = size == 0 || (!m_deaf && !writeAll(connection.server, buffer.data(), size));
  }
  if (serverReady && !connection.broken) {
    const ssize_t size = readSome(connection.server, buffer);
    if (connection.awaitsAnswer && size >= kLeastMessage) {
      ++m_lostAnswers;
      connection.broken = true;
    } else if (!connection.awaitsAnswer && !m_mute) {
      connection.broken = size == 0 || !writeAll(connection.client, buffer.data(), size);
    } else {
      connection.broken = size == 0;
    }
  }
}

}  // namespace EventSystemTest
