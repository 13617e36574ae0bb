// What a programmer would write by hand: a table in a SQLite file, in this process. One connection
// under a mutex writes, so that producers wait in line instead of in SQLite's busy handler, which
// sleeps; each thread reads through a connection of its own.

#include <sqlite3.h>

#include <ctime>
#include <mutex>

#include "bench/systems/Systems.h"

namespace EventSystemBench {
namespace {

constexpr int kEventType = 8;

class Database {
 public:
  explicit Database(const std::filesystem::path& file) {
    const int status = sqlite3_open(file.c_str(), &m_database);
    if (status != SQLITE_OK) {
      sqlite3_close(m_database);
      throw SystemError("SQLite: cannot open " + file.string());
    }
    sqlite3_busy_timeout(m_database, 10000);
  }
  ~Database() { sqlite3_close(m_database); }
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;

  void require(bool done) const {
    if (!done) throw SystemError(std::string("SQLite: ") + sqlite3_errmsg(m_database));
  }
  void execute(const std::string& sql) const {
    require(sqlite3_exec(m_database, sql.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK);
  }
  sqlite3* get() const { return m_database; }

 private:
  sqlite3* m_database = nullptr;
};

class Statement {
 public:
  Statement(const Database& database, const char* sql) : m_database(database) {
    m_database.require(sqlite3_prepare_v3(database.get(), sql, -1, SQLITE_PREPARE_PERSISTENT,
                                          &m_statement, nullptr) == SQLITE_OK);
  }
  ~Statement() { sqlite3_finalize(m_statement); }
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;

  void bind(int place, std::uint64_t number) {
    sqlite3_bind_int64(m_statement, place, static_cast<sqlite3_int64>(number));
  }
  void bind(int place, const std::string& text) {
    sqlite3_bind_text(m_statement, place, text.data(), static_cast<int>(text.size()),
                      SQLITE_STATIC);
  }
  // True when there is a row.
  bool step() {
    const int status = sqlite3_step(m_statement);
    m_database.require(status == SQLITE_ROW || status == SQLITE_DONE);
    return status == SQLITE_ROW;
  }
  void reset() { sqlite3_reset(m_statement); }
  sqlite3_stmt* get() const { return m_statement; }

 private:
  const Database& m_database;
  sqlite3_stmt* m_statement = nullptr;
};

// The writing connection, used by one thread at a time.
class SqliteWriter {
 public:
  SqliteWriter(const std::filesystem::path& file, const std::string& synchronous)
      : m_database(file), m_insert(prepared(synchronous), kInsert), m_delete(m_database, kDelete) {}

  std::uint64_t insert(const std::string& text) {
    const std::lock_guard lock(m_mutex);
    m_insert.bind(1, kEventType);
    m_insert.bind(2, static_cast<std::uint64_t>(std::time(nullptr)));
    m_insert.bind(3, text);
    m_insert.step();
    m_insert.reset();
    return static_cast<std::uint64_t>(sqlite3_last_insert_rowid(m_database.get()));
  }

  void remove(std::uint64_t id) {
    const std::lock_guard lock(m_mutex);
    m_delete.bind(1, id);
    m_delete.step();
    m_delete.reset();
  }

 private:
  static constexpr const char* kInsert =
      "insert into events(eventid, type, date, eventstring) values("
      "(select coalesce(max(seq), 0) + 1 from sqlite_sequence where name = 'events'), ?, ?, ?)";
  static constexpr const char* kDelete = "delete from events where id = ?";

  // AUTOINCREMENT keeps what the library keeps too: an id is never given twice.
  const Database& prepared(const std::string& synchronous) {
    m_database.execute("pragma journal_mode = wal; pragma synchronous = " + synchronous);
    m_database.execute(
        "create table events(id integer primary key autoincrement, eventid integer not null, "
        "type integer not null, date integer not null, eventstring text not null)");
    return m_database;
  }

  std::mutex m_mutex;
  Database m_database;
  Statement m_insert;
  Statement m_delete;
};

class SqliteQueue : public Queue {
 public:
  SqliteQueue(SqliteWriter& writer, const std::filesystem::path& file)
      : m_writer(writer),
        m_reader(file),
        m_next(m_reader,
               "select id, eventid, type, date, eventstring from events where id > ? "
               "order by id limit 1") {}

  std::uint64_t produce(const std::string& text) override { return m_writer.insert(text); }

  std::optional<QueuedText> next(std::uint64_t after) override {
    m_next.bind(1, after);
    std::optional<QueuedText> found;
    if (m_next.step()) {
      const auto* const text = reinterpret_cast<const char*>(sqlite3_column_text(m_next.get(), 4));
      found = QueuedText{static_cast<std::uint64_t>(sqlite3_column_int64(m_next.get(), 0)), text};
    }
    m_next.reset();
    return found;
  }

  void remove(std::uint64_t id) override { m_writer.remove(id); }

 private:
  SqliteWriter& m_writer;
  Database m_reader;
  Statement m_next;
};

class Sqlite : public System {
 public:
  Sqlite(const std::filesystem::path& directory, const std::string& synchronous)
      : m_file(directory / "queue.db"), m_writer(m_file, synchronous) {}

  std::unique_ptr<Queue> connect() override {
    return std::make_unique<SqliteQueue>(m_writer, m_file);
  }

 private:
  std::filesystem::path m_file;
  SqliteWriter m_writer;
};

SystemEntry entry(const std::string& synchronous, Promise promise, const std::string& meaning) {
  return {"SQLite by hand, " + synchronous,
          promise,
          "WAL, synchronous=" + synchronous + meaning +
              "; one connection writes under a mutex; in this process",
          "insert, prepared",
          "select ... where id > ? limit 1, prepared",
          "delete, prepared",
          [synchronous](const std::filesystem::path& directory) {
            return std::make_unique<Sqlite>(directory, synchronous);
          }};
}

}  // namespace

std::vector<SystemEntry> sqliteEntries() {
  return {entry("FULL", Promise::kDurable, ": a flush for each event"),
          entry("NORMAL", Promise::kRelaxed, ": a flush at checkpoints only")};
}

}  // namespace EventSystemBench
