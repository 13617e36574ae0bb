#include "tests/power/RawDatabase.h"

#include <sqlite3.h>

#include <functional>
#include <memory>

namespace EventSystemTest {

namespace {

using Columns = std::vector<std::string>;
using Take = std::function<void(const Columns&)>;

class Connection {
 public:
  Connection(const std::filesystem::path& file, int flags, const char* disk = nullptr) {
    sqlite3* opened = nullptr;
    m_status = sqlite3_open_v2(file.c_str(), &opened, flags, disk);
    m_connection.reset(opened);
    sqlite3_busy_timeout(opened, 10000);  // a host may be taking the rows in
  }

  // An empty text, or SQLite's words for what failed.
  std::string run(const std::string& sql, const Take& take = {}) {
    if (m_status != SQLITE_OK) return sqlite3_errstr(m_status);
    sqlite3_stmt* prepared = nullptr;
    m_status = sqlite3_prepare_v2(m_connection.get(), sql.c_str(), -1, &prepared, nullptr);
    const std::unique_ptr<sqlite3_stmt, decltype(&sqlite3_finalize)> statement(prepared,
                                                                               sqlite3_finalize);
    if (m_status != SQLITE_OK) return problem(sql);
    int step = sqlite3_step(prepared);
    for (; step == SQLITE_ROW; step = sqlite3_step(prepared)) {
      if (take) take(columnsOf(prepared));
    }
    return step == SQLITE_DONE ? "" : problem(sql);
  }

 private:
  static Columns columnsOf(sqlite3_stmt* statement) {
    Columns columns;
    for (int i = 0; i < sqlite3_column_count(statement); ++i) {
      const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, i));
      columns.emplace_back(text == nullptr ? "" : text);
    }
    return columns;
  }

  std::string problem(const std::string& sql) {
    const std::string text = sql + ": " + sqlite3_errmsg(m_connection.get());
    m_status = SQLITE_OK;
    return text;
  }

  int m_status = SQLITE_OK;
  std::unique_ptr<sqlite3, decltype(&sqlite3_close)> m_connection{nullptr, sqlite3_close};
};

void keepFirst(std::string& problem, const std::string& next) {
  if (problem.empty()) problem = next;
}

class Reader {
 public:
  explicit Reader(const std::filesystem::path& file) : m_connection(file, SQLITE_OPEN_READONLY) {}

  Stored read() {
    check(m_connection.run("PRAGMA integrity_check", [&](const Columns& columns) {
      if (columns[0] != "ok") check("integrity_check: " + columns[0]);
    }));
    std::vector<std::string> tables;
    check(m_connection.run("SELECT name FROM sqlite_master WHERE type = 'table'",
                           [&](const Columns& columns) { tables.push_back(columns[0]); }));
    for (const std::string& table : tables) readTable(table);
    return m_stored;
  }

 private:
  void readTable(const std::string& table) {
    if (table == "events") {
      readEvents(table, "''");
    } else if (table == "dsevents") {
      readEvents(table, "dataselection");
    } else if (table == "dataselection") {
      check(m_connection.run("SELECT id, dstypeid FROM dataselection", [&](const Columns& row) {
        m_stored.rows["dataselection"][std::stoul(row[0])] = row[1];
      }));
    } else if (table == "eventproperties") {
      check(m_connection.run("SELECT propvalue FROM eventproperties WHERE propname = 'maxid'",
                             [&](const Columns& row) { m_stored.maxId = std::stoul(row[0]); }));
    }
  }

  void readEvents(const std::string& table, const std::string& selection) {
    check(m_connection.run("SELECT id, eventid, eventstring, " + selection + " FROM " + table,
                           [&](const Columns& row) {
                             if (row[0] != row[1])
                               check(table + ": row " + row[0] + " has the event id " + row[1]);
                             m_stored.rows[table][std::stoul(row[0])] = row[2] + row[3];
                           }));
  }

  void check(const std::string& problem) { keepFirst(m_stored.problem, problem); }

  Connection m_connection;
  Stored m_stored;
};

}  // namespace

Stored readStored(const std::filesystem::path& database) {
  return Reader(database).read();
}

std::vector<std::string> readAuditRows(const std::filesystem::path& database) {
  std::vector<std::string> contents;
  if (!std::filesystem::exists(database)) return contents;
  Connection connection(database, SQLITE_OPEN_READWRITE);
  connection.run("SELECT content FROM event ORDER BY _id",
                 [&](const Columns& row) { contents.push_back(row[0]); });
  return contents;
}

bool leaveAuditRow(const std::filesystem::path& database, const std::string& content,
                   const char* disk) {
  Connection connection(database, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, disk);
  return connection.run("PRAGMA synchronous = EXTRA").empty() &&
         connection
             .run(
                 "CREATE TABLE IF NOT EXISTS event (_id INTEGER PRIMARY KEY AUTOINCREMENT, "
                 "date_created TEXT, content TEXT, etype INTEGER)")
             .empty() &&
         connection
             .run("INSERT INTO event (date_created, content, etype) VALUES ('1700000000', '" +
                  content + "', 8)")
             .empty();
}

}  // namespace EventSystemTest
