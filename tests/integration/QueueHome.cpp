#include "tests/integration/QueueHome.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <cstdlib>
#include <fstream>

#include "EventSystem/CapacityEvent.h"
#include "EventSystem/platform/OrbDB.h"

namespace EventSystemTest {
namespace {

using Database = std::unique_ptr<sqlite3, decltype(&sqlite3_close)>;

Database openDatabase(const std::filesystem::path& file) {
  sqlite3* database = nullptr;
  const int result = sqlite3_open(file.c_str(), &database);
  Database owner(database, sqlite3_close);
  EXPECT_EQ(result, SQLITE_OK) << file;
  return owner;
}

}  // namespace

QueueHome::QueueHome() {
  std::string name = (std::filesystem::temp_directory_path() / "eventsystem-XXXXXX").string();
  m_path = mkdtemp(name.data());
  write("host.ini", "[database]\ndurability = relaxed\n[log]\nlevel = warning\n");
}

QueueHome::~QueueHome() {
  std::error_code error;
  std::filesystem::remove_all(m_path, error);
}

void QueueHome::write(const std::string& file, const std::string& text) const {
  std::ofstream(m_path / file) << text;
}

void QueueHome::execute(const std::filesystem::path& file, const std::string& sql) {
  const Database database = openDatabase(file);
  char* error = nullptr;
  const int result = sqlite3_exec(database.get(), sql.c_str(), nullptr, nullptr, &error);
  EXPECT_EQ(result, SQLITE_OK) << sql << ": " << (error == nullptr ? "" : error);
  sqlite3_free(error);
}

long QueueHome::query(const std::filesystem::path& file, const std::string& sql) {
  const Database database = openDatabase(file);
  sqlite3_stmt* statement = nullptr;
  EXPECT_EQ(sqlite3_prepare_v2(database.get(), sql.c_str(), -1, &statement, nullptr), SQLITE_OK);
  const std::unique_ptr<sqlite3_stmt, decltype(&sqlite3_finalize)> owner(statement,
                                                                         sqlite3_finalize);
  EXPECT_EQ(sqlite3_step(statement), SQLITE_ROW) << sql;
  return sqlite3_column_int64(statement, 0);
}

void QueueHome::addAuditRow(int id, const std::string& message) const {
  std::filesystem::create_directories(auditDatabase().parent_path());
  execute(auditDatabase(),
          "create table if not exists event(_id integer primary key, date_created text, content "
          "text, etype integer);insert into event values(" +
              std::to_string(id) +
              ",'1700000000','version:1;action:2;time:1700000001;loadSize:0;AUditMSg:" + message +
              "',8)");
}

RunningQueue::RunningQueue(const QueueHome& home)
    : m_host([&home] {
        EventSystemHost::HostOptions options;
        options.home = home.path();
        return options;
      }()) {}

unsigned long RunningQueue::add(unsigned int dsid, int* result) {
  char server[] = "node1";
  EventSystem::CapacityEvent event(server, 1000, 800, 500, 400, 0);
  const int code = m_manager.newEvent(&event, dsid);
  if (result != nullptr) *result = code;
  return code == 0 ? event.getId() : 0;
}

std::vector<unsigned long> RunningQueue::ids(unsigned int dsid) {
  std::vector<unsigned long> found;
  unsigned long after = 0;
  for (;;) {
    EventSystem::Event* next = nullptr;
    EXPECT_EQ(m_manager.getNextEvent(after, &next, dsid), 0);
    const std::unique_ptr<EventSystem::Event> event(next);
    if (event == nullptr) return found;
    after = event->getId();
    found.push_back(after);
  }
}

std::string RunningQueue::next(unsigned long afterId, unsigned int dsid) {
  EventSystem::Event* found = nullptr;
  EXPECT_EQ(m_manager.getNextEvent(afterId, &found, dsid), 0);
  const std::unique_ptr<EventSystem::Event> event(found);
  if (event == nullptr) return "";
  char text[2048];
  event->toString(text, sizeof text);
  return text;
}

void addDataSelection(unsigned int dsid) {
  OrbDB::CTable* const table = OrbDB::COrbDatabase::Instance().GetTable("dataselection");
  ASSERT_NE(table, nullptr);
  OrbDB::CTable selections(*table);
  ASSERT_LT(
      selections.addRecord(("id=" + std::to_string(dsid) + ",dstypeid=9").c_str(), nullptr, 0), 1);
}

}  // namespace EventSystemTest
