// The file of a Unix socket, removed at its owner's end unless another one has taken its place.
//
// Thread safety: none.

#ifndef EVENTSYSTEM_APPS_EVENTD_HTTP_SOCKETFILE_H
#define EVENTSYSTEM_APPS_EVENTD_HTTP_SOCKETFILE_H

#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <utility>

namespace EventApps::Http {

class SocketFile {
 public:
  // The file is there.
  explicit SocketFile(const std::filesystem::path& path) : m_path(std::filesystem::absolute(path)) {
    lstat(m_path.c_str(), &m_state);
  }
  ~SocketFile() {
    struct stat now {};
    const bool isOurs = !m_path.empty() && lstat(m_path.c_str(), &now) == 0 &&
                        now.st_dev == m_state.st_dev && now.st_ino == m_state.st_ino;
    if (isOurs) unlink(m_path.c_str());
  }
  SocketFile(SocketFile&& other) noexcept
      : m_path(std::exchange(other.m_path, {})), m_state(other.m_state) {}
  SocketFile& operator=(SocketFile&&) = delete;

 private:
  std::filesystem::path m_path;  // empty: moved away
  struct stat m_state {};
};

}  // namespace EventApps::Http

#endif
