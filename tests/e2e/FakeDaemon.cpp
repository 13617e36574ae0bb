#include "tests/e2e/FakeDaemon.h"

#include <fcntl.h>
#include <poll.h>
#include <strings.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <stdexcept>
#include <utility>

namespace EventSystemTest {
namespace {

int listenAt(const std::filesystem::path& socket) {
  std::filesystem::create_directories(socket.parent_path());
  const int descriptor = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  socket.string().copy(address.sun_path, sizeof address.sun_path - 1);
  if (::bind(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
      ::listen(descriptor, 16) != 0) {
    throw std::runtime_error("cannot listen at " + socket.string());
  }
  return descriptor;
}

// The request at the front of what was received, taken off it; nothing while it is not complete.
std::optional<FakeRequest> takeRequest(std::string& received) {
  const std::size_t end = received.find("\r\n\r\n");
  if (end == std::string::npos) return std::nullopt;
  FakeRequest request;
  request.head = received.substr(0, end + 2);
  request.line = request.head.substr(0, request.head.find(" HTTP/"));
  const std::string length = request.header("Content-Length");
  const std::size_t bytes = length.empty() ? 0 : std::stoul(length);
  if (received.size() < end + 4 + bytes) return std::nullopt;
  request.body = received.substr(end + 4, bytes);
  received.erase(0, end + 4 + bytes);
  return request;
}

void sendAll(int connection, const std::string& text) {
  for (std::size_t sent = 0; sent < text.size();) {
    const ssize_t bytes = ::send(connection, text.data() + sent, text.size() - sent, MSG_NOSIGNAL);
    if (bytes <= 0) return;
    sent += static_cast<std::size_t>(bytes);
  }
}

}  // namespace

std::string FakeRequest::header(const std::string& name) const {
  for (std::size_t at = head.find("\r\n"); at + 2 < head.size(); at = head.find("\r\n", at + 2)) {
    const std::string one = head.substr(at + 2, head.find("\r\n", at + 2) - at - 2);
    const std::size_t colon = one.find(": ");
    if (colon == name.size() && ::strncasecmp(one.c_str(), name.c_str(), colon) == 0) {
      return one.substr(colon + 2);
    }
  }
  return "";
}

FakeAnswer problem(int status, const std::string& kind, const std::string& detail,
                   const std::string& moreMembers) {
  return {status,
          R"({"type":"/problems/)" + kind + R"(","title":"T","status":)" + std::to_string(status) +
              R"(,"detail":")" + detail + "\"" + moreMembers + "}",
          "Content-Type: application/problem+json\r\n"};
}

FakeDaemon::FakeDaemon(const std::filesystem::path& socket, Answer answer)
    : m_answer(std::move(answer)), m_listening(listenAt(socket)) {
  std::array<int, 2> ends{};
  if (::pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("pipe failed");
  m_stopReading = ends[0];
  m_stopWriting = ends[1];
  m_thread = std::thread([this] { serve(); });
}

FakeDaemon::~FakeDaemon() {
  ::close(m_stopWriting);
  m_thread.join();
  ::close(m_stopReading);
  ::close(m_listening);
}

std::vector<FakeRequest> FakeDaemon::requests() const {
  const std::lock_guard lock(m_mutex);
  return m_requests;
}

std::vector<std::string> FakeDaemon::lines() const {
  std::vector<std::string> found;
  for (const FakeRequest& request : requests()) found.push_back(request.line);
  return found;
}

// False when the test is over.
bool FakeDaemon::isReadable(int descriptor) const {
  std::array<pollfd, 2> waits = {{{.fd = descriptor, .events = POLLIN, .revents = 0},
                                  {.fd = m_stopReading, .events = POLLIN, .revents = 0}}};
  ::poll(waits.data(), waits.size(), -1);
  return waits[1].revents == 0;
}

void FakeDaemon::serve() {
  std::vector<std::jthread> connections;
  while (isReadable(m_listening)) {
    const int connection = ::accept4(m_listening, nullptr, nullptr, SOCK_CLOEXEC);
    if (connection < 0) continue;
    connections.emplace_back([this, connection] {
      serveConnection(connection);
      ::close(connection);
    });
  }
}

void FakeDaemon::serveConnection(int connection) {
  std::string received;
  std::array<char, 65536> piece;
  while (isReadable(connection)) {
    const ssize_t bytes = ::read(connection, piece.data(), piece.size());
    if (bytes <= 0) return;
    received.append(piece.data(), static_cast<std::size_t>(bytes));
    if (!answerOne(connection, received)) return;
  }
}

bool FakeDaemon::answerOne(int connection, std::string& received) {
  const auto request = takeRequest(received);
  if (!request) return true;
  {
    const std::lock_guard lock(m_mutex);
    m_requests.push_back(*request);
  }
  const auto answer = m_answer(*request);
  if (!answer) return false;
  sendAll(connection, "HTTP/1.1 " + std::to_string(answer->status) +
                          " Answer\r\nContent-Length: " + std::to_string(answer->body.size()) +
                          "\r\n" + answer->headers + "\r\n" + answer->body);
  return true;
}

}  // namespace EventSystemTest
