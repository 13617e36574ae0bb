#include "tests/support/WatchedDisk.h"

#include <atomic>

namespace EventSystemTest {

namespace {

std::atomic<DiskWatcher*> current{nullptr};
sqlite3_vfs* real = nullptr;

// What SQLite takes for a file; the real one lies behind it in memory.
struct File {
  sqlite3_file base;
  const char* path;  // SQLite's own, which lives as long as the file

  sqlite3_file* inner() { return reinterpret_cast<sqlite3_file*>(this + 1); }
};

File* asFile(sqlite3_file* file) {
  return reinterpret_cast<File*>(file);
}
sqlite3_file* innerOf(sqlite3_file* file) {
  return asFile(file)->inner();
}

DiskRequest requestOf(DiskCall call, sqlite3_file* file, int flags = 0) {
  return {call, asFile(file)->path, innerOf(file), flags};
}

template <class Function>
int perform(const DiskRequest& request, const Function& function) {
  DiskWatcher* const watcher = current;
  if (watcher == nullptr) return function();
  int status = watcher->before(request);
  if (status != SQLITE_OK) return status;
  status = function();
  if (status == SQLITE_OK) watcher->after(request);
  return status;
}

int closeFile(sqlite3_file* file) {
  sqlite3_file* const inner = innerOf(file);
  const DiskRequest request = requestOf(DiskCall::kClose, file);
  if (DiskWatcher* const watcher = current) watcher->before(request);
  return inner->pMethods->xClose(inner);
}

int readFile(sqlite3_file* file, void* data, int size, sqlite3_int64 offset) {
  DiskRequest request = requestOf(DiskCall::kRead, file);
  request.to = data;
  request.size = size;
  request.offset = offset;
  sqlite3_file* const inner = innerOf(file);
  return perform(request, [&] { return inner->pMethods->xRead(inner, data, size, offset); });
}

int writeFile(sqlite3_file* file, const void* data, int size, sqlite3_int64 offset) {
  DiskRequest request = requestOf(DiskCall::kWrite, file);
  request.data = data;
  request.size = size;
  request.offset = offset;
  sqlite3_file* const inner = innerOf(file);
  return perform(request, [&] { return inner->pMethods->xWrite(inner, data, size, offset); });
}

int truncateFile(sqlite3_file* file, sqlite3_int64 size) {
  DiskRequest request = requestOf(DiskCall::kTruncate, file);
  request.offset = size;
  sqlite3_file* const inner = innerOf(file);
  return perform(request, [&] { return inner->pMethods->xTruncate(inner, size); });
}

int syncFile(sqlite3_file* file, int flags) {
  sqlite3_file* const inner = innerOf(file);
  return perform(requestOf(DiskCall::kSync, file, flags),
                 [&] { return inner->pMethods->xSync(inner, flags); });
}

int fileSize(sqlite3_file* file, sqlite3_int64* size) {
  sqlite3_file* const inner = innerOf(file);
  return perform(requestOf(DiskCall::kFileSize, file),
                 [&] { return inner->pMethods->xFileSize(inner, size); });
}

int lockFile(sqlite3_file* file, int level) {
  sqlite3_file* const inner = innerOf(file);
  return perform(requestOf(DiskCall::kLock, file, level),
                 [&] { return inner->pMethods->xLock(inner, level); });
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

int mapShared(sqlite3_file* file, int page, int size, int extend, void volatile** memory) {
  sqlite3_file* const inner = innerOf(file);
  return perform(requestOf(DiskCall::kMapShared, file),
                 [&] { return inner->pMethods->xShmMap(inner, page, size, extend, memory); });
}

int lockShared(sqlite3_file* file, int offset, int n, int flags) {
  sqlite3_file* const inner = innerOf(file);
  const auto lock = [&] { return inner->pMethods->xShmLock(inner, offset, n, flags); };
  if ((flags & SQLITE_SHM_UNLOCK) != 0) return lock();
  return perform(requestOf(DiskCall::kLockShared, file, flags), lock);
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
                                     mapShared,
                                     lockShared,
                                     shmBarrier,
                                     shmUnmap,
                                     nullptr,
                                     nullptr};

int openFile(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* outFlags) {
  File* const opened = asFile(file);
  opened->base.pMethods = nullptr;
  opened->path = name == nullptr ? "" : name;
  DiskWatcher* const watcher = current;
  DiskRequest request{DiskCall::kOpen, opened->path, nullptr, flags};
  int status = watcher == nullptr ? SQLITE_OK : watcher->before(request);
  if (status != SQLITE_OK) return status;
  status = real->xOpen(real, name, opened->inner(), flags, outFlags);
  if (status != SQLITE_OK) return status;
  opened->base.pMethods = &kMethods;
  request.file = opened->inner();
  if (watcher != nullptr) watcher->after(request);
  return SQLITE_OK;
}

int deleteFile(sqlite3_vfs*, const char* name, int syncDirectory) {
  return perform({DiskCall::kDelete, name, nullptr, syncDirectory},
                 [&] { return real->xDelete(real, name, syncDirectory); });
}

int accessFile(sqlite3_vfs*, const char* name, int flags, int* result) {
  return perform({DiskCall::kAccess, name, nullptr, flags},
                 [&] { return real->xAccess(real, name, flags, result); });
}

int sleepFor(sqlite3_vfs*, int microseconds) {
  DiskWatcher* const watcher = current;
  const DiskRequest request{DiskCall::kSleep, "", nullptr};
  const bool sleeps = watcher == nullptr || watcher->before(request) == SQLITE_OK;
  return sleeps ? real->xSleep(real, microseconds) : microseconds;
}

void registerDisk() {
  static sqlite3_vfs vfs;
  real = sqlite3_vfs_find(nullptr);
  vfs = *real;
  vfs.zName = "watched";
  vfs.szOsFile = real->szOsFile + static_cast<int>(sizeof(File));
  vfs.xOpen = openFile;
  vfs.xDelete = deleteFile;
  vfs.xAccess = accessFile;
  vfs.xSleep = sleepFor;
  sqlite3_vfs_register(&vfs, 1);
}

}  // namespace

void watchDisk(DiskWatcher* watcher) {
  if (real == nullptr) registerDisk();
  current = watcher;
}

}  // namespace EventSystemTest
