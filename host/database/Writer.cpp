#include "host/database/Writer.h"

#include <new>

#include "host/database/DatabaseFile.h"
#include "host/database/TableQueries.h"

namespace EventSystemHost {

namespace {

int countWalPages(void* count, sqlite3*, const char*, int pages) {
  *static_cast<int*>(count) = pages;
  return SQLITE_OK;
}

}  // namespace

Writer::Writer(const std::filesystem::path& file, Durability durability, std::uint64_t commits)
    : m_connection(openWriter(file, durability)),
      m_begin(m_connection, "BEGIN IMMEDIATE"),
      m_commit(m_connection, "COMMIT"),
      m_rollback(m_connection, "ROLLBACK"),
      m_savepoint(m_connection, "SAVEPOINT write"),
      m_release(m_connection, "RELEASE write"),
      m_rollbackToSavepoint(m_connection, "ROLLBACK TO write"),
      m_commits(commits) {
  sqlite3_wal_hook(m_connection.get(), countWalPages, &m_walPages);
}

int Writer::write(Commit when, Kind kind, const Work& body) {
  const bool joined = m_pending;
  const bool guarded = joined && kind == Kind::kAny;
  int status = SQLITE_OK;
  if (guarded) {
    status = m_savepoint.run();
  } else if (!joined) {
    status = begin();
  }
  if (status == SQLITE_OK) status = runOrTakeBack(body, joined, guarded);
  if (status == SQLITE_OK && guarded) status = m_release.run();
  if (status == SQLITE_OK) {
    if (when == Commit::kNow || joined) return commit();
    m_pending = true;
    return SQLITE_OK;
  }
  noteFailure(status);
  takeBack(joined, guarded);
  return status;
}

// What throws leaves no transaction open either.
int Writer::runOrTakeBack(const Work& body, bool joined, bool guarded) {
  try {
    return body();
  } catch (...) {
    takeBack(joined, guarded);
    throw;
  }
}

void Writer::takeBack(bool joined, bool guarded) {
  if (joined && !m_connection.idle()) {
    // Only this write is taken back; the earlier one has been reported as done.
    if (guarded) {
      m_rollbackToSavepoint.run();
      m_release.run();
    }
    commit();
  } else {
    rollBack();
  }
}

int Writer::commitPending() {
  return m_pending ? commit() : SQLITE_OK;
}

int Writer::begin() {
  return m_begin.run();
}

int Writer::commit() {
  const int status = m_commit.run();
  m_pending = false;
  if (status != SQLITE_OK) {
    noteFailure(status);
    rollBack();
    return status;
  }
  ++m_commits;
  return SQLITE_OK;
}

void Writer::rollBack() {
  m_pending = false;
  // After some failures SQLite has rolled back by itself.
  if (!m_connection.idle()) m_rollback.run();
}

void Writer::noteFailure(int status) {
  if (saysFailedOperation(status)) m_suspect = true;
  // The status alone may be a record's that is refused.
  m_lackedSpace =
      primaryStatus(status) == SQLITE_FULL && sqlite3_errcode(m_connection.get()) == SQLITE_FULL;
  try {
    if (status == SQLITE_NOTFOUND) {
      m_failure = "no row has this key";
    } else if (status == kRowIgnored) {
      m_failure = "a trigger in the database kept the row out";
    } else {
      m_failure = m_connection.errorText();
    }
  } catch (const std::bad_alloc&) {
    m_failure.clear();  // what is still to be taken back matters more than the words
  }
}

int Writer::checkpoint(int mode, int& pages, int& copied) {
  const int status = sqlite3_wal_checkpoint_v2(m_connection.get(), "main", mode, &pages, &copied);
  if (status == SQLITE_OK) {
    m_walPages = pages;
  } else {
    noteFailure(status);
  }
  return status;
}

sqlite3_file* Writer::walFile() const {
  sqlite3_file* file = nullptr;
  sqlite3_file_control(m_connection.get(), "main", SQLITE_FCNTL_JOURNAL_POINTER, &file);
  return file;
}

}  // namespace EventSystemHost
