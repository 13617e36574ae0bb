#include "tests/death/FileCalls.h"

#include <signal.h>
#include <sqlite3.h>
#include <sys/types.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <stdexcept>

namespace EventSystemTest {
namespace {

std::atomic<std::uint64_t> calls{0};
std::uint64_t lastCall = 0;
Moment moment = Moment::kBefore;

void die() {
  kill(getpid(), SIGKILL);
  for (;;) pause();
}

// Makes the call, unless this is the one to die in; `part` does what half a call does.
template <class Call, class Part>
auto counted(Call call, Part part) {
  if (++calls != lastCall) return call();
  if (moment == Moment::kWithin) part();
  if (moment == Moment::kAfter) call();
  die();
  return call();
}

// How much of a write at `offset` is done when it ends between two pages.
std::size_t upToPage(off_t offset, std::size_t size) {
  constexpr std::size_t kPage = 4096;
  return std::min(size, kPage - static_cast<std::size_t>(offset) % kPage);
}

// The calls as SQLite made them before.
ssize_t (*realWrite)(int, const void*, std::size_t) = nullptr;
ssize_t (*realPositionedWrite)(int, const void*, std::size_t, off_t) = nullptr;
int (*realTruncate)(int, off_t) = nullptr;
int (*realUnlink)(const char*) = nullptr;

ssize_t countedWrite(int file, const void* data, std::size_t size) {
  return counted([=] { return realWrite(file, data, size); },
                 [=] { realWrite(file, data, upToPage(lseek(file, 0, SEEK_CUR), size)); });
}

ssize_t countedPositionedWrite(int file, const void* data, std::size_t size, off_t offset) {
  return counted([=] { return realPositionedWrite(file, data, size, offset); },
                 [=] { realPositionedWrite(file, data, upToPage(offset, size), offset); });
}

int countedTruncate(int file, off_t size) {
  return counted([=] { return realTruncate(file, size); }, [] {});
}

int countedUnlink(const char* path) {
  return counted([=] { return realUnlink(path); }, [] {});
}

template <class Function>
void replace(const char* name, Function& real, Function counted) {
  sqlite3_vfs* const files = sqlite3_vfs_find("unix");
  const sqlite3_syscall_ptr found = files->xGetSystemCall(files, name);
  if (found == nullptr) return;  // SQLite was built without it
  real = reinterpret_cast<Function>(found);
  if (files->xSetSystemCall(files, name, reinterpret_cast<sqlite3_syscall_ptr>(counted)) !=
      SQLITE_OK) {
    throw std::runtime_error("SQLite's file calls cannot be counted");
  }
}

}  // namespace

void dieInFileCall(std::uint64_t nth, Moment when) {
  lastCall = nth;
  moment = when;
  replace("write", realWrite, countedWrite);
  replace("pwrite", realPositionedWrite, countedPositionedWrite);
  replace("pwrite64", realPositionedWrite, countedPositionedWrite);
  replace("ftruncate", realTruncate, countedTruncate);
  replace("unlink", realUnlink, countedUnlink);
}

}  // namespace EventSystemTest
