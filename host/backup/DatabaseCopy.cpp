#include "host/backup/DatabaseCopy.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
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
constexpr const char* kPartial = ".partial-";

std::filesystem::path directoryOf(const std::filesystem::path& file) {
  return file.has_parent_path() ? file.parent_path() : std::filesystem::path(".");
}

void syncFile(const std::filesystem::path& file) {
  const FileDescriptor opened(open(file.c_str(), O_RDONLY | O_CLOEXEC));
  if (!opened.valid() || fsync(opened.get()) != 0) {
    throw HostError(file.string() + ": cannot be synced: " + std::strerror(errno));
  }
}

void removeWithItsFiles(const std::filesystem::path& file) {
  std::error_code ignored;
  for (const char* const suffix : {"-journal", "-wal", "-shm", ""}) {
    std::filesystem::remove(file.string() + suffix, ignored);
  }
}

bool hasName(const FileDescriptor& file) {
  struct stat status {};
  return fstat(file.get(), &status) == 0 && status.st_nlink > 0;
}

// "NAME.partial-" and six characters: a name that nobody else gives.
bool isPartial(const std::string& name, const std::string& target) {
  const std::string prefix = target + kPartial;
  return name.size() == prefix.size() + 6 && name.starts_with(prefix) &&
         std::all_of(name.end() - 6, name.end(),
                     [](unsigned char c) { return std::isalnum(c) != 0; });
}

// Copies to the same place whose process was killed.
void removeAbandoned(const std::filesystem::path& target) {
  std::error_code ignored;
  const std::filesystem::directory_iterator entries(directoryOf(target), ignored);
  for (const auto& entry : entries) {
    if (!isPartial(entry.path().filename().string(), target.filename().string())) continue;
    const FileDescriptor opened(
        open(entry.path().c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
    if (opened.valid() && flock(opened.get(), LOCK_EX | LOCK_NB) == 0) {
      removeWithItsFiles(entry.path());
    }
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

DatabaseCopy::DatabaseCopy(std::filesystem::path target) : m_target(std::move(target)) {
  removeAbandoned(m_target);
  do {
    std::string name = m_target.string() + kPartial + "XXXXXX";
    m_lock.emplace(mkostemp(name.data(), O_CLOEXEC));
    m_file = name;
    if (!m_lock->valid() || fchmod(m_lock->get(), 0600) != 0) {
      throw HostError(m_file.string() + ": cannot be created: " + std::strerror(errno));
    }
    // Before it was locked it looked abandoned, and somebody may have removed it.
  } while (flock(m_lock->get(), LOCK_EX) == 0 && !hasName(*m_lock));
}

DatabaseCopy::~DatabaseCopy() {
  if (m_lock) removeWithItsFiles(m_file);
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
  m_lock.reset();
  syncDirectory(directoryOf(m_target));
}

}  // namespace EventSystemHost
