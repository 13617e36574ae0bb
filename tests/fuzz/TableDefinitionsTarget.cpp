// orbdb.ini: refused with a message, or tables that SQLite makes as they are described, and nothing
// else that the text might have said to SQLite.

#include <sqlite3.h>

#include "host/Host.h"
#include "host/database/DefinitionFile.h"
#include "host/database/Sqlite.h"
#include "tests/fuzz/Target.h"

namespace EventSystemTest {
namespace {

using namespace EventSystemHost;

// What SQLite knows of a table, one line for each column.
std::string columnsOf(const Connection& connection, const std::string& table) {
  Statement columns(connection,
                    "SELECT name, type, pk, \"notnull\" FROM pragma_table_info(?) ORDER BY cid");
  const Value name = table;
  columns.bind(1, name);
  std::string found;
  while (columns.step() == SQLITE_ROW) {
    found += columns.text(0) + " " + columns.text(1) + " " + columns.text(2) + columns.text(3);
    found += '\n';
  }
  return found;
}

std::string columnsWanted(const TableDefinition& table) {
  std::string wanted;
  for (const ColumnDefinition& column : table.columns) {
    wanted += column.name + " " + sqlType(column) + (column.key ? " 1" : " 0");
    wanted += column.optional ? "0\n" : "1\n";
  }
  return wanted;
}

constexpr const char* kObjects =
    "SELECT count(*) FROM sqlite_master WHERE name NOT LIKE 'sqlite\\_%' ESCAPE '\\'";

}  // namespace

void runTarget(std::string_view input) {
  Definitions definitions;
  try {
    definitions = parseDefinitions(std::string(input), "orbdb.ini");
  } catch (const HostError&) {
    return;
  }
  const Connection connection(":memory:", SQLITE_OPEN_READWRITE);
  std::int64_t tables = 0;
  for (const auto& [name, table] : definitions) {
    if (table.columns.size() > 2000) continue;  // more than SQLite takes
    const std::string sql = createTableSql(table);
    require(connection.execute(sql) == SQLITE_OK, "SQLite refuses a table", sql);
    require(connection.number(kObjects) == ++tables, "another object was made", sql);
    const std::string found = columnsOf(connection, name);
    require(found == columnsWanted(table), "the columns are others", sql + "\n" + found);
  }
}

}  // namespace EventSystemTest
