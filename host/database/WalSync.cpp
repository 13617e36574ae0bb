#include "host/database/WalSync.h"

#include <algorithm>

namespace EventSystemHost {

int WalSync::waitFor(std::uint64_t commits, Writer& writer, std::unique_lock<std::mutex>& lock) {
  const std::uint64_t failures = m_failures;
  while (true) {
    if (m_failures != failures && commits > m_durableBeforeFailure) return m_status;
    if (m_durable >= commits) return SQLITE_OK;
    if (m_led) {
      standInLine(lock);
      if (m_durable >= commits) return SQLITE_OK;
      lock.lock();
    } else if (m_running) {
      leadLine(writer, lock);
    } else {
      flush(writer, lock);
    }
  }
}

void WalSync::standInLine(std::unique_lock<std::mutex>& lock) {
  std::atomic<int>& ended = m_ended[m_line % 2];
  const int before = ended;
  lock.unlock();
  ended.wait(before);
}

void WalSync::leadLine(Writer& writer, std::unique_lock<std::mutex>& lock) {
  const std::uint64_t failures = m_failures;
  m_led = true;
  m_changed.wait(lock, [&] { return !m_running || m_failures != failures; });
  std::atomic<int>& ended = m_ended[m_line % 2];
  ++m_line;
  m_led = false;
  if (m_failures == failures) flush(writer, lock);
  ++ended;
  ended.notify_all();
}

void WalSync::flush(Writer& writer, std::unique_lock<std::mutex>& lock) {
  m_running = true;
  // What is committed while the flush runs may miss it, and waits for the next one.
  const std::uint64_t covered = writer.commits();
  sqlite3_file* file = writer.walFile();
  lock.unlock();
  int status = file->pMethods->xSync(file, SQLITE_SYNC_NORMAL);
  lock.lock();
  m_running = false;
  // The kernel tells a failure once: it may have told it to another flush of the same file.
  if (status == SQLITE_OK && writer.suspect()) status = SQLITE_IOERR_FSYNC;
  if (status == SQLITE_OK) {
    setDurable(covered);
  } else {
    writer.markSuspect();
    fail(status);
  }
  m_changed.notify_all();
}

void WalSync::fail(int status) {
  ++m_failures;
  m_durableBeforeFailure = m_durable;
  m_status = status;
  m_changed.notify_all();
}

void WalSync::waitUntilIdle(std::unique_lock<std::mutex>& lock) {
  m_changed.wait(lock, [this] { return !m_running; });
}

void WalSync::setDurable(std::uint64_t commits) {
  m_durable = std::max(m_durable.load(), commits);
}

}  // namespace EventSystemHost
