#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <ctime>
#include <map>
#include <optional>
#include <string>

#include "host/Host.h"
#include "host/backup/Backup.h"
#include "host/backup/DatabaseCopy.h"
#include "host/backup/SourceFile.h"
#include "host/config/DistinctFiles.h"
#include "host/database/DatabaseFile.h"
#include "host/database/WriterLock.h"
#include "host/files/PrivateFiles.h"

namespace EventSystemHost {

namespace {

constexpr const char* kProperties = "eventproperties";
constexpr const char* kHighestId = "maxid";

// What a database says of the ids it has handed out: the rows that hold the highest ones, by name,
// and how their table is made.
struct GivenIds {
  std::string table;
  std::map<std::string, std::int64_t> highest;
};

GivenIds readGivenIds(const Connection& database) {
  GivenIds ids;
  if (!hasTable(database, kProperties)) return ids;
  ids.table = database.text("SELECT sql FROM sqlite_master WHERE name = 'eventproperties'");
  Statement query(database,
                  "SELECT propname, propvalue FROM eventproperties "
                  "WHERE propname = 'maxid' OR propname LIKE 'maxid\\_%' ESCAPE '\\'");
  int status = query.step();
  for (; status == SQLITE_ROW; status = query.step()) ids.highest[query.text(0)] = query.number(1);
  if (status != SQLITE_DONE) throw SqliteError(status, database.errorText());
  // A row may have been filed above the number that was noted.
  std::int64_t& global = ids.highest[kHighestId];
  global = std::max(global, static_cast<std::int64_t>(highestIdIn(database)));
  return ids;
}

// Nothing of what was handed out is handed out again.
void raiseIds(const Connection& copy, const GivenIds& ids) {
  if (ids.highest.empty()) return;
  copy.require("BEGIN IMMEDIATE");
  if (!hasTable(copy, kProperties)) {
    copy.require(ids.table);
    copy.require("INSERT INTO eventproperties VALUES (1, 'maxid', 0)");
  }
  Statement raise(copy,
                  "INSERT INTO eventproperties (propname, propvalue) VALUES (?1, ?2) ON CONFLICT "
                  "(propname) DO UPDATE SET propvalue = max(propvalue, excluded.propvalue)");
  for (const auto& [name, highest] : ids.highest) {
    const Value nameValue = name;
    raise.bind(1, nameValue);
    raise.bind(2, highest);
    const int status = raise.run();
    if (status != SQLITE_OK) throw SqliteError(status, copy.errorText());
  }
  copy.require("COMMIT");
}

bool isBlank(const std::filesystem::path& database) {
  const auto bytes = [&](const char* suffix) {
    std::error_code error;
    const auto found = std::filesystem::file_size(database.string() + suffix, error);
    return error ? 0 : found;
  };
  return bytes("") == 0 && bytes("-wal") == 0;
}

[[noreturn]] void cannotKeepIds(const std::filesystem::path& database, const std::string& reason) {
  throw HostError(database.string() +
                  ": cannot be read, so it is not known which ids were handed out: " + reason +
                  "; without keeping the ids it can be replaced, and some may be given again");
}

// Brings the database's log into the file, so that it is one file to keep, and reads the ids. A
// reader in another process may prevent the first.
GivenIds settle(const std::filesystem::path& database) {
  const Connection present = openWriter(database, Durability::kStrict);
  GivenIds ids = readGivenIds(present);
  sqlite3_busy_timeout(present.get(), 200);
  int persist = 0;
  sqlite3_file_control(present.get(), "main", SQLITE_FCNTL_PERSIST_WAL, &persist);
  static_cast<void>(present.execute("PRAGMA wal_checkpoint(TRUNCATE)"));
  static_cast<void>(present.execute("PRAGMA journal_mode = DELETE"));
  return ids;
}

std::optional<GivenIds> settlePresent(const std::filesystem::path& database, bool keepIds) {
  try {
    return settle(database);
  } catch (const SqliteError& problem) {
    if (keepIds) cannotKeepIds(database, problem.what());
  } catch (const HostError& problem) {
    if (keepIds) cannotKeepIds(database, problem.what());
  }
  return std::nullopt;
}

std::string timeSuffix() {
  const std::time_t now = std::time(nullptr);
  std::tm utc{};
  gmtime_r(&now, &utc);
  std::string text(32, '\0');
  text.resize(std::strftime(text.data(), text.size(), "%Y%m%dT%H%M%SZ", &utc));
  return text;
}

std::filesystem::path freeName(const std::filesystem::path& database) {
  const std::string name = database.string() + ".before-restore-" + timeSuffix();
  std::filesystem::path free = name;
  std::error_code error;
  for (int i = 2; std::filesystem::exists(free, error); ++i) free = name + "-" + std::to_string(i);
  return free;
}

void addName(const std::filesystem::path& file, const std::filesystem::path& name) {
  if (link(file.c_str(), name.c_str()) == 0) return;
  throw HostError(name.string() +
                  ": the present database cannot be kept under this name: " + std::strerror(errno));
}

// The names of a database that is being replaced. Where that comes to nothing, everything has its
// own name again.
class KeptDatabase {
 public:
  explicit KeptDatabase(const std::filesystem::path& database)
      : KeptDatabase(database, freeName(database)) {
    std::error_code error;  // from here on, a failure takes the first name back
    if (std::filesystem::exists(logOf(m_database), error)) {
      addName(logOf(m_database), logOf(m_name));
    }
  }

