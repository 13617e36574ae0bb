#include "host/database/WriterLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <string>

#include "host/Host.h"
#include "host/files/PrivateFiles.h"

namespace EventSystemHost {

namespace {

std::string ownerOf(int descriptor) {
  std::array<char, 32> text{};
  const ssize_t length = pread(descriptor, text.data(), text.size() - 1, 0);
  std::string owner(text.data(), length > 0 ? static_cast<std::size_t>(length) : 0);
  owner.erase(owner.find_last_not_of("\n") + 1);
  // Between taking the lock and writing its id the owner is not known yet.
  return owner.empty() ? "unknown" : owner;
}

}  // namespace

WriterLock::WriterLock(const std::filesystem::path& databaseFile) {
  const std::string file = databaseFile.string() + ".lock";
  makePrivateFile(file);
  m_descriptor = open(file.c_str(), O_RDWR | O_CLOEXEC);
  if (m_descriptor < 0) throw HostError(file + ": cannot be opened: " + std::strerror(errno));
  if (flock(m_descriptor, LOCK_EX | LOCK_NB) != 0) {
    const int reason = errno;
    const std::string owner = ownerOf(m_descriptor);
    close(m_descriptor);
    if (reason != EWOULDBLOCK) throw HostError(file + ": cannot be locked: " + strerror(reason));
    throw DatabaseBusy(databaseFile.string() + ": is open for writing in process " + owner +
                       "; end that process or open the database read-only");
  }
  const std::string owner = std::to_string(getpid()) + "\n";
  if (ftruncate(m_descriptor, 0) != 0 ||
      pwrite(m_descriptor, owner.data(), owner.size(), 0) != static_cast<ssize_t>(owner.size())) {
    const int reason = errno;
    close(m_descriptor);
    throw HostError(file + ": cannot be written: " + std::strerror(reason));
  }
}

WriterLock::~WriterLock() {
  // The file stays: removing it would let two processes lock two files of the same name.
  [[maybe_unused]] const int ignored = ftruncate(m_descriptor, 0);
  close(m_descriptor);
}

}  // namespace EventSystemHost
