#include "apps/eventctl/DemoDamage.h"

#include <sqlite3.h>

#include <ctime>
#include <memory>

#include "apps/common/Failure.h"

namespace EventApps {
namespace {

struct CloseDatabase {
  void operator()(sqlite3* database) const { sqlite3_close(database); }
};

struct FinalizeStatement {
  void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};

class Database {
 public:
  explicit Database(const std::filesystem::path& file) : m_file(file.string()) {
    sqlite3* database = nullptr;
    const int result = sqlite3_open(m_file.c_str(), &database);
    m_database.reset(database);
    require(result == SQLITE_OK);
  }

  void run(const char* sql, const std::vector<std::string>& values) {
    sqlite3_stmt* statement = nullptr;
    const int result = sqlite3_prepare_v2(m_database.get(), sql, -1, &statement, nullptr);
    const std::unique_ptr<sqlite3_stmt, FinalizeStatement> owner(statement);
    require(result == SQLITE_OK);
    for (std::size_t i = 0; i < values.size(); ++i) {
      require(sqlite3_bind_text(statement, static_cast<int>(i) + 1, values[i].c_str(), -1,
                                SQLITE_TRANSIENT) == SQLITE_OK);
    }
    require(sqlite3_step(statement) == SQLITE_DONE);
  }

 private:
  void require(bool done) const {
    if (!done) throw Failure(m_file + ": " + sqlite3_errmsg(m_database.get()));
  }

  std::string m_file;
  std::unique_ptr<sqlite3, CloseDatabase> m_database;
};

}  // namespace

void writeAuditDatabase(const std::filesystem::path& file,
                        const std::vector<std::string>& messages) {
  std::filesystem::create_directories(file.parent_path());
  Database database(file);
  database.run(
      "CREATE TABLE event (_id INTEGER PRIMARY KEY, date_created TEXT, content TEXT, "
      "etype INTEGER)",
      {});
  const std::string now = std::to_string(std::time(nullptr));
  const std::string beginning = "version:1;action:3;time:" + now + ";loadSize:0;AUditMSg:";
  for (const std::string& message : messages) {
    std::string content = beginning;
    content.append(message);
    database.run("INSERT INTO event (date_created, content, etype) VALUES (?, ?, 8)",
                 {now, content});
  }
}

void misfileEvent(const std::filesystem::path& database, unsigned long id, unsigned long eventId) {
  Database(database).run("UPDATE events SET eventid = CAST(? AS INTEGER) WHERE id = ?",
                         {std::to_string(eventId), std::to_string(id)});
}

void breakEventString(const std::filesystem::path& database, unsigned long id) {
  Database(database).run("UPDATE events SET eventstring = substr(eventstring, 1, 40) WHERE id = ?",
                         {std::to_string(id)});
}

}  // namespace EventApps
