// How the database is opened anew after a failed file operation.
//
// After a failed flush the kernel may call pages clean that never reached the disk, so nothing
// that was in flight can be trusted to be durable by flushing again. The file is opened anew and
// checked; then every page of the WAL is written once more, into the database file, and flushed.

#include <utility>

#include "EventSystem/platform/HostLog.h"
#include "host/database/Database.h"

namespace EventSystemHost {

int Database::recover(Use use, Lock& lock) {
  m_sync.waitUntilIdle(lock);
  try {
    if (!m_writer || m_writer->suspect()) {
      const int status = reopen();
      if (status != SQLITE_OK) return status;
    }
    if (use == Use::kRead || !m_walSuspect) return SQLITE_OK;
    const int status = secureWal();
    if (status != SQLITE_OK) return status;
    InfoA(0, "%s: is in order again", m_configuration.databaseFile.c_str());
    return SQLITE_OK;
  } catch (const SqliteError& problem) {
    if (m_writer) m_writer->markSuspect();
    noteDamage(problem.status(), nullptr, problem.what());
    return ErrorA(problem.status(), "%s: cannot be opened again after a failed flush: %s",
                  m_configuration.databaseFile.c_str(), problem.what());
  } catch (const HostError& problem) {
    if (m_writer) m_writer->markSuspect();
    return ErrorA(SQLITE_CANTOPEN, "%s", problem.what());
  }
}

int Database::reopen() {
  WarningA(SQLITE_IOERR, "%s: a file operation failed; the file is opened again and checked",
           m_configuration.databaseFile.c_str());
  m_walSuspect = true;
  m_sync.fail(SQLITE_IOERR);
  endAllWalks();
  for (auto& [name, table] : m_catalogue->tables()) table.queries.reset();
  // With strict durability everything committed is on disk, and only the call that failed is not
  // trusted: the readers stay open and keep the index of the WAL, which does not have it.
  // Otherwise committed pages may be missing: without any connection the index is made anew, up
  // to the first page of the WAL whose checksum is wrong.
  if (m_configuration.durability != Durability::kStrict) m_pool.closeAll();
  m_writer.reset();
  m_writer =
      std::make_unique<Writer>(m_configuration.databaseFile, m_configuration.durability, m_commits);
  const std::string found = connection().text("PRAGMA quick_check(1)");
  if (found != "ok") throw SqliteError(SQLITE_CORRUPT, found);
  if (m_configuration.durability == Durability::kStrict) return SQLITE_OK;
  int pages = 0;
  int copied = 0;
  const int status = m_writer->checkpoint(SQLITE_CHECKPOINT_PASSIVE, pages, copied);
  if (status == SQLITE_OK && pages < m_unsavedPages) {
    m_lost = true;
    return ErrorA(SQLITE_IOERR, "%s: the newest calls were lost when a flush failed",
                  m_configuration.databaseFile.c_str());
  }
  return SQLITE_OK;
}

int Database::secureWal() {
  int pages = 0;
  int copied = 0;
  const int status = m_writer->checkpoint(SQLITE_CHECKPOINT_TRUNCATE, pages, copied);
  if (status != SQLITE_OK) {
    noteDamage(status, nullptr, m_writer->failure());
    return ErrorA(status, "%s: the WAL cannot be written to the database file: %s",
                  m_configuration.databaseFile.c_str(), m_writer->failure().c_str());
  }
  m_walSuspect = false;
  m_walPages = 0;
  m_unsavedPages = 0;
  m_sync.setDurable(m_writer->commits());
  return SQLITE_OK;
}

}  // namespace EventSystemHost
