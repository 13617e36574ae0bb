#include "host/database/Catalogue.h"

#include <utility>

#include "host/Host.h"

namespace EventSystemHost {

bool existsAsDefined(const TableDefinition& definition, const std::string& source,
                     const Connection& connection) {
  Statement columns(connection, "SELECT name, type, pk FROM pragma_table_info(?) ORDER BY cid");
  const Value name = definition.name;
  columns.bind(1, name);
  std::string actual;
  int status = columns.step();
  for (; status == SQLITE_ROW; status = columns.step()) {
    actual += (actual.empty() ? "" : ", ") + columns.text(0) + " " + columns.text(1) +
              (columns.number(2) != 0 ? " key" : "");
  }
  if (status != SQLITE_DONE) throw SqliteError(status, connection.errorText());
  if (actual.empty()) return false;
  std::string expected;
  for (const ColumnDefinition& column : definition.columns) {
    expected += (expected.empty() ? "" : ", ") + column.name + " " + sqlType(column) +
                (column.key ? " key" : "");
  }
  if (actual == expected) return true;
  throw HostError(source + ": [" + definition.name + "]: the database's table has the columns (" +
                  actual + "), the section defines (" + expected +
                  "); put back the section that the table was created with");
}

Catalogue::Catalogue(const std::filesystem::path& directory) {
  const std::filesystem::path file = directory / "orbdb.ini";
  std::error_code error;
  m_source = file.string();
  m_definitions = std::filesystem::exists(file, error)
                      ? loadDefinitions(file)
                      : parseDefinitions(builtInDefinitions(), "built-in orbdb.ini");
}

Table* Catalogue::find(std::string_view name, const Connection& connection) {
  const auto known = m_tables.find(name);
  if (known != m_tables.end()) return &known->second;
  const auto defined = m_definitions.find(name);
  if (defined == m_definitions.end()) return nullptr;
  if (!existsAsDefined(defined->second, m_source, connection)) return nullptr;
  return &add(defined->second);
}

void Catalogue::check(const Connection& connection) {
  for (const auto& [name, definition] : m_definitions) find(name, connection);
}

Table& Catalogue::add(TableDefinition definition) {
  auto shared = std::make_shared<const TableDefinition>(std::move(definition));
  Table& table = m_tables[shared->name];  // nothing fails from here on: no table without definition
  table.definition = std::move(shared);
  table.queries.reset();
  return table;
}

}  // namespace EventSystemHost
