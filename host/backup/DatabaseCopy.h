// A copy of a database on its way: a temporary file that is filled, checked, and then either given
// its name or removed. It is locked as long as it is worked at: one without a lock was left by a
// process that was killed, and the next copy to the same place removes it.
//
// Thread safety: none.

#ifndef EVENTSYSTEM_HOST_BACKUP_DATABASECOPY_H
#define EVENTSYSTEM_HOST_BACKUP_DATABASECOPY_H

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

#include "host/backup/Backup.h"
#include "host/database/Sqlite.h"
#include "host/files/FileDescriptor.h"

namespace EventSystemHost {

class DatabaseCopy {
 public:
  // An empty file in the directory of `target`. Throws HostError.
  explicit DatabaseCopy(std::filesystem::path target);
  // Removes what was not given its name.
  ~DatabaseCopy();

  DatabaseCopy(const DatabaseCopy&) = delete;
  DatabaseCopy& operator=(const DatabaseCopy&) = delete;

  const std::filesystem::path& file() const { return m_file; }

  // Fills it with what `source` holds at this moment. Throws SqliteError.
  void fill(const Connection& source, const CopyProgress& progress);

  // Changes it before it is sealed, or sealed again. Throws SqliteError.
  void change(const std::function<void(const Connection&)>& work) const {
    work(Connection(m_file, SQLITE_OPEN_READWRITE));
  }

  // Reads all of it, makes it one file without a journal, and durable. `source` names in messages
  // where it came from. Throws SqliteError or HostError.
  DatabaseContent seal(const std::filesystem::path& source);

  // Gives it its name, which is durable then. Throws HostError, also when `overwrite` is false and
  // the name is taken.
  void publish(bool overwrite);

 private:
  std::filesystem::path m_target;
  std::filesystem::path m_file;
  std::optional<FileDescriptor> m_lock;  // SQLite loses its own locks when this is closed
};

// Whether the database has this table, and the highest id that its global queue ever gave. They
// throw SqliteError.
bool hasTable(const Connection& connection, const std::string& name);
unsigned long highestIdIn(const Connection& connection);

}  // namespace EventSystemHost

#endif