  ~KeptDatabase() {
    std::error_code ignored;
    if (!std::filesystem::equivalent(m_database, m_name, ignored)) return;  // it is replaced
    std::filesystem::create_hard_link(logOf(m_name), logOf(m_database), ignored);
    std::filesystem::remove(logOf(m_name), ignored);
    std::filesystem::remove(m_name, ignored);
  }

  KeptDatabase(const KeptDatabase&) = delete;
  KeptDatabase& operator=(const KeptDatabase&) = delete;

  // Leaves the log to the name that is kept.
  void takeLog() const {
    std::error_code error;
    std::filesystem::remove(m_database.string() + "-shm", error);
    std::filesystem::remove(logOf(m_database), error);
    if (!error) return;
    throw HostError(logOf(m_database).string() + ": cannot be moved: " + error.message());
  }

  const std::filesystem::path& name() const { return m_name; }

 private:
  KeptDatabase(const std::filesystem::path& database, const std::filesystem::path& name)
      : m_database(database), m_name(name) {
    addName(m_database, m_name);
  }

  static std::filesystem::path logOf(const std::filesystem::path& database) {
    return database.string() + "-wal";
  }

  std::filesystem::path m_database;
  std::filesystem::path m_name;
};

// From the second name on, no host opens the database; from the new file on, the second name is the
// only one. The log goes in between, because it must never lie beside the new file.
std::filesystem::path exchange(const std::filesystem::path& database, DatabaseCopy& copy) {
  const KeptDatabase kept(database);
  syncDirectory(database.parent_path());
  kept.takeLog();
  syncDirectory(database.parent_path());
  copy.publish(true);
  return kept.name();
}

}  // namespace

Restored restoreDatabase(const HostConfiguration& configuration, const std::filesystem::path& file,
                         bool keepIds, const CopyProgress& progress) {
  const std::filesystem::path& database = configuration.databaseFile;
  requireNotInUse(file, configuration);
  const Connection source = openBackup(file);
  makePrivateDirectories(database.parent_path());
  const WriterLock lock(database);
  DatabaseCopy copy(database);
  withFileNamed(file, [&] { copy.fill(source, progress); });
  Restored restored;
  restored.content = withFileNamed(file, [&] { return copy.seal(file); });
  restored.highestId = restored.content.highestId;
  if (isBlank(database)) {
    copy.publish(true);
    return restored;
  }
  const auto given = settlePresent(database, keepIds);
  if (given && given->highest.contains(kHighestId)) {
    restored.highestIdBefore = static_cast<unsigned long>(given->highest.at(kHighestId));
  }
  if (given && keepIds) {
    withFileNamed(copy.file(), [&] {
      copy.change([&](const Connection& connection) { raiseIds(connection, *given); });
    });
    restored.content = withFileNamed(copy.file(), [&] { return copy.seal(file); });
  }
  restored.kept = exchange(database, copy);
  return restored;
}

}  // namespace EventSystemHost
