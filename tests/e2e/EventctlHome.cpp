#include "tests/e2e/EventctlHome.h"

#include <sqlite3.h>

#include <fstream>
#include <memory>
#include <stdexcept>

namespace EventSystemTest {

std::vector<json> jsonLines(const std::string& text) {
  std::vector<json> objects;
  for (const std::string& line : linesOf(text)) {
    objects.push_back(json::parse(line, nullptr, false));
    EXPECT_TRUE(objects.back().is_object()) << line;
  }
  return objects;
}

std::string serverStatus(const std::string& server, unsigned long date) {
  return "EVENT{version:1;type:4;id:0;date:" + std::to_string(date) +
         ";SERVERSTATUSEVENT{state:1;server:" + server + ";}}";
}

std::string activity(const std::string& message) {
  return "EVENT{version:1;type:7;id:0;date:1700000000;{ACTIVITYEVENT{version:1;action:3;"
         "time:100;severity:2;msg:" +
         message + ";}}";
}

Arguments EventctlHome::at(Arguments arguments) const {
  arguments.insert(arguments.begin(), {"--home", home().string()});
  return arguments;
}

Outcome EventctlHome::run(const Arguments& arguments, const Surroundings& surroundings) const {
  return runProgram(at(arguments), surroundings);
}

std::string EventctlHome::output(const Arguments& arguments,
                                 const Surroundings& surroundings) const {
  const Outcome outcome = run(arguments, surroundings);
  EXPECT_EQ(outcome.status, 0) << arguments.front() << ": " << outcome.out << outcome.err;
  return outcome.out;
}

unsigned long EventctlHome::add(const std::string& server, unsigned int dsid) const {
  return std::stoul("0" + output({"add", "serverstatus", "--server", server, "--state", "1",
                                  "--dsid", std::to_string(dsid), "--wait", "60"}));
}

void EventctlHome::addDataSelection(unsigned int dsid) const {
  output({"dataselection", "add", std::to_string(dsid)});
}

Ids EventctlHome::ids(unsigned int dsid) const {
  Ids found;
  for (const json& event : jsonLines(output({"list", "--json", "--dsid", std::to_string(dsid)}))) {
    found.push_back(event["id"].get<unsigned long>());
  }
  return found;
}

std::filesystem::path EventctlHome::write(const std::string& name, const std::string& text) const {
  const std::filesystem::path file = m_directory.path() / name;
  std::filesystem::create_directories(file.parent_path());
  std::ofstream(file, std::ios::binary) << text;
  return file;
}

void EventctlHome::execute(const std::filesystem::path& file, const std::string& sql) {
  sqlite3* opened = nullptr;
  const int result = sqlite3_open(file.c_str(), &opened);
  const std::unique_ptr<sqlite3, int (*)(sqlite3*)> database(opened, sqlite3_close);
  sqlite3_busy_timeout(opened, 10000);  // a process may be importing from it
  if (result != SQLITE_OK || sqlite3_exec(opened, sql.c_str(), nullptr, nullptr, nullptr) != 0) {
    throw std::runtime_error(sql + ": " + sqlite3_errmsg(opened));
  }
}

long EventctlHome::number(const std::filesystem::path& file, const std::string& sql) {
  sqlite3* opened = nullptr;
  sqlite3_stmt* prepared = nullptr;
  sqlite3_open(file.c_str(), &opened);
  const std::unique_ptr<sqlite3, int (*)(sqlite3*)> database(opened, sqlite3_close);
  sqlite3_prepare_v2(opened, sql.c_str(), -1, &prepared, nullptr);
  const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> query(prepared, sqlite3_finalize);
  if (sqlite3_step(prepared) != SQLITE_ROW) {
    throw std::runtime_error(sql + ": " + sqlite3_errmsg(opened));
  }
  return static_cast<long>(sqlite3_column_int64(prepared, 0));
}

void EventctlHome::leaveAuditRecords(const std::vector<std::string>& messages) const {
  std::filesystem::create_directories(auditDatabase().parent_path());
  std::string sql =
      "BEGIN; CREATE TABLE IF NOT EXISTS event (_id INTEGER PRIMARY KEY, date_created TEXT, "
      "content TEXT, etype INTEGER);";
  for (const std::string& message : messages) {
    sql +=
        "INSERT INTO event (date_created, content, etype) VALUES ('1700000000', "
        "'version:1;action:3;time:1700000000;loadSize:0;AUditMSg:" +
        message + "', 8);";
  }
  execute(auditDatabase(), sql + "COMMIT;");
}

}  // namespace EventSystemTest
