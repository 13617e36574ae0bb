#include "tests/host/FaultVfs.h"

#include <condition_variable>
#include <map>
#include <mutex>
#include <string_view>
#include <system_error>

#include "tests/support/UnflushedWrites.h"
#include "tests/support/WatchedDisk.h"

namespace EventSystemTest::FaultVfs {

namespace {

struct Orders {
  int walFlushes = 0;
  int databaseFlushes = 0;
  int flushesUntilFailure = 0;  // 0: none fails
  int failures = 0;             // how many fail then
  bool lose = false;
  bool full = false;
  std::filesystem::path fullWhile;  // empty: in any case
  bool unreadable = false;
  bool hold = false;
  int held = 0;
};

std::mutex mutex;
std::condition_variable changed;
Orders orders;

bool isWal(const DiskRequest& request) {
  return std::string_view(request.path).ends_with("-wal");
}

class Faults : public DiskWatcher {
 public:
  int before(const DiskRequest& request) override {
    std::unique_lock lock(mutex);
    switch (request.call) {
      case DiskCall::kRead:
        return orders.unreadable && !isWal(request) ? SQLITE_IOERR_READ : SQLITE_OK;
      case DiskCall::kWrite:
        return write(request);
      case DiskCall::kSync:
        return sync(request, lock);
      case DiskCall::kClose:
        m_unflushed.erase(request.file);
        return SQLITE_OK;
      default:
        return SQLITE_OK;
    }
  }

  void after(const DiskRequest& request) override {
    const std::lock_guard lock(mutex);
    if (request.call == DiskCall::kOpen || request.call == DiskCall::kSync) {
      m_unflushed[request.file].flushed(request.file);
    }
  }

 private:
  int write(const DiskRequest& request) {
    sqlite3_int64 length = 0;
    request.file->pMethods->xFileSize(request.file, &length);
    if (isFull() && request.offset + request.size > length) return SQLITE_FULL;
    if (orders.lose && isWal(request)) {
      m_unflushed[request.file].note(request.file, request.size, request.offset);
    }
    return SQLITE_OK;
  }

  static bool isFull() {
    std::error_code none;  // there is no such file
    return orders.full && (orders.fullWhile.empty() ||
                           (std::filesystem::file_size(orders.fullWhile, none) > 0 && !none));
  }

  int sync(const DiskRequest& request, std::unique_lock<std::mutex>& lock) {
    ++(isWal(request) ? orders.walFlushes : orders.databaseFlushes);
    ++orders.held;
    changed.notify_all();
    changed.wait(lock, [] { return !orders.hold; });
    --orders.held;
    if (!thisFlushFails()) return SQLITE_OK;
    if (orders.lose) m_unflushed[request.file].lose(request.file);
    return SQLITE_IOERR_FSYNC;
  }

  static bool thisFlushFails() {
    if (orders.flushesUntilFailure == 0 || --orders.flushesUntilFailure > 0) return false;
    if (--orders.failures > 0) orders.flushesUntilFailure = 1;
    return true;
  }

  std::map<sqlite3_file*, UnflushedWrites> m_unflushed;
};

}  // namespace

void install() {
  static Faults faults;
  const std::lock_guard lock(mutex);
  orders = Orders();
  watchDisk(&faults);
}

int walFlushes() {
  const std::lock_guard lock(mutex);
  return orders.walFlushes;
}

int databaseFlushes() {
  const std::lock_guard lock(mutex);
  return orders.databaseFlushes;
}

void failFlush(int n, int count) {
  const std::lock_guard lock(mutex);
  orders.flushesUntilFailure = n;
  orders.failures = count;
}

void loseUnflushed(bool lose) {
  const std::lock_guard lock(mutex);
  orders.lose = lose;
}

void setDiskFull(bool full) {
  const std::lock_guard lock(mutex);
  orders.full = full;
  orders.fullWhile.clear();
}

void setDiskFullWhileThereIs(const std::filesystem::path& file) {
  const std::lock_guard lock(mutex);
  orders.full = true;
  orders.fullWhile = file;
}

void failReads(bool fail) {
  const std::lock_guard lock(mutex);
  orders.unreadable = fail;
}

void holdFlushes() {
  const std::lock_guard lock(mutex);
  orders.hold = true;
}

void waitForHeldFlush() {
  std::unique_lock lock(mutex);
  changed.wait(lock, [] { return orders.held > 0; });
}

void letFlushesGo() {
  const std::lock_guard lock(mutex);
  orders.hold = false;
  changed.notify_all();
}

}  // namespace EventSystemTest::FaultVfs
