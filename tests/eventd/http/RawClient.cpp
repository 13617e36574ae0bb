#include "tests/eventd/http/RawClient.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <stdexcept>

namespace EventSystemTest {
namespace {

// Whatever a test waits for is there long before; a server that never answers fails the test.
constexpr int kMostMilliseconds = 120000;

void check(bool done, const char* what) {
  if (!done) throw std::runtime_error(std::string(what) + ": " + std::strerror(errno));
}

bool waitFor(int descriptor, short what) {
  pollfd one{descriptor, what, 0};
  const int ready = poll(&one, 1, kMostMilliseconds);
  if (ready == 0) throw std::runtime_error("The server neither answers nor ends the connection.");
  return ready > 0;
}

std::string lowered(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return text;
}

void readHead(const std::string& head, Reply& reply) {
  reply.status = static_cast<unsigned>(std::stoul(head.substr(9, 3)));
  for (std::size_t at = head.find("\r\n") + 2; at < head.size() - 2;) {
    const std::size_t end = head.find("\r\n", at);
    const std::size_t colon = head.find(": ", at);
    reply.headers[lowered(head.substr(at, colon - at))] = head.substr(colon + 2, end - colon - 2);
    at = end + 2;
  }
}

}  // namespace

RawClient::RawClient(const std::filesystem::path& unixSocket, Connect when)
    : m_socket(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)), m_path(unixSocket) {
  if (when == Connect::kNow) connect();
}

void RawClient::connect() {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  std::strncpy(address.sun_path, m_path.c_str(), sizeof address.sun_path - 1);
  const auto* const generic = reinterpret_cast<const sockaddr*>(&address);
  check(::connect(m_socket.get(), generic, sizeof address) == 0, "connect");
}

std::uint16_t RawClient::localPort() const {
  sockaddr_in address{};
  socklen_t length = sizeof address;
  getsockname(m_socket.get(), reinterpret_cast<sockaddr*>(&address), &length);
  return ntohs(address.sin_port);
}

RawClient::RawClient(std::uint16_t port, const std::string& text)
    : m_socket(socket(text.find(':') == std::string::npos ? AF_INET : AF_INET6,
                      SOCK_STREAM | SOCK_CLOEXEC, 0)) {
  sockaddr_in v4{AF_INET, htons(port), {}, {}};
  sockaddr_in6 v6{AF_INET6, htons(port), 0, {}, 0};
  const bool isV4 = inet_pton(AF_INET, text.c_str(), &v4.sin_addr) == 1;
  if (!isV4) inet_pton(AF_INET6, text.c_str(), &v6.sin6_addr);
  auto* const address = isV4 ? reinterpret_cast<sockaddr*>(&v4) : reinterpret_cast<sockaddr*>(&v6);
  check(::connect(m_socket.get(), address, isV4 ? sizeof v4 : sizeof v6) == 0, "connect");
  const int yes = 1;
  setsockopt(m_socket.get(), IPPROTO_TCP, TCP_NODELAY, &yes, sizeof yes);
}

bool RawClient::startTls(const std::filesystem::path& authority,
                         const std::filesystem::path& certificate, const std::filesystem::path& key,
                         int mostVersion) {
  std::signal(SIGPIPE, SIG_IGN);  // OpenSSL writes to sockets as to files
  m_context.reset(SSL_CTX_new(TLS_client_method()));
  SSL_CTX_set_security_level(m_context.get(), 0);  // it is the server who is to refuse
  SSL_CTX_set_min_proto_version(m_context.get(), TLS1_VERSION);
  SSL_CTX_set_max_proto_version(m_context.get(), mostVersion);
  SSL_CTX_load_verify_locations(m_context.get(), authority.c_str(), nullptr);
  SSL_CTX_set_verify(m_context.get(), SSL_VERIFY_PEER, nullptr);
  if (!certificate.empty()) {
    SSL_CTX_use_certificate_file(m_context.get(), certificate.c_str(), SSL_FILETYPE_PEM);
    SSL_CTX_use_PrivateKey_file(m_context.get(), key.c_str(), SSL_FILETYPE_PEM);
  }
  m_tls.reset(SSL_new(m_context.get()));
  SSL_set_fd(m_tls.get(), m_socket.get());
  return SSL_connect(m_tls.get()) == 1;
}

bool RawClient::send(std::string_view bytes) {
  while (!bytes.empty()) {
    waitFor(m_socket.get(), POLLOUT);
    const long sent =
        m_tls ? SSL_write(m_tls.get(), bytes.data(), static_cast<int>(bytes.size()))
              : ::send(m_socket.get(), bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
    if (sent <= 0 && !(errno == EAGAIN && !m_tls)) return false;
    if (sent > 0) bytes.remove_prefix(static_cast<std::size_t>(sent));
  }
  return true;
}

bool RawClient::receive() {
  std::array<char, 65536> bytes{};
  if (!m_tls || SSL_pending(m_tls.get()) == 0) waitFor(m_socket.get(), POLLIN);
  const long count = m_tls ? SSL_read(m_tls.get(), bytes.data(), static_cast<int>(bytes.size()))
                           : recv(m_socket.get(), bytes.data(), bytes.size(), 0);
  if (count > 0) m_received.append(bytes.data(), static_cast<std::size_t>(count));
  return count > 0;
}

bool RawClient::receiveUntil(std::string_view mark) {
  while (m_received.find(mark) == std::string::npos) {
    if (!receive()) return false;
  }
  return true;
}

bool RawClient::receiveBytes(std::size_t count) {
  while (m_received.size() < count) {
    if (!receive()) return false;
  }
  return true;
}

std::string RawClient::take(std::size_t count) {
  std::string taken = m_received.substr(0, count);
  m_received.erase(0, count);
  return taken;
}

// False at the last one, which is empty, and where the connection ends.
bool RawClient::readChunk(std::string& body) {
  if (!receiveUntil("\r\n")) return false;
  const std::size_t size = std::stoul(take(m_received.find("\r\n") + 2), nullptr, 16);
  if (!receiveBytes(size + 2)) return false;
  body += take(size + 2).substr(0, size);
  return size > 0;
}

Reply RawClient::reply(bool toHead, bool interim) {
  Reply reply;
  if (!receiveUntil("\r\n\r\n")) return reply;
  readHead(take(m_received.find("\r\n\r\n") + 4), reply);
  if (reply.status < 200 && !interim) return this->reply(toHead);
  const bool chunked = reply.headers.count("transfer-encoding") > 0;
  if (toHead || reply.status < 200 || reply.headers.count("content-length") + chunked == 0) {
    reply.whole = true;
  } else if (chunked) {
    while (readChunk(reply.body)) {
    }
    reply.whole = true;
  } else {
    const std::size_t length = std::stoul(reply.headers["content-length"]);
    reply.whole = receiveBytes(length);
    reply.body = take(length);
  }
  return reply;
}

std::string RawClient::chunks(std::size_t bytes) {
  std::string body;
  while (body.size() < bytes && readChunk(body)) {
  }
  return body;
}

std::string RawClient::rest() {
  while (receive()) {
  }
  return std::exchange(m_received, {});
}

void RawClient::finishSending() {
  shutdown(m_socket.get(), SHUT_WR);
}

void RawClient::reset() {
  const linger now{1, 0};
  setsockopt(m_socket.get(), SOL_SOCKET, SO_LINGER, &now, sizeof now);
  m_socket.close();
}

}  // namespace EventSystemTest
