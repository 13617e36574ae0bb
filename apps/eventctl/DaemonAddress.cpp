#include "apps/eventctl/DaemonAddress.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string_view>
#include <system_error>

#include "apps/common/Failure.h"
#include "apps/eventctl/DaemonFiles.h"

namespace EventApps {
namespace {

constexpr const char* kSystemSocket = "/run/eventsystem/eventd.sock";
constexpr std::size_t kLongestToken = 4096;

// Whether a process listens on the socket.
bool isServed(const std::filesystem::path& socket) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  const std::string path = socket.string();
  if (path.size() >= sizeof address.sun_path) return false;
  path.copy(address.sun_path, path.size());
  const int descriptor = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
  if (descriptor < 0) throw std::system_error(errno, std::generic_category(), "socket");
  const int status =
      ::connect(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address);
  const int error = errno;
  ::close(descriptor);
  // A process that takes no connections any more is there, too: its queue of them fills up.
  if (status == 0 || error == EAGAIN) return true;
  if (error != EACCES && error != EPERM) return false;
  throw Failure(path + ": the daemon there does not let this user in: " + std::strerror(error) +
                "; join the group of the socket, or choose the daemon with --url and a token, or "
                "open the queues without one with --direct");
}

std::optional<std::filesystem::path> findSocket(const GlobalOptions& options) {
  const auto ofHome = socketOfHome(homeOf(options));
  if (isServed(ofHome)) return ofHome;
  if (options.home.empty() && isServed(kSystemSocket)) return kSystemSocket;
  return std::nullopt;
}

std::string readToken(const std::filesystem::path& file) {
  std::ifstream stream(file);
  std::string token;
  if (!std::getline(stream, token) || token.empty() || token.size() > kLongestToken) {
    throw Failure(file.string() + ": holds no token in its first line, or cannot be read");
  }
  return token;
}

std::string tokenOf(const GlobalOptions& options) {
  if (!options.daemon.token.empty()) return options.daemon.token;
  if (!options.daemon.tokenFile.empty()) return readToken(options.daemon.tokenFile);
  const char* const token = std::getenv("EVENTD_TOKEN");
  return token == nullptr ? "" : token;
}

void requireToken(const std::string& token) {
  for (const char c : token) {
    if (c <= ' ' || c > '~') throw Failure("the token holds a character that no token holds");
  }
}

bool isLoopback(std::string_view host) {
  const bool isNumeric = host.find_first_not_of("0123456789.") == std::string_view::npos;
  return host == "localhost" || host == "[::1]" || (isNumeric && host.starts_with("127."));
}

// A token is not shown to everybody on the way.
void requirePrivate(const DaemonAddress& address) {
  constexpr std::string_view kClear = "http://";
  constexpr std::string_view kSecret = "https://";
  const std::string_view url = address.url;
  if (url.starts_with(kSecret)) return;
  if (!url.starts_with(kClear)) {
    throw Failure("'" + address.url +
                  "' is no address of a daemon: it begins with https:// or, on "
                  "this machine, http://");
  }
  std::string_view host = url.substr(kClear.size());
  const bool isNumeric = host.starts_with('[');
  host = host.substr(0, isNumeric ? host.find(']') + 1 : host.find_first_of(":/"));
  if (isLoopback(host)) return;
  throw Failure("'" + address.url +
                "' is another machine, and http:// would show everything to "
                "everybody on the way there: use https://");
}

}  // namespace

std::optional<DaemonAddress> findDaemon(const GlobalOptions& options) {
  const DaemonOptions& daemon = options.daemon;
  const bool isNamed = !daemon.socket.empty() || !daemon.url.empty();
  if ((!daemon.socket.empty() && !daemon.url.empty()) || (daemon.direct && isNamed)) {
    throw Failure("--socket, --url and --direct exclude each other");
  }
  if (daemon.direct) return std::nullopt;
  DaemonAddress address;
  address.socket = daemon.socket;
  address.authority = daemon.authority;
  address.timeout = daemon.timeout;
  if (!daemon.url.empty()) address.url = daemon.url;
  if (!isNamed) {
    const auto socket = findSocket(options);
    if (!socket) return std::nullopt;
    address.socket = *socket;
  }
  address.token = tokenOf(options);
  requireToken(address.token);
  if (address.socket.empty()) requirePrivate(address);
  while (address.url.ends_with('/')) address.url.pop_back();
  return address;
}

}  // namespace EventApps
