#include "apps/eventctl/ChangeWatch.h"

#include <fcntl.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <system_error>

namespace EventApps {
namespace {

constexpr std::uint32_t kChanges = IN_CREATE | IN_MODIFY | IN_CLOSE_WRITE | IN_MOVED_TO | IN_DELETE;

}  // namespace

ChangeWatch::ChangeWatch(const std::filesystem::path& database,
                         const std::filesystem::path& auditDatabase)
    : m_database(std::filesystem::absolute(database)),
      m_audit(std::filesystem::absolute(auditDatabase)),
      m_descriptor(::inotify_init1(IN_CLOEXEC | IN_NONBLOCK)) {
  if (m_descriptor < 0) throw std::system_error(errno, std::generic_category(), "inotify");
  watchDirectories();
}

ChangeWatch::~ChangeWatch() {
  ::close(m_descriptor);
}

void ChangeWatch::forget() {
  takeChanges();
}

Woken ChangeWatch::wait(const Listener& listener, std::chrono::milliseconds bound) {
  const auto end = std::chrono::steady_clock::now() + bound;
  watchDirectories();
  while (true) {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
        end - std::chrono::steady_clock::now());
    if (left.count() <= 0) return Woken::kMaybeMore;
    const Woken woken = listener.wait(m_descriptor, static_cast<int>(left.count()));
    if (woken != Woken::kMaybeMore || takeChanges()) return woken;
  }
}

// The audit directory may be made later than its parent; adding a watch again changes nothing.
// Where a directory cannot be watched, the bound of wait() is what is left.
void ChangeWatch::watchDirectories() {
  ::inotify_add_watch(m_descriptor, m_database.parent_path().c_str(), kChanges);
  ::inotify_add_watch(m_descriptor, m_audit.parent_path().c_str(), kChanges);
  ::inotify_add_watch(m_descriptor, m_audit.parent_path().parent_path().c_str(), kChanges);
}

bool ChangeWatch::takeChanges() {
  alignas(inotify_event) std::array<char, 16384> buffer;
  bool concerned = false;
  ssize_t bytes = 0;
  while ((bytes = ::read(m_descriptor, buffer.data(), buffer.size())) > 0) {
    for (std::size_t at = 0; at < static_cast<std::size_t>(bytes);) {
      inotify_event event;
      std::memcpy(&event, buffer.data() + at, sizeof event);
      const char* const name = buffer.data() + at + sizeof event;
      concerned |= (event.mask & IN_Q_OVERFLOW) != 0 || (event.len > 0 && concerns(name));
      at += sizeof event + event.len;
    }
  }
  return concerned;
}

// A reader's own opening of a database may create the "-shm" file; that is no change.
bool ChangeWatch::concerns(const std::string& name) const {
  if (name.ends_with("-shm")) return false;
  return name.starts_with(m_database.filename().string()) ||
         name.starts_with(m_audit.filename().string()) ||
         name == m_audit.parent_path().filename().string();
}

}  // namespace EventApps
