#include "host/backup/DatabaseCopy.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <utility>

#include "host/Host.h"
#include "host/database/DatabaseFile.h"
#include "host/files/FileDescriptor.h"
#include "host/files/PrivateFiles.h"

namespace EventSystemHost {

namespace {

constexpr int kPagesAtOnce = 1024;

std::filesystem::path directoryOf(const std::filesystem::path& file) {
  return file.has_parent_path() ? file.parent_path() : std::filesystem::path(".");
}

void syncFile(const std::filesystem::path& file) {
  const FileDescriptor opened(open(file.c_str(), O_RDONLY | O_CLOEXEC));
  if (!opened.valid() || fsync(opened.get()) != 0) {
    throw HostError(file.string() + ": cannot be synced: " + std::strerror(errno));
  }
}

void requireSound(const Connection& copy, const std::filesystem::path& source) {
  const std::string found = copy.text("PRAGMA integrity_check(1)");
  if (found != "ok") throw HostError(source.string() + ": is damaged: " + found);
  if (const std::string problem = whyNotOurs(copy); !problem.empty()) {
    throw HostError(source.string() + ": " + problem);
  }
}

DatabaseContent contentOf(const Connection& copy) {
  DatabaseContent content;
  unsigned long& global = content.events[0];
  if (hasTable(copy, "events")) {
    global = static_cast<unsigned long>(copy.number("SELECT count(*) FROM events"));
  }
  content.highestId = highestIdIn(copy);
  if (!hasTable(copy, "dsevents")) return content;
  Statement query(copy, "SELECT dataselection, count(*) FROM dsevents GROUP BY dataselection");
  int status = query.step();
  for (; status == SQLITE_ROW; status = query.step()) {
    content.events[static_cast<unsigned int>(query.number(0))] =
        static_cast<unsigned long>(query.number(1));
  }
  if (status != SQLITE_DONE) throw SqliteError(status, copy.errorText());
  return content;
}

}  // namespace

bool hasTable(const Connection& connection, const std::string& name) {
  Statement query(connection, "SELECT 1 FROM sqlite_master WHERE type = 'table' AND name = ?");
  const Value wanted = name;
  query.bind(1, wanted);
  const int status = query.step();
  if (status != SQLITE_ROW && status != SQLITE_DONE) {
    throw SqliteError(status, connection.errorText());
  }
  return status == SQLITE_ROW;
}

unsigned long highestIdIn(const Connection& connection) {
  std::int64_t highest = 0;
  if (hasTable(connection, "events")) {
    highest = connection.number("SELECT coalesce(max(eventid), 0) FROM events");
  }
  if (hasTable(connection, "eventproperties")) {
    highest = std::max(highest, connection.number("SELECT coalesce(max(propvalue), 0) FROM "
                                                  "eventproperties WHERE propname = 'maxid'"));
  }
  return static_cast<unsigned long>(highest);
}

DatabaseCopy::DatabaseCopy(std::filesystem::path target)
    : m_target(std::move(target)),
      m_file(m_target.string() + ".partial-" + std::to_string(getpid())) {
  std::error_code ignored;
  std::filesystem::remove(m_file, ignored);  // of a process with this id that was killed
  if (!makePrivateFile(m_file)) throw HostError(m_file.string() + ": exists already");
}

DatabaseCopy::~DatabaseCopy() {
  if (m_published) return;
  std::error_code ignored;
  for (const char* const suffix : {"", "-journal", "-wal", "-shm"}) {
    std::filesystem::remove(m_file.string() + suffix, ignored);
  }
}

// The source's read transaction lasts from the first page to the last: whoever writes meanwhile
// does not make the copy start over.
void DatabaseCopy::fill(const Connection& source, const CopyProgress& progress) {
  const Connection copy(m_file, SQLITE_OPEN_READWRITE);
  copy.require("PRAGMA synchronous = OFF");  // seal() syncs all of it
  source.require("BEGIN");
  source.number("SELECT count(*) FROM sqlite_master");
  {
    const std::unique_ptr<sqlite3_backup, int (*)(sqlite3_backup*)> backup(
        sqlite3_backup_init(copy.get(), "main", source.get(), "main"), sqlite3_backup_finish);
    if (!backup) throw SqliteError(sqlite3_extended_errcode(copy.get()), copy.errorText());
    int status = SQLITE_OK;
    while (status == SQLITE_OK) {
      status = sqlite3_backup_step(backup.get(), kPagesAtOnce);
      const int total = sqlite3_backup_pagecount(backup.get());
      const int left = sqlite3_backup_remaining(backup.get());
      if (progress) {
        progress(static_cast<std::size_t>(total - left), static_cast<std::size_t>(total));
      }
    }
    if (status != SQLITE_DONE) throw SqliteError(status, sqlite3_errstr(status));
  }
  source.require("ROLLBACK");
}

DatabaseContent DatabaseCopy::seal(const std::filesystem::path& source) {
  DatabaseContent content;
  {
    const Connection copy(m_file, SQLITE_OPEN_READWRITE);
    // A file of its own: it needs no other beside it, and can be read where nothing can be written.
    const std::string mode = copy.text("PRAGMA journal_mode = DELETE");
    if (mode != "delete") throw HostError(m_file.string() + ": keeps a journal: " + mode);
    requireSound(copy, source);
    content = contentOf(copy);
  }
  syncFile(m_file);
  content.bytes = std::filesystem::file_size(m_file);
  return content;
}

void DatabaseCopy::publish(bool overwrite) {
  const unsigned int flags = overwrite ? 0 : RENAME_NOREPLACE;
  int status = renameat2(AT_FDCWD, m_file.c_str(), AT_FDCWD, m_target.c_str(), flags);
  if (status != 0 && errno == EINVAL && !overwrite) {
    // A file system that cannot look and rename in one step.
    if (std::filesystem::exists(m_target)) {
      errno = EEXIST;
    } else {
      status = std::rename(m_file.c_str(), m_target.c_str());
    }
  }
  if (status != 0) {
    throw HostError(m_target.string() + ": cannot be created: " + std::strerror(errno));
  }
  m_published = true;
  syncDirectory(directoryOf(m_target));
}

}  // namespace EventSystemHost
