// beanstalkd, through a Unix socket. Its protocol is lines of text.

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <charconv>
#include <cstring>
#include <string_view>

#include "bench/systems/ServerProcess.h"
#include "bench/systems/Systems.h"
#include "host/files/FileDescriptor.h"

namespace EventSystemBench {
namespace {

using EventSystemHost::FileDescriptor;

// A stream of lines and of bodies whose size is known. Any call may throw SystemError.
class LineStream {
 public:
  explicit LineStream(const std::filesystem::path& socket)
      : m_descriptor(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::string path = socket.string();
    if (path.size() >= sizeof address.sun_path) throw SystemError("the socket's name is too long");
    path.copy(address.sun_path, path.size());
    if (::connect(m_descriptor.get(), reinterpret_cast<const sockaddr*>(&address),
                  sizeof address) != 0) {
      throw SystemError("beanstalkd: cannot connect");
    }
  }

  void send(std::string_view text) const {
    while (!text.empty()) {
      const ssize_t sent = ::send(m_descriptor.get(), text.data(), text.size(), MSG_NOSIGNAL);
      if (sent < 0) throw SystemError("beanstalkd: cannot send");
      text.remove_prefix(static_cast<std::size_t>(sent));
    }
  }

  // A line without its ending.
  std::string line() {
    std::size_t end = 0;
    while ((end = m_received.find("\r\n")) == std::string::npos) receive();
    return take(end);
  }

  // `size` bytes, and the line ending after them.
  std::string body(std::size_t size) {
    while (m_received.size() < size + 2) receive();
    return take(size);
  }

 private:
  void receive() {
    std::array<char, 8192> buffer{};
    const ssize_t got = ::recv(m_descriptor.get(), buffer.data(), buffer.size(), 0);
    if (got <= 0) throw SystemError("beanstalkd: the connection has ended");
    m_received.append(buffer.data(), static_cast<std::size_t>(got));
  }

  std::string take(std::size_t size) {
    std::string taken = m_received.substr(0, size);
    m_received.erase(0, size + 2);
    return taken;
  }

  FileDescriptor m_descriptor;
  std::string m_received;
};

// The numbers after the first word of an answer, which must be `word`.
std::array<std::uint64_t, 2> numbersOf(const std::string& answer, std::string_view word) {
  if (!answer.starts_with(word)) throw SystemError("beanstalkd: " + answer);
  std::array<std::uint64_t, 2> numbers{};
  const char* at = answer.data() + word.size();
  const char* const end = answer.data() + answer.size();
  for (std::uint64_t& number : numbers) {
    if (at < end) at = std::from_chars(at + 1, end, number).ptr;
  }
  return numbers;
}

class BeanstalkQueue : public Queue {
 public:
  explicit BeanstalkQueue(const std::filesystem::path& socket) : m_stream(socket) {}

  std::uint64_t produce(const std::string& text) override {
    m_stream.send("put 0 0 600 " + std::to_string(text.size()) + "\r\n" + text + "\r\n");
    return numbersOf(m_stream.line(), "INSERTED")[0];
  }

  std::optional<QueuedText> next(std::uint64_t /*after*/) override {
    m_stream.send("reserve-with-timeout 0\r\n");
    const std::string answer = m_stream.line();
    if (answer == "TIMED_OUT") return std::nullopt;
    const auto [id, size] = numbersOf(answer, "RESERVED");
    return QueuedText{id, m_stream.body(size)};
  }

  bool walks() const override { return false; }

  void remove(std::uint64_t id) override {
    m_stream.send("delete " + std::to_string(id) + "\r\n");
    numbersOf(m_stream.line(), "DELETED");
  }

 private:
  LineStream m_stream;
};

class Beanstalk : public System {
 public:
  Beanstalk(const std::filesystem::path& directory, const std::string& flush)
      : m_socket(directory / "socket"), m_server({command(directory, flush), directory, {}}) {
    m_server.waitUntil([this] { return std::filesystem::exists(m_socket) && answers(); });
  }

  std::unique_ptr<Queue> connect() override { return std::make_unique<BeanstalkQueue>(m_socket); }

 private:
  std::vector<std::string> command(const std::filesystem::path& directory,
                                   const std::string& flush) const {
    std::vector<std::string> words = {"beanstalkd", "-l", "unix:" + m_socket.string(), "-b",
                                      directory.string()};
    if (!flush.empty()) words.push_back(flush);
    return words;
  }

  bool answers() const {
    try {
      const LineStream probe(m_socket);
      return true;
    } catch (const SystemError&) {
      return false;
    }
  }

  std::filesystem::path m_socket;
  ServerProcess m_server;
};

SystemEntry entry(const std::string& name, const std::string& flush, Promise promise,
                  const std::string& settings) {
  return {"beanstalkd, " + name,
          promise,
          settings + "; Unix socket",
          "put",
          "reserve: handed to one consumer, by priority, then age",
          "delete",
          [flush](const std::filesystem::path& directory) {
            return std::make_unique<Beanstalk>(directory, flush);
          }};
}

}  // namespace

std::vector<SystemEntry> beanstalkEntries() {
  return {entry("-f0", "-f0", Promise::kDurable, "-b DIR -f0: a flush for each write"),
          entry("50 ms", "", Promise::kRelaxed,
                "-b DIR, the default -f50: a flush every 50 ms at most")};
}

}  // namespace EventSystemBench
