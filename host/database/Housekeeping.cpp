// What is done for the database between calls: open writes are committed, the WAL is copied into
// the file, free space goes back to the file system.

#include <algorithm>
#include <new>

#include "EventSystem/platform/HostLog.h"
#include "host/database/Database.h"

namespace EventSystemHost {

namespace {

// How long a write to a deferrable table waits for another write to share its flush with.
constexpr std::chrono::milliseconds kPendingDelay(100);

// Free pages go back when they are more than this many, and more than a quarter of the file.
constexpr std::int64_t kFreePagesKept = 256;
constexpr std::int64_t kFreeShareKept = 4;
constexpr const char* kFreeSomePages = "PRAGMA incremental_vacuum(256)";
constexpr int kStepsAtClose = 16;

// At close, a reader in another process is not waited for long: its walk may take hours.
constexpr int kBusyMillisecondsAtClose = 200;

}  // namespace

Maintenance::Clock::time_point Database::maintenanceDue() const {
  const bool usable = m_open && m_writer && !m_writer->suspect() && !m_walSuspect && !m_lost;
  if (!usable) return Maintenance::kNever;
  if (m_checkpointDue && m_damage.empty()) return Maintenance::Clock::time_point::min();
  const Maintenance::Clock::time_point due = m_pendingSince + kPendingDelay;
  if (m_writer->pending()) return due;
  // While writes follow one another, the thread looks after them now and then by itself: to be
  // woken would cost each of them more than its work does.
  return due > Maintenance::Clock::now() ? due : Maintenance::kNever;
}

void Database::maintain(Lock& lock) {
  // A flush and a checkpoint at once would share what the kernel tells about failures.
  m_sync.waitUntilIdle(lock);
  if (maintenanceDue() > Maintenance::Clock::now()) return;
  try {
    const int status = commitPending();
    // Its caller has been told that it succeeded; the next one that waits is told otherwise.
    if (status != SQLITE_OK) m_unreported = status;
    if (m_checkpointDue && status == SQLITE_OK) checkpoint();
  } catch (const std::bad_alloc&) {
    // There is no caller to tell. The work becomes due again with the writes that follow.
    m_unreported = SQLITE_NOMEM;
  }
}

void Database::checkpoint() {
  // Who repairs the file finds it and the WAL as they were.
  if (!m_damage.empty()) return;
  m_checkpointDue = false;
  m_checkpointAt = m_walPages + kCheckpointPages;
  try {
    int pages = 0;
    int copied = 0;
    const int status = m_writer->checkpoint(SQLITE_CHECKPOINT_PASSIVE, pages, copied);
    if (status != SQLITE_OK) throw SqliteError(status, m_writer->failure());
    if (copied < pages) return;  // a walk still needs the file as it is
    m_unsavedPages = 0;
    if (shrink()) m_checkpointDue = true;
  } catch (const SqliteError& problem) {
    noteDamage(problem.status(), nullptr, problem.what());
    WarningA(problem.status(), "%s: the WAL cannot be copied into the database file: %s",
             m_configuration.databaseFile.c_str(), problem.what());
  }
}

bool Database::shrink() {
  const std::int64_t freePages = connection().number("PRAGMA freelist_count");
  const std::int64_t allPages = connection().number("PRAGMA page_count");
  const std::int64_t kept = m_lacksSpace ? 0 : std::max(kFreePagesKept, allPages / kFreeShareKept);
  if (freePages <= kept) return false;
  const Task task{nullptr, "free space was not given back"};
  return write(Writer::Commit::kNow, Writer::Kind::kAny, task,
               [&] { return connection().execute(kFreeSomePages); }) == SQLITE_OK;
}

// False when what is in the WAL must not be copied: after a failed flush pages of it may be others
// than the WAL's index says.
bool Database::flushAtClose(Lock& lock) {
  const int status = m_sync.waitFor(m_writer->commits(), *m_writer, lock);
  if (!lock.owns_lock()) lock.lock();
  m_sync.waitUntilIdle(lock);
  if (status == SQLITE_OK) return true;
  ErrorA(status, "%s: the last flush failed, the newest calls may not survive power loss",
         m_configuration.databaseFile.c_str());
  return ready(Use::kWrite, lock) == SQLITE_OK;
}

void Database::finish(Lock& lock) {
  try {
    commitPending();
    // Whether or not the WAL can be copied below.
    if (m_configuration.durability != Durability::kStrict && !flushAtClose(lock)) return;
    endAllWalks();
    for (int step = 0; m_damage.empty() && step < kStepsAtClose && shrink(); ++step) {
    }
    if (!m_damage.empty()) return;
    sqlite3_busy_timeout(connection().get(), kBusyMillisecondsAtClose);
    int pages = 0;
    int copied = 0;
    const int status = m_writer->checkpoint(SQLITE_CHECKPOINT_TRUNCATE, pages, copied);
    if (status != SQLITE_OK && primaryStatus(status) != SQLITE_BUSY) {
      ErrorA(status, "%s: the WAL stays, because it cannot be copied into the database file: %s",
             m_configuration.databaseFile.c_str(), m_writer->failure().c_str());
    }
  } catch (const SqliteError& problem) {
    noteDamage(problem.status(), nullptr, problem.what());
    ErrorA(problem.status(), "%s: %s", m_configuration.databaseFile.c_str(), problem.what());
  }
}

}  // namespace EventSystemHost
