#include "host/database/SpaceReserve.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstring>
#include <system_error>

#include "EventSystem/platform/HostLog.h"
#include "host/files/FileDescriptor.h"

namespace EventSystemHost {

namespace {

constexpr std::uintmax_t kNextToNothing = 256u << 10;
constexpr std::uintmax_t kBlockBytes = 512;  // of what stat() counts
constexpr mode_t kMode = 0600;

bool isAllocated(const std::filesystem::path& file) {
  struct stat status {};
  return ::lstat(file.c_str(), &status) == 0 && S_ISREG(status.st_mode) && status.st_size > 0 &&
         static_cast<std::uintmax_t>(status.st_blocks) * kBlockBytes >=
             static_cast<std::uintmax_t>(status.st_size);
}

std::uintmax_t availableIn(const std::filesystem::path& directory) {
  std::error_code error;
  const auto space = std::filesystem::space(directory, error);
  return error ? 0 : space.available;
}

}  // namespace

SpaceReserve::SpaceReserve(const std::filesystem::path& databaseFile, std::uintmax_t bytes)
    : m_file(databaseFile.string() + ".reserve"), m_bytes(bytes), m_held(isAllocated(m_file)) {}

bool SpaceReserve::hold() {
  if (m_held || m_bytes == 0) return true;
  if (available() < m_bytes) return false;
  const int status = allocate();
  m_held = status == 0;
  if (m_held || status == ENOSPC || status == EDQUOT) return m_held;
  WarningA(status, "%s: no space can be kept back for deleting on a full disk: %s", m_file.c_str(),
           std::strerror(status));
  m_bytes = 0;
  return true;
}

// 0 or an errno.
int SpaceReserve::allocate() const {
  const FileDescriptor file(
      ::open(m_file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, kMode));
  if (!file.valid()) return errno;
  const int status = ::posix_fallocate(file.get(), 0, static_cast<off_t>(m_bytes));
  if (status != 0) static_cast<void>(!::ftruncate(file.get(), 0));
  return status;
}

bool SpaceReserve::release() {
  if (!m_held) return false;
  std::error_code error;
  std::filesystem::resize_file(m_file, 0, error);
  m_held = isAllocated(m_file);
  return !m_held;
}

std::uintmax_t SpaceReserve::available() const {
  return availableIn(m_file.parent_path());
}

bool SpaceReserve::isNeeded() const {
  return m_held && available() < kNextToNothing;
}

std::string describeFullDisk(const std::filesystem::path& directory) {
  return directory.string() + ": the disk is full: " + std::to_string(availableIn(directory)) +
         " bytes are free";
}

}  // namespace EventSystemHost
