#include "tests/death/AuditFeed.h"

#include <sqlite3.h>

#include <memory>
#include <stdexcept>

#include "tests/death/EventMaker.h"

namespace EventSystemTest {

std::uint64_t AuditFeed::add() {
  if (m_rows == 0) {
    std::filesystem::create_directories(m_file.parent_path());
    run("create table event(_id integer primary key, date_created text, content text, etype "
        "integer)");
  }
  ++m_rows;
  run("insert into event(date_created,content,etype) values('1700000000','" +
      auditContentOf(m_rows) + "',8)");
  return m_rows;
}

void AuditFeed::run(const std::string& sql) const {
  sqlite3* opened = nullptr;
  int result = sqlite3_open(m_file.c_str(), &opened);
  const std::unique_ptr<sqlite3, int (*)(sqlite3*)> database(opened, sqlite3_close);
  sqlite3_busy_timeout(opened, 60000);
  if (result == SQLITE_OK) result = sqlite3_exec(opened, sql.c_str(), nullptr, nullptr, nullptr);
  if (result != SQLITE_OK) throw std::runtime_error(sql + ": " + sqlite3_errmsg(opened));
}

}  // namespace EventSystemTest
