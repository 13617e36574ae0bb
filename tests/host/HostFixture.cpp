#include "tests/host/HostFixture.h"

#include <sqlite3.h>

#include <fstream>
#include <iterator>
#include <stdexcept>

#include "tests/host/FaultVfs.h"

namespace EventSystemTest {

OrbDB::CTable open(const char* table) {
  const OrbDB::CTable* found = OrbDB::COrbDatabase::Instance().GetTable(table);
  if (found == nullptr) throw std::runtime_error(std::string("no table ") + table);
  return OrbDB::CTable(*found);
}

std::string eventRecord(long id, const std::string& text) {
  const std::string number = std::to_string(id);
  return number + "," + number + ",5,1700000000,\"" + text + "\"";
}

std::vector<long> keysOf(const char* table, const char* filter) {
  OrbDB::CTable rows = open(table);
  std::vector<long> keys;
  for (int end = rows.ListRecordsStart(filter); end == 0; end = rows.ListRecordsNext(filter)) {
    long key = 0;
    EXPECT_EQ(rows.GetValBigInt("id", key), 0);
    keys.push_back(key);
  }
  return keys;
}

std::string textOf(const char* table, const char* key, const char* column) {
  OrbDB::CTable row = open(table);
  if (row.readRecord(key) != 0) return "(no row)";
  std::vector<char> text(1 << 16);
  row.GetValStr(column, text.data(), static_cast<unsigned int>(text.size()));
  return text.data();
}

std::string contentOf(const std::filesystem::path& file) {
  std::ifstream input(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(input), std::istreambuf_iterator<char>()};
}

std::string sqlite(const std::filesystem::path& file, const std::string& sql) {
  sqlite3* connection = nullptr;
  std::string result;
  if (sqlite3_open(file.c_str(), &connection) == SQLITE_OK) {
    sqlite3_db_config(connection, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
    const auto take = [](void* text, int, char** values, char**) {
      *static_cast<std::string*>(text) += values[0] == nullptr ? "NULL" : values[0];
      return 0;
    };
    char* problem = nullptr;
    sqlite3_exec(connection, sql.c_str(), take, &result, &problem);
    if (problem != nullptr) result = std::string("error: ") + problem;
    sqlite3_free(problem);
  }
  sqlite3_close(connection);
  return result;
}

HostTest::HostTest() {
  FaultVfs::install();
}

void HostTest::writeFile(const char* name, const std::string& content) const {
  std::ofstream(home() / name) << content;
}

void HostTest::useDurability(const char* durability) const {
  writeFile("host.ini", std::string("[database]\ndurability = ") + durability + "\n");
}

EventSystemHost::Host& HostTest::start(EventSystemHost::Access access) {
  EventSystemHost::HostOptions options;
  options.home = home();
  options.access = access;
  m_host.reset();
  m_host = std::make_unique<EventSystemHost::Host>(options);
  return *m_host;
}

void HostTest::createTables(const std::filesystem::path& definitionsIn) const {
  OrbDB::COrbDatabase& orb = OrbDB::COrbDatabase::Instance();
  const std::string file = definitionsIn / "orbdb.ini";
  ASSERT_EQ(orb.CheckAddTable("events", file.c_str()), 0);
  ASSERT_EQ(orb.CheckAddTable("eventproperties", file.c_str()), 0);
  ASSERT_EQ(orb.insertRecordsFromIni("eventproperties", file.c_str()), 0);
  ASSERT_EQ(orb.CheckAddTable("dsevents", file.c_str()), 0);
}

void HostTest::startWithTablesIn(const std::filesystem::path& definitionsIn) {
  start();
  createTables(definitionsIn);
}

}  // namespace EventSystemTest
