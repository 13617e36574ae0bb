#include "tests/support/AuditFile.h"

#include <sqlite3.h>

#include <memory>
#include <stdexcept>

#include "tests/support/SqliteProbe.h"

namespace EventSystemTest {

namespace {

std::string quoted(const std::optional<std::string>& text) {
  return text ? "'" + *text + "'" : "null";
}

}  // namespace

std::string auditContent(const std::string& message) {
  return "version:1;action:2;time:3;loadSize:4;AUditMSg:" + message;
}

AuditFile::AuditFile(std::filesystem::path path) : m_path(std::move(path)) {
  run("create table if not exists event (_id integer primary key, date_created text, "
      "content text, etype integer)");
}

void AuditFile::add(int id, const std::optional<std::string>& date,
                    const std::optional<std::string>& content, int type) {
  run("insert into event values (" + std::to_string(id) + "," + quoted(date) + "," +
      quoted(content) + "," + std::to_string(type) + ")");
}

std::vector<int> AuditFile::ids() const {
  return run("select _id from event order by _id");
}

std::vector<int> AuditFile::run(const std::string& sql) const {
  const SqliteProbe::Pause pause;
  sqlite3* opened = nullptr;
  int result =
      sqlite3_open_v2(m_path.c_str(), &opened, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
  const std::unique_ptr<sqlite3, int (*)(sqlite3*)> database(opened, sqlite3_close_v2);
  sqlite3_stmt* prepared = nullptr;
  if (result == SQLITE_OK) result = sqlite3_prepare_v2(opened, sql.c_str(), -1, &prepared, nullptr);
  const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> statement(prepared, sqlite3_finalize);
  std::vector<int> firstColumn;
  if (result == SQLITE_OK) result = sqlite3_step(prepared);
  for (; result == SQLITE_ROW; result = sqlite3_step(prepared)) {
    firstColumn.push_back(sqlite3_column_int(prepared, 0));
  }
  if (result != SQLITE_DONE) throw std::runtime_error("audit file: " + sql);
  return firstColumn;
}

}  // namespace EventSystemTest
