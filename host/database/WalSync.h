// The flush that makes committed transactions durable where a commit itself does not flush.
// Threads that wait at the same time share one flush: the first flushes for all that has been
// committed by then, the others wait for it, and one of those flushes next.
//
// Thread safety: all calls with the database's mutex held.

#ifndef EVENTSYSTEM_HOST_DATABASE_WALSYNC_H
#define EVENTSYSTEM_HOST_DATABASE_WALSYNC_H

#include <condition_variable>
#include <cstdint>
#include <mutex>

#include "host/database/Writer.h"

namespace EventSystemHost {

class WalSync {
 public:
  // Returns when the first `commits` transactions are durable: SQLITE_OK, or the status of the
  // flush that failed. The mutex is released during the flush. The writer is not replaced while
  // a flush runs; see waitUntilIdle().
  int waitFor(std::uint64_t commits, Writer& writer, std::unique_lock<std::mutex>& lock);

  // Waits for a flush that another thread has begun.
  void waitUntilIdle(std::unique_lock<std::mutex>& lock);

  // For a failure of another kind: whoever waits is told.
  void fail(int status);

  // For when something else made the first `commits` transactions durable.
  void setDurable(std::uint64_t commits);

 private:
  void flush(Writer& writer, std::unique_lock<std::mutex>& lock);

  std::condition_variable m_changed;
  bool m_running = false;
  std::uint64_t m_durable = 0;
  std::uint64_t m_failures = 0;
  std::uint64_t m_durableBeforeFailure = 0;
  int m_status = 0;  // of the last flush that failed
};

}  // namespace EventSystemHost

#endif
