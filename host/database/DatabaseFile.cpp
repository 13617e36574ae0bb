#include "host/database/DatabaseFile.h"

#include <string>

#include "host/Host.h"
#include "host/files/PrivateFiles.h"

namespace EventSystemHost {

namespace {

constexpr std::int64_t kApplicationId = 0x45765351;  // "EvSQ"
constexpr std::int64_t kLayout = 1;
constexpr int kBusyMilliseconds = 5000;
// What stays of the WAL when it starts over; the maintenance keeps it near this size.
constexpr int kWalBytesKept = 8 << 20;

struct Identity {
  std::int64_t application;
  std::int64_t layout;
  bool empty;
};

Identity identify(const Connection& connection) {
  return {connection.number("PRAGMA application_id"), connection.number("PRAGMA user_version"),
          connection.number("SELECT count(*) FROM sqlite_master") == 0};
}

// True for a file without content, which is nobody's yet.
bool isBlank(const Identity& identity) {
  return identity.empty && identity.application == 0 && identity.layout == 0;
}

void requireOurs(const Connection& connection, const std::filesystem::path& file) {
  const std::string problem = whyNotOurs(connection);
  if (problem.empty()) return;
  const bool foreign = identify(connection).application != kApplicationId;
  throw HostError(file.string() + ": " + problem +
                  (foreign ? "; set [database] file in host.ini to a file of its own" : ""));
}

void configure(const Connection& connection) {
  sqlite3_busy_timeout(connection.get(), kBusyMilliseconds);
  sqlite3_db_config(connection.get(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
  sqlite3_db_config(connection.get(), SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
  sqlite3_db_config(connection.get(), SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
}

// Everything that marks the file goes in with one transaction.
void markAsOurs(const Connection& connection) {
  connection.require("PRAGMA auto_vacuum = INCREMENTAL");
  connection.require("BEGIN IMMEDIATE; PRAGMA application_id = " + std::to_string(kApplicationId) +
                     "; PRAGMA user_version = " + std::to_string(kLayout) + "; COMMIT");
}

void useWal(const Connection& connection, Durability durability) {
  const std::string mode = connection.text("PRAGMA journal_mode = WAL");
  if (mode != "wal") throw SqliteError(SQLITE_CANTOPEN, "the file system does not support WAL");
  // The WAL stays after the last close, so that a reader that comes later creates no file.
  int persist = 1;
  sqlite3_file_control(connection.get(), "main", SQLITE_FCNTL_PERSIST_WAL, &persist);
  connection.require("PRAGMA wal_autocheckpoint = 0");
  connection.require("PRAGMA journal_size_limit = " + std::to_string(kWalBytesKept));
  connection.require(durability == Durability::kStrict ? "PRAGMA synchronous = FULL"
                                                       : "PRAGMA synchronous = NORMAL");
  connection.require("PRAGMA secure_delete = FAST");
  connection.require("PRAGMA cache_size = -16384");
}

}  // namespace

std::string whyNotOurs(const Connection& connection) {
  const Identity identity = identify(connection);
  if (identity.application != kApplicationId) {
    return "is a SQLite database of another program (application id " +
           std::to_string(identity.application) + ", expected " + std::to_string(kApplicationId) +
           ")";
  }
  if (identity.layout > kLayout || identity.layout < 1) {
    return "has layout " + std::to_string(identity.layout) + ", this program reads layout " +
           std::to_string(kLayout) + "; use the release that wrote the file, or a later one";
  }
  return "";
}

void prepareFile(const std::filesystem::path& file) {
  // SQLite would create it with a mode that depends on the umask.
  makePrivateFile(file);
  const Connection connection(file, SQLITE_OPEN_READWRITE);
  configure(connection);
  const Identity identity = identify(connection);
  if (isBlank(identity)) {
    markAsOurs(connection);
  } else {
    requireOurs(connection, file);
  }
}

Connection openWriter(const std::filesystem::path& file, Durability durability) {
  Connection connection(file, SQLITE_OPEN_READWRITE);
  configure(connection);
  requireOurs(connection, file);
  useWal(connection, durability);
  return connection;
}

Connection openReader(const std::filesystem::path& file) {
  std::error_code error;
  if (!std::filesystem::exists(file, error)) {
    throw HostError(file.string() +
                    ": there is no database; a program that writes events creates it");
  }
  Connection connection(file, SQLITE_OPEN_READONLY);
  configure(connection);
  connection.require("PRAGMA query_only = 1");
  const Identity identity = identify(connection);
  if (isBlank(identity)) throw HostError(file.string() + ": the database is empty");
  requireOurs(connection, file);
  return connection;
}

}  // namespace EventSystemHost
