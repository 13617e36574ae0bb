#include "tests/host/FaultVfs.h"

#include <sqlite3.h>

#include <condition_variable>
#include <cstring>
#include <mutex>
#include <string_view>
#include <vector>

namespace EventSystemTest::FaultVfs {

namespace {

struct Orders {
  int walFlushes = 0;
  int databaseFlushes = 0;
  int flushesUntilFailure = 0;  // 0: none fails
  int failures = 0;             // how many fail then
  bool lose = false;
  bool full = false;
  bool unreadable = false;
  bool hold = false;
  int held = 0;
};

std::mutex mutex;
std::condition_variable changed;
Orders orders;
sqlite3_vfs* real = nullptr;

struct Overwritten {
  sqlite3_int64 offset;
  std::vector<char> bytes;
};

// What SQLite takes for a file; the real one lies behind it in memory.
struct File {
  sqlite3_file base;
  bool wal;
  std::vector<Overwritten>* undo;
  sqlite3_int64 flushedSize;

  sqlite3_file* inner() { return reinterpret_cast<sqlite3_file*>(this + 1); }
};

File* asFile(sqlite3_file* file) {
  return reinterpret_cast<File*>(file);
}
sqlite3_file* innerOf(sqlite3_file* file) {
  return asFile(file)->inner();
}

int closeFile(sqlite3_file* file) {
  delete asFile(file)->undo;
  return innerOf(file)->pMethods->xClose(innerOf(file));
}
int readFile(sqlite3_file* file, void* data, int size, sqlite3_int64 offset) {
  {
    const std::lock_guard lock(mutex);
    if (orders.unreadable && !asFile(file)->wal) return SQLITE_IOERR_READ;
  }
  return innerOf(file)->pMethods->xRead(innerOf(file), data, size, offset);
}

int writeFile(sqlite3_file* file, const void* data, int size, sqlite3_int64 offset) {
  sqlite3_file* inner = innerOf(file);
  bool lose = false;
  {
    const std::lock_guard lock(mutex);
    sqlite3_int64 length = 0;
    inner->pMethods->xFileSize(inner, &length);
    if (orders.full && offset + size > length) return SQLITE_FULL;
    lose = orders.lose && asFile(file)->wal;
  }
  if (lose) {
    Overwritten old{offset, std::vector<char>(static_cast<std::size_t>(size))};
    inner->pMethods->xRead(inner, old.bytes.data(), size, offset);
    asFile(file)->undo->push_back(std::move(old));
  }
  return inner->pMethods->xWrite(inner, data, size, offset);
}

int truncateFile(sqlite3_file* file, sqlite3_int64 size) {
  return innerOf(file)->pMethods->xTruncate(innerOf(file), size);
}

void loseWrites(File* file) {
  sqlite3_file* inner = file->inner();
  for (auto write = file->undo->rbegin(); write != file->undo->rend(); ++write) {
    inner->pMethods->xWrite(inner, write->bytes.data(), static_cast<int>(write->bytes.size()),
                            write->offset);
  }
  inner->pMethods->xTruncate(inner, file->flushedSize);
  file->undo->clear();
}

bool thisFlushFails() {
  if (orders.flushesUntilFailure == 0 || --orders.flushesUntilFailure > 0) return false;
  if (--orders.failures > 0) orders.flushesUntilFailure = 1;
  return true;
}

int syncFile(sqlite3_file* file, int flags) {
  std::unique_lock lock(mutex);
  ++(asFile(file)->wal ? orders.walFlushes : orders.databaseFlushes);
  ++orders.held;
  changed.notify_all();
  changed.wait(lock, [] { return !orders.hold; });
  --orders.held;
  if (thisFlushFails()) {
    if (orders.lose) loseWrites(asFile(file));
    return SQLITE_IOERR_FSYNC;
  }
  asFile(file)->undo->clear();
  innerOf(file)->pMethods->xFileSize(innerOf(file), &asFile(file)->flushedSize);
  return innerOf(file)->pMethods->xSync(innerOf(file), flags);
}

int fileSize(sqlite3_file* file, sqlite3_int64* size) {
  return innerOf(file)->pMethods->xFileSize(innerOf(file), size);
}
int lockFile(sqlite3_file* file, int level) {
  return innerOf(file)->pMethods->xLock(innerOf(file), level);
}
int unlockFile(sqlite3_file* file, int level) {
  return innerOf(file)->pMethods->xUnlock(innerOf(file), level);
}
int checkReservedLock(sqlite3_file* file, int* result) {
  return innerOf(file)->pMethods->xCheckReservedLock(innerOf(file), result);
}
int fileControl(sqlite3_file* file, int operation, void* argument) {
  return innerOf(file)->pMethods->xFileControl(innerOf(file), operation, argument);
}
int sectorSize(sqlite3_file* file) {
  return innerOf(file)->pMethods->xSectorSize(innerOf(file));
}
int deviceCharacteristics(sqlite3_file* file) {
  return innerOf(file)->pMethods->xDeviceCharacteristics(innerOf(file));
}
int shmMap(sqlite3_file* file, int page, int size, int extend, void volatile** memory) {
  return innerOf(file)->pMethods->xShmMap(innerOf(file), page, size, extend, memory);
}
int shmLock(sqlite3_file* file, int offset, int n, int flags) {
  return innerOf(file)->pMethods->xShmLock(innerOf(file), offset, n, flags);
}
void shmBarrier(sqlite3_file* file) {
  innerOf(file)->pMethods->xShmBarrier(innerOf(file));
}
int shmUnmap(sqlite3_file* file, int remove) {
  return innerOf(file)->pMethods->xShmUnmap(innerOf(file), remove);
}

const sqlite3_io_methods kMethods = {2,
                                     closeFile,
                                     readFile,
                                     writeFile,
                                     truncateFile,
                                     syncFile,
                                     fileSize,
                                     lockFile,
                                     unlockFile,
                                     checkReservedLock,
                                     fileControl,
                                     sectorSize,
                                     deviceCharacteristics,
                                     shmMap,
                                     shmLock,
                                     shmBarrier,
                                     shmUnmap,
                                     nullptr,
                                     nullptr};

int openFile(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* outFlags) {
  File* opened = asFile(file);
  opened->base.pMethods = nullptr;
  const int status = real->xOpen(real, name, opened->inner(), flags, outFlags);
  if (status != SQLITE_OK) return status;
  opened->base.pMethods = &kMethods;
  opened->wal = (flags & SQLITE_OPEN_WAL) != 0;
  opened->undo = new std::vector<Overwritten>();
  opened->inner()->pMethods->xFileSize(opened->inner(), &opened->flushedSize);
  return SQLITE_OK;
}

}  // namespace

void install() {
  static sqlite3_vfs vfs;
  const std::lock_guard lock(mutex);
  orders = Orders();
  if (real != nullptr) return;
  real = sqlite3_vfs_find(nullptr);
  vfs = *real;
  vfs.zName = "faults";
  vfs.szOsFile = real->szOsFile + static_cast<int>(sizeof(File));
  vfs.xOpen = openFile;
  sqlite3_vfs_register(&vfs, 1);
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
