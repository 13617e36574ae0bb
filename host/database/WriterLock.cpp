#include "host/database/WriterLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <string>

#include "host/Host.h"
#include "host/database/DatabaseLocation.h"
#include "host/files/PrivateFiles.h"

namespace EventSystemHost {

namespace {

std::string ownerOf(int descriptor) {
  std::array<char, 32> text{};
  const ssize_t length = pread(descriptor, text.data(), text.size() - 1, 0);
  std::string owner(text.data(), length > 0 ? static_cast<std::size_t>(length) : 0);
  owner.erase(owner.find_last_not_of('\n') + 1);
  // Between taking the lock and writing its id the owner is not known yet.
  return owner.empty() ? "unknown" : owner;
}

int openExisting(const std::filesystem::path& file) {
  makePrivateFile(file);
  // A pipe that takes the file's place in this moment must not block.
  const int descriptor = open(file.c_str(), O_RDWR | O_CLOEXEC | O_NONBLOCK | O_NOFOLLOW);
  if (descriptor < 0 && errno == ELOOP) {
    throw HostError(file.string() + ": is a symbolic link, which is not followed here; remove it");
  }
  if (descriptor < 0) {
    throw HostError(file.string() + ": cannot be opened: " + std::strerror(errno));
  }
  return descriptor;
}

// False when another process has the lock.
bool lock(const FileDescriptor& descriptor, const std::filesystem::path& file) {
  if (flock(descriptor.get(), LOCK_EX | LOCK_NB) == 0) return true;
  if (errno == EWOULDBLOCK) return false;
  throw HostError(file.string() + ": cannot be locked: " + std::strerror(errno));
}

[[noreturn]] void busy(const std::filesystem::path& databaseFile, const std::string& owner) {
  throw DatabaseBusy(databaseFile.string() + ": is open for writing in process " + owner +
                     "; end that process or open the database read-only");
}

void writeOwner(const FileDescriptor& descriptor, const std::filesystem::path& file) {
  const std::string owner = std::to_string(getpid()) + "\n";
  if (ftruncate(descriptor.get(), 0) != 0 || pwrite(descriptor.get(), owner.data(), owner.size(),
                                                    0) != static_cast<ssize_t>(owner.size())) {
    throw HostError(file.string() + ": cannot be written: " + std::strerror(errno));
  }
}

std::filesystem::path lockFileOf(const std::filesystem::path& databaseFile) {
  return databaseFile.string() + ".lock";
}

// The database is opened by who has the named lock only: closing it again would take SQLite's locks
// away from the Host of this process that has it.
int openLocked(const FileDescriptor& named, const std::filesystem::path& databaseFile) {
  if (!lock(named, lockFileOf(databaseFile))) busy(databaseFile, ownerOf(named.get()));
  return openExisting(databaseFile);
}

}  // namespace

WriterLock::WriterLock(const std::filesystem::path& databaseFile)
    : m_named(openExisting(lockFileOf(databaseFile))), m_file(openLocked(m_named, databaseFile)) {
  // Whoever has only this one is not named by the lock file, which was removed meanwhile.
  if (!lock(m_file, databaseFile)) busy(databaseFile, "unknown (its lock file was removed)");
  requireOneRegularFile(databaseFile);
  writeOwner(m_named, lockFileOf(databaseFile));
}

WriterLock::~WriterLock() {
  // The file stays: removing it would let two processes lock two files of the same name.
  [[maybe_unused]] const int ignored = ftruncate(m_named.get(), 0);
}

}  // namespace EventSystemHost
