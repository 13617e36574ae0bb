#include "apps/eventd/http/ListeningSockets.h"

#include <fcntl.h>
#include <grp.h>
#include <netdb.h>
#include <netinet/in.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <memory>
#include <system_error>

#include "apps/eventd/http/Server.h"

namespace EventApps::Http {
namespace {

constexpr int kBacklog = 4096;  // the system cuts it to what it allows

[[noreturn]] void fail(const std::string& what, int error) {
  throw ServerError(what + ": " + std::generic_category().message(error) + ".");
}

Descriptor newSocket(int family) {
  Descriptor made(socket(family, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
  if (made.get() < 0) fail("There is no socket to be had", errno);
  return made;
}

sockaddr_un addressOf(const std::filesystem::path& path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  const std::string text = path.string();
  if (text.empty() || text.size() >= sizeof address.sun_path) {
    throw ServerError("The socket's path " + text + " is longer than " +
                      std::to_string(sizeof address.sun_path - 1) +
                      " bytes, or empty; name a shorter one.");
  }
  std::memcpy(address.sun_path, text.c_str(), text.size() + 1);
  return address;
}

const sockaddr* generic(const sockaddr_un& address) {
  return reinterpret_cast<const sockaddr*>(&address);
}

// Two processes that replace a stale socket do it one after the other.
Descriptor lockFolder(const std::filesystem::path& path) {
  const std::filesystem::path folder = path.has_parent_path() ? path.parent_path() : ".";
  Descriptor lock(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (lock.get() < 0) fail("The socket's folder " + folder.string() + " cannot be opened", errno);
  if (flock(lock.get(), LOCK_EX | LOCK_NB) != 0) {
    fail("Another process is making a socket in " + folder.string() + "; try again", errno);
  }
  return lock;
}

void removeStale(const std::filesystem::path& path, const sockaddr_un& address) {
  struct stat state {};
  if (lstat(path.c_str(), &state) != 0) return;
  if (!S_ISSOCK(state.st_mode)) {
    throw ServerError(path.string() + " is there and is no socket; remove it or name another.");
  }
  const Descriptor caller = newSocket(AF_UNIX);
  const bool answered = connect(caller.get(), generic(address), sizeof address) == 0;
  if (answered || errno != ECONNREFUSED) {
    throw ServerError("Another process listens on " + path.string() +
                      "; stop it or name another socket.");
  }
  if (unlink(path.c_str()) != 0) fail("The old socket " + path.string() + " stays", errno);
}

gid_t groupOf(const std::string& name) {
  std::vector<char> names(65536);
  ::group entry{};
  ::group* found = nullptr;
  if (getgrnam_r(name.c_str(), &entry, names.data(), names.size(), &found) != 0 || !found) {
    throw ServerError("There is no group \"" + name + "\" for the socket.");
  }
  return found->gr_gid;
}

struct Lookup {
  std::unique_ptr<addrinfo, decltype(&freeaddrinfo)> addresses{nullptr, &freeaddrinfo};
};

Lookup lookUp(const std::string& host, std::uint16_t port) {
  addrinfo hints{};
  hints.ai_socktype = SOCK_STREAM;
  hints.ai_flags = AI_NUMERICSERV | AI_PASSIVE;
  addrinfo* found = nullptr;
  const int status = host.empty()
                         ? EAI_NONAME
                         : getaddrinfo(host.c_str(), std::to_string(port).c_str(), &hints, &found);
  if (status != 0) {
    throw ServerError("The address \"" + host +
                      "\" to listen at is not known: " + gai_strerror(status) + ".");
  }
  Lookup lookup;
  lookup.addresses.reset(found);
  return lookup;
}

void setPort(sockaddr_storage& address, std::uint16_t port) {
  auto* const v4 = reinterpret_cast<sockaddr_in*>(&address);
  auto* const v6 = reinterpret_cast<sockaddr_in6*>(&address);
  (address.ss_family == AF_INET6 ? v6->sin6_port : v4->sin_port) = htons(port);
}

// 0, or the error.
int listenAt(const addrinfo& place, std::uint16_t port, Descriptor& made) {
  made = Descriptor(socket(place.ai_family, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
  if (made.get() < 0) return errno;
  const int yes = 1;
  setsockopt(made.get(), SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
  sockaddr_storage address{};
  std::memcpy(&address, place.ai_addr, place.ai_addrlen);
  setPort(address, port);
  const auto* const generic = reinterpret_cast<const sockaddr*>(&address);
  if (bind(made.get(), generic, place.ai_addrlen) != 0) return errno;
  return listen(made.get(), kBacklog) == 0 ? 0 : errno;
}

}  // namespace

Descriptor listenOnUnixSocket(const std::filesystem::path& path, unsigned mode,
                              const std::string& group) {
  const sockaddr_un address = addressOf(path);
  const Descriptor lock = lockFolder(path);
  removeStale(path, address);
  Descriptor made = newSocket(AF_UNIX);
  if (bind(made.get(), generic(address), sizeof address) != 0) {
    fail("The socket " + path.string() + " cannot be made", errno);
  }
  // Nobody can connect before listen(), so nobody meets the file as bind() has made it.
  try {
    if (!group.empty() && chown(path.c_str(), static_cast<uid_t>(-1), groupOf(group)) != 0) {
      fail("The socket " + path.string() + " cannot be given to the group " + group, errno);
    }
    if (chmod(path.c_str(), mode) != 0 || listen(made.get(), kBacklog) != 0) {
      fail("The socket " + path.string() + " cannot be opened to others", errno);
    }
  } catch (...) {
    unlink(path.c_str());
    throw;
  }
  return made;
}

std::vector<Descriptor> listenOnTcp(const std::string& host, std::uint16_t port) {
  const Lookup lookup = lookUp(host, port);
  std::vector<Descriptor> sockets;
  int missing = 0;
  for (const addrinfo* place = lookup.addresses.get(); place; place = place->ai_next) {
    Descriptor made;
    const int error = listenAt(*place, port, made);
    if (error == EADDRNOTAVAIL || error == EAFNOSUPPORT) {
      missing = error;
    } else if (error != 0) {
      fail("Nobody can listen at " + host + ", port " + std::to_string(port), error);
    } else {
      port = portOf(made.get());
      sockets.push_back(std::move(made));
    }
  }
  if (sockets.empty()) fail("This machine has no address \"" + host + "\" to listen at", missing);
  return sockets;
}

void checkListening(int descriptor) {
  int listens = 0;
  socklen_t length = sizeof listens;
  sockaddr_storage address{};
  socklen_t addressLength = sizeof address;
  const bool isListening =
      getsockopt(descriptor, SOL_SOCKET, SO_ACCEPTCONN, &listens, &length) == 0 && listens != 0 &&
      getsockname(descriptor, reinterpret_cast<sockaddr*>(&address), &addressLength) == 0;
  const auto family = address.ss_family;
  if (!isListening || (family != AF_UNIX && family != AF_INET && family != AF_INET6)) {
    throw ServerError("The descriptor " + std::to_string(descriptor) +
                      " that was handed over is no Unix or TCP socket that listens.");
  }
}

std::uint16_t portOf(int descriptor) {
  sockaddr_storage address{};
  socklen_t length = sizeof address;
  getsockname(descriptor, reinterpret_cast<sockaddr*>(&address), &length);
  return ntohs(address.ss_family == AF_INET6 ? reinterpret_cast<sockaddr_in6&>(address).sin6_port
                                             : reinterpret_cast<sockaddr_in&>(address).sin_port);
}

}  // namespace EventApps::Http
