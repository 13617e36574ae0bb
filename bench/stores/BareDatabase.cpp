#include "bench/stores/BareDatabase.h"

#include <algorithm>
#include <cstring>
#include <ctime>
#include <stdexcept>

namespace EventSystemBench {

BareDatabase::BareDatabase(const std::filesystem::path& file, Flush flush) {
  sqlite3* database = nullptr;
  const int opened =
      sqlite3_open_v2(file.c_str(), &database,
                      SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX, nullptr);
  m_database.reset(database);
  if (opened != SQLITE_OK) throw std::runtime_error(sqlite3_errmsg(database));
  execute(
      "PRAGMA auto_vacuum = INCREMENTAL; PRAGMA journal_mode = WAL; PRAGMA cache_size = -16384;"
      "PRAGMA secure_delete = FAST");
  execute(flush == Flush::kEachCommit ? "PRAGMA synchronous = FULL"
                                      : "PRAGMA synchronous = NORMAL");
  execute(
      "CREATE TABLE IF NOT EXISTS events (id INTEGER PRIMARY KEY NOT NULL, eventid BIGINT NOT NULL,"
      " type INT NOT NULL, date BIGINT NOT NULL, eventstring TEXT NOT NULL);"
      "CREATE TABLE IF NOT EXISTS eventproperties (id INTEGER PRIMARY KEY AUTOINCREMENT NOT NULL,"
      " propname TEXT NOT NULL UNIQUE, propvalue BIGINT NOT NULL);"
      "INSERT OR IGNORE INTO eventproperties VALUES (1, 'maxid', 0)");
  m_begin = prepare("BEGIN IMMEDIATE");
  m_commit = prepare("COMMIT");
  m_insert = prepare("INSERT INTO events VALUES (?, ?, ?, ?, ?)");
  m_maxId = prepare("UPDATE eventproperties SET propvalue = ? WHERE id = 1");
  m_remove = prepare("DELETE FROM events WHERE id = ?");
  m_next = prepare(
      "SELECT id, eventid, type, date, eventstring FROM events WHERE id > ? ORDER BY id LIMIT 1");
  m_scan = prepare("SELECT id, eventid, type, date, eventstring FROM events ORDER BY id");
}

void BareDatabase::execute(const std::string& sql) {
  if (sqlite3_exec(m_database.get(), sql.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK) return;
  throw std::runtime_error(sqlite3_errmsg(m_database.get()));
}

BareDatabase::Statement BareDatabase::prepare(const char* sql) {
  sqlite3_stmt* statement = nullptr;
  const int prepared =
      sqlite3_prepare_v3(m_database.get(), sql, -1, SQLITE_PREPARE_PERSISTENT, &statement, nullptr);
  if (prepared != SQLITE_OK) throw std::runtime_error(sqlite3_errmsg(m_database.get()));
  return Statement(statement);
}

void BareDatabase::run(const Statement& statement) {
  const int done = sqlite3_step(statement.get());
  sqlite3_reset(statement.get());
  if (done != SQLITE_DONE) throw std::runtime_error(sqlite3_errmsg(m_database.get()));
}

void BareDatabase::bindRow(long id, const std::string& eventString) {
  sqlite3_bind_int64(m_insert.get(), 1, id);
  sqlite3_bind_int64(m_insert.get(), 2, id);
  sqlite3_bind_int(m_insert.get(), 3, 5);
  sqlite3_bind_int64(m_insert.get(), 4, time(nullptr));
  sqlite3_bind_text(m_insert.get(), 5, eventString.data(), static_cast<int>(eventString.size()),
                    SQLITE_STATIC);
}

void BareDatabase::insert(const std::string& eventString) {
  bindRow(++m_lastId, eventString);
  run(m_insert);
}

void BareDatabase::insertWithMaxId(const std::string& eventString) {
  bindRow(++m_lastId, eventString);
  sqlite3_bind_int64(m_maxId.get(), 1, m_lastId);
  run(m_begin);
  run(m_maxId);
  run(m_insert);
  run(m_commit);
}

void BareDatabase::remove(long id) {
  sqlite3_bind_int64(m_remove.get(), 1, id);
  run(m_remove);
}

long BareDatabase::next(long afterId, char* text, int size) {
  sqlite3_bind_int64(m_next.get(), 1, afterId);
  long id = 0;
  if (sqlite3_step(m_next.get()) == SQLITE_ROW) {
    id = sqlite3_column_int64(m_next.get(), 0);
    const int bytes = std::min(sqlite3_column_bytes(m_next.get(), 4), size - 1);
    std::memcpy(text, sqlite3_column_text(m_next.get(), 4), static_cast<std::size_t>(bytes));
    text[bytes] = '\0';
  }
  sqlite3_reset(m_next.get());
  return id;
}

unsigned long BareDatabase::scan() {
  unsigned long sum = 0;
  char text[2048];
  while (sqlite3_step(m_scan.get()) == SQLITE_ROW) {
    for (int column = 0; column < 4; ++column) {
      sum += static_cast<unsigned long>(sqlite3_column_int64(m_scan.get(), column));
    }
    const int bytes = std::min(sqlite3_column_bytes(m_scan.get(), 4), 2047);
    std::memcpy(text, sqlite3_column_text(m_scan.get(), 4), static_cast<std::size_t>(bytes));
    sum += static_cast<unsigned char>(text[bytes / 2]);
  }
  sqlite3_reset(m_scan.get());
  return sum;
}

void BareDatabase::fill(long count, const std::string& eventString) {
  run(m_begin);
  while (m_lastId < count) insert(eventString);
  sqlite3_bind_int64(m_maxId.get(), 1, m_lastId);
  run(m_maxId);
  run(m_commit);
  execute("PRAGMA wal_checkpoint(TRUNCATE)");
}

void lookForAuditRows(const std::filesystem::path& file) {
  sqlite3* database = nullptr;
  sqlite3_open(file.c_str(), &database);
  sqlite3_stmt* statement = nullptr;
  sqlite3_prepare_v2(database, "SELECT _id,date_created, content,etype FROM event order by _id", -1,
                     &statement, nullptr);
  const int step = sqlite3_step(statement);
  sqlite3_finalize(statement);
  sqlite3_close(database);
  if (step != SQLITE_DONE) throw std::runtime_error("the audit database cannot be read");
}

}  // namespace EventSystemBench
