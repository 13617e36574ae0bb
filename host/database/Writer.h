// The connection that does all writes and all checkpoints, and its transaction.
//
// A write to a deferrable table leaves its transaction open: it is committed together with the
// next write, with one disk flush for both.
//
// Thread safety: none; the database's mutex guards it.

#ifndef EVENTSYSTEM_HOST_DATABASE_WRITER_H
#define EVENTSYSTEM_HOST_DATABASE_WRITER_H

#include <cstdint>
#include <filesystem>
#include <string>

#include "host/config/HostConfiguration.h"
#include "host/database/Sqlite.h"
#include "host/database/Work.h"

namespace EventSystemHost {

class Writer {
 public:
  // Throws as openWriter(). `commits` is where its count of transactions starts.
  Writer(const std::filesystem::path& file, Durability durability, std::uint64_t commits);

  Writer(const Writer&) = delete;
  Writer& operator=(const Writer&) = delete;

  const Connection& connection() const { return m_connection; }

  enum class Commit { kNow, kWithNextWrite };

  // What a write does: one statement that changes rows, which SQLite takes back by itself when it
  // fails, or anything else.
  enum class Kind { kOneStatement, kAny };

  // Runs `body`, which returns SQLITE_OK or a status, and commits what it did, or takes it back
  // when it fails. What an earlier write left open is committed in any case. Returns the status.
  int write(Commit when, Kind kind, const Work& body);

  // Whether a write waits for the next one.
  bool pending() const { return m_pending; }
  int commitPending();

  // SQLite's words for the last failure of a write.
  const std::string& failure() const { return m_failure; }

  // Whether it was for want of space on the disk.
  bool lackedSpace() const { return m_lackedSpace; }

  // Whether a file operation has failed: what the kernel keeps of the files may differ from what
  // is on disk, so the connection must be opened anew and the WAL not be trusted to be durable.
  bool suspect() const { return m_suspect; }
  void markSuspect() { m_suspect = true; }

  // How many transactions have been committed.
  std::uint64_t commits() const { return m_commits; }

  // Pages in the WAL after the last commit; they count from 1 again when the WAL starts over.
  int walPages() const { return m_walPages; }

  // Copies the WAL's pages into the database file. Returns a status; `pages` is how many are in
  // the WAL, `copied` how many of them have been copied.
  int checkpoint(int mode, int& pages, int& copied);

  // The WAL's file, for a flush of its own.
  sqlite3_file* walFile() const;

 private:
  int begin();
  int commit();
  void rollBack();
  int runOrTakeBack(const Work& body, bool joined, bool guarded);
  void takeBack(bool joined, bool guarded);
  void noteFailure(int status);

  Connection m_connection;
  Statement m_begin;
  Statement m_commit;
  Statement m_rollback;
  Statement m_savepoint;
  Statement m_release;
  Statement m_rollbackToSavepoint;
  bool m_pending = false;
  bool m_suspect = false;
  std::uint64_t m_commits;
  std::string m_failure;
  bool m_lackedSpace = false;
  int m_walPages = 0;
};

}  // namespace EventSystemHost

#endif
