// The flush that makes committed transactions durable where a commit itself does not flush.
// Threads that wait at the same time share one flush. Those who come while one runs stand in line
// for the next: the first of them flushes for the line when the running flush ends, the others
// sleep until that is done and go on without the database's mutex.
//
// Thread safety: all calls with the database's mutex held.

#ifndef EVENTSYSTEM_HOST_DATABASE_WALSYNC_H
#define EVENTSYSTEM_HOST_DATABASE_WALSYNC_H

#include <array>
#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <mutex>

#include "host/database/Writer.h"

namespace EventSystemHost {

class WalSync {
 public:
  // Returns when the first `commits` transactions are durable: SQLITE_OK, or the status of the
  // flush that failed. The mutex is released during the flush, and may still be on return. The
  // writer is not replaced while a flush runs; see waitUntilIdle().
  int waitFor(std::uint64_t commits, Writer& writer, std::unique_lock<std::mutex>& lock);

  // Waits for a flush that another thread has begun.
  void waitUntilIdle(std::unique_lock<std::mutex>& lock);

  // For a failure of another kind: whoever waits is told.
  void fail(int status);

  // For when something else made the first `commits` transactions durable.
  void setDurable(std::uint64_t commits);

 private:
  void flush(Writer& writer, std::unique_lock<std::mutex>& lock);
  void leadLine(Writer& writer, std::unique_lock<std::mutex>& lock);
  void standInLine(std::unique_lock<std::mutex>& lock);

  std::condition_variable m_changed;
  bool m_running = false;
  // The line that forms while a flush runs: whether somebody leads it, its number, and how often
  // the lines of even and of odd numbers have ended. Two of them are never waited in at once.
  bool m_led = false;
  std::size_t m_line = 0;
  std::array<std::atomic<int>, 2> m_ended = {};
  std::atomic<std::uint64_t> m_durable = 0;  // written with the mutex held
  std::uint64_t m_failures = 0;
  std::uint64_t m_durableBeforeFailure = 0;
  int m_status = 0;  // of the last flush that failed
};

}  // namespace EventSystemHost

#endif
