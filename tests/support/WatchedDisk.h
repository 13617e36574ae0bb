// What SQLite asks of its files, shown to a test: each call is told before it reaches the real
// files, may be answered in their place, and is told again when it was done.
//
// Shared memory is no file here: mapping and locking it can be made to fail, its content cannot be
// seen.
//
// Thread safety: any thread. A watcher is called by the threads that use SQLite, also at once.

#ifndef EVENTSYSTEM_TESTS_SUPPORT_WATCHEDDISK_H
#define EVENTSYSTEM_TESTS_SUPPORT_WATCHEDDISK_H

#include <sqlite3.h>

namespace EventSystemTest {

enum class DiskCall {
  kOpen,
  kClose,
  kDelete,
  kAccess,
  kRead,
  kWrite,
  kTruncate,
  kSync,
  kFileSize,
  kLock,
  kMapShared,
  kLockShared,
  kSleep
};

struct DiskRequest {
  DiskCall call;
  const char* path;            // "" for a file without a name
  sqlite3_file* file;          // the real one; NULL where there is none, as before kOpen
  int flags = 0;               // of kOpen, kDelete, kSync, kLockShared; the level of kLock
  void* to = nullptr;          // kRead
  const void* data = nullptr;  // kWrite
  int size = 0;                // kRead, kWrite
  sqlite3_int64 offset = 0;    // kRead, kWrite; of kTruncate the new size
};

class DiskWatcher {
 public:
  virtual ~DiskWatcher() = default;

  // SQLITE_OK: the call goes on to the real file. Anything else is its answer; a sleep then takes
  // no time. kClose goes on in any case.
  virtual int before(const DiskRequest& request) = 0;

  // The call succeeded.
  virtual void after(const DiskRequest& request) = 0;
};

// From now on SQLite's default; files that are open keep the disk that they were opened on. NULL:
// nobody is told. The watcher must outlive the files opened under it.
void watchDisk(DiskWatcher* watcher);

}  // namespace EventSystemTest

#endif
