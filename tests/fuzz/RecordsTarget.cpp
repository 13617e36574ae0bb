// Records, assignments and filters, through the database's public face into a SQLite file: taken as
// a reference of its own takes them, read back as they were written, and never SQL.

#include <sqlite3.h>

#include <fstream>
#include <memory>
#include <vector>

#include "EventSystem/platform/OrbDB.h"
#include "host/Host.h"
#include "tests/fuzz/RecordReference.h"
#include "tests/fuzz/Target.h"
#include "tests/support/TempDir.h"

namespace EventSystemTest {
namespace {

constexpr char kDefinitions[] =
    "[plain]\ncolumn.1 = id bigint key\ncolumn.2 = count int\ncolumn.3 = words text\n"
    "[named]\ncolumn.1 = id int key auto\ncolumn.2 = name text unique\n"
    "column.3 = value bigint optional\ncolumn.4 = note text optional\n"
    // A host makes this one itself.
    "[dataselection]\ncolumn.1 = id int key\ncolumn.2 = dstypeid int\n"
    "column.3 = name text optional\n";

constexpr char kLook[] =
    "SELECT group_concat(coalesce(sql, name)) || (SELECT count(*) FROM plain) || "
    "(SELECT count(*) FROM named) FROM sqlite_master";

const ReferenceTable kPlain = {{"id", 64}, {"count", 32}, {"words", 0}};
const ReferenceTable kNamed = {
    {"id", 32, true}, {"name", 0}, {"value", 64, true}, {"note", 0, true}};

// A host on a database in memory, with both tables, and a second connection that looks on.
class Database {
 public:
  Database() {
    const std::string definitions = (m_home.path() / "orbdb.ini").string();
    std::ofstream(definitions) << kDefinitions;
    std::ofstream(m_home.path() / "host.ini") << "[database]\ndurability = relaxed\n";
    EventSystemHost::HostOptions options;
    options.home = m_home.path();
    options.logLevel = EventSystemHost::LogLevel::kOff;
    m_host = std::make_unique<EventSystemHost::Host>(options);
    for (const char* table : {"plain", "named"}) {
      OrbDB::COrbDatabase::Instance().CheckAddTable(table, definitions.c_str());
    }
    sqlite3* opened = nullptr;
    sqlite3_open_v2((m_home.path() / "events.db").c_str(), &opened, SQLITE_OPEN_READONLY, nullptr);
    m_onlooker.reset(opened);
    sqlite3_stmt* prepared = nullptr;
    sqlite3_prepare_v2(opened, kLook, -1, &prepared, nullptr);
    m_look.reset(prepared);
    m_schema = schema();
    require(!m_schema.empty(), "the onlooker sees nothing");
  }

  void requireSameSchema() const { require(schema() == m_schema, "the schema changed", schema()); }

 private:
  // The tables and how many rows they have.
  std::string schema() const {
    sqlite3_step(m_look.get());
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(m_look.get(), 0));
    std::string found = text == nullptr ? "" : text;
    sqlite3_reset(m_look.get());
    return found;
  }

  struct Close {
    void operator()(sqlite3* connection) const { sqlite3_close(connection); }
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
  };
  TempDir m_home{TempDir::inMemory()};
  std::unique_ptr<EventSystemHost::Host> m_host;
  std::unique_ptr<sqlite3, Close> m_onlooker;
  std::unique_ptr<sqlite3_stmt, Close> m_look;
  std::string m_schema;
};

std::string valueOf(OrbDB::CTable& row, const std::string& column) {
  static std::vector<char> buffer(1 << 20);
  require(
      row.GetValStr(column.c_str(), buffer.data(), static_cast<unsigned int>(buffer.size())) == 0,
      "a column cannot be read", column);
  return buffer.data();
}

void requireRow(OrbDB::CTable& row, const ReferenceTable& table, const ReferenceRow& wanted) {
  for (const ReferenceColumn& column : table) {
    const auto value = wanted.find(column.name);
    const std::string expected = value == wanted.end() ? "" : value->second;
    require(valueOf(row, column.name) == expected, "read back otherwise", column.name);
    long number = 0;
    if (column.bits == 0 || value == wanted.end()) continue;
    require(
        row.GetValBigInt(column.name.c_str(), number) == 0 && std::to_string(number) == expected,
        "read back as another number", column.name);
  }
}

bool matches(const std::optional<ReferenceRow>& filter, const ReferenceRow& row) {
  if (!filter) return false;
  const auto value = row.find(filter->begin()->first);
  return value != row.end() && value->second == filter->begin()->second;
}

// One record's life.
class Life {
 public:
  Life(const char* name, const ReferenceTable& table)
      : m_rows(*OrbDB::COrbDatabase::Instance().GetTable(name)), m_table(table) {}

  bool add(const std::string& record) {
    const auto wanted = referenceRecord(m_table, record);
    // A number near the end of its range would leave none for the inputs that follow.
    const bool numbered = m_table.front().mayBeMissing;
    if (numbered && wanted && wanted->contains("id") && wanted->at("id").size() > 6) return false;
    int key = 0;
    const bool taken = m_rows.addRecord(record.c_str(), &key, 0) < 1;
    require(taken == wanted.has_value(), taken ? "taken" : "refused", record);
    if (!taken) return false;
    m_row = *wanted;
    if (numbered) require(m_row.emplace("id", std::to_string(key)).second || isKey(key), "its key");
    check();
    return true;
  }

  void update(const std::string& assignments) {
    const auto wanted = referenceAssignments(m_table, assignments);
    const bool taken = m_rows.updateRecord(m_row["id"].c_str(), assignments.c_str()) < 1;
    require(taken == wanted.has_value(), taken ? "taken" : "refused", assignments);
    if (taken) {
      for (const auto& [name, value] : *wanted) m_row[name] = value;
    }
    check();
  }

  void find(const std::string& filter) {
    const bool found = m_rows.ListRecordsStart(filter.c_str()) == 0;
    require(found == matches(referenceFilter(m_table, filter), m_row),
            found ? "found" : "not found", filter);
    if (!found) return;
    requireRow(m_rows, m_table, m_row);
    require(m_rows.ListRecordsNext(filter.c_str()) != 0, "another row", filter);
  }

  void remove() {
    require(m_rows.deleteRecord(m_row["id"].c_str()) == 0, "not deleted");
    require(m_rows.readRecord(m_row["id"].c_str()) != 0, "still there");
  }

 private:
  bool isKey(int key) const { return m_row.at("id") == std::to_string(key); }

  void check() {
    require(m_rows.readRecord(m_row["id"].c_str()) == 0, "no row with its key", m_row["id"]);
    requireRow(m_rows, m_table, m_row);
  }

  OrbDB::CTable m_rows;
  const ReferenceTable& m_table;
  ReferenceRow m_row;
};

}  // namespace

// The table (a byte that is even or odd), a record, a NUL, assignments, a NUL, a filter.
void runTarget(std::string_view input) {
  static const Database database;
  const bool named = !input.empty() && (input[0] & 1) != 0;
  input.remove_prefix(input.empty() ? 0 : 1);
  const std::string record = takeText(input);
  const std::string assignments = takeText(input);
  const std::string filter = takeText(input);
  Life life(named ? "named" : "plain", named ? kNamed : kPlain);
  if (life.add(record)) {
    life.find(filter);
    life.update(assignments);
    life.find(filter);
    life.remove();
  } else {
    life.find(filter);
  }
  database.requireSameSchema();
}

}  // namespace EventSystemTest
