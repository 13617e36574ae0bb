// The C library's flushes, as this program and the libraries that it loads find them: flushes of
// directories are noted, or made to fail. Files are none of its concern, SQLite tells of those.
//
// Thread safety: any thread.

#include "tests/power/DirectorySync.h"

#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <filesystem>
#include <set>
#include <string>

#include "tests/power/DiskLog.h"

namespace EventSystemTest {

namespace {

std::atomic<DirectoryFlushFails> fails{nullptr};

bool isDirectory(int descriptor) {
  struct stat status = {};
  return fstat(descriptor, &status) == 0 && S_ISDIR(status.st_mode);
}

int flush(long call, int descriptor) {
  if (!isDirectory(descriptor)) return static_cast<int>(syscall(call, descriptor));
  if (const DirectoryFlushFails asked = fails; asked != nullptr && asked()) {
    errno = EIO;
    return -1;
  }
  DiskLog* const log = DiskLog::recording();
  if (log == nullptr) return static_cast<int>(syscall(call, descriptor));
  const std::filesystem::path directory =
      std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(descriptor));
  const std::size_t covered = log->beginDirectoryFlush();
  std::set<std::string> names = namesIn(directory);
  const int result = static_cast<int>(syscall(call, descriptor));
  if (result == 0) log->directoryFlushed(directory, covered, std::move(names));
  return result;
}

}  // namespace

void failDirectoryFlushes(DirectoryFlushFails asked) {
  fails = asked;
}

}  // namespace EventSystemTest

extern "C" {

__attribute__((visibility("default"))) int fsync(int descriptor) {
  return EventSystemTest::flush(SYS_fsync, descriptor);
}

__attribute__((visibility("default"))) int fdatasync(int descriptor) {
  return EventSystemTest::flush(SYS_fdatasync, descriptor);
}

}  // extern "C"
