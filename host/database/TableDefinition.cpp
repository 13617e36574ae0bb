#include "host/database/TableDefinition.h"

namespace EventSystemHost {

std::optional<std::size_t> TableDefinition::find(std::string_view column) const {
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (columns[i].name == column) return i;
  }
  return std::nullopt;
}

const char* sqlType(const ColumnDefinition& column) {
  // Only the very words INTEGER PRIMARY KEY make a column SQLite's own row number.
  if (column.key) return "INTEGER";
  switch (column.type) {
    case ColumnType::kInt:
      return "INT";
    case ColumnType::kBigInt:
      return "BIGINT";
    case ColumnType::kText:
      break;
  }
  return "TEXT";
}

std::string sqlName(std::string_view name) {
  std::string quoted = "\"";
  quoted += name;
  quoted += '"';
  return quoted;
}

std::string columnList(const TableDefinition& table) {
  std::string list;
  for (const ColumnDefinition& column : table.columns) {
    if (!list.empty()) list += ", ";
    list += sqlName(column.name);
  }
  return list;
}

std::string createTableSql(const TableDefinition& table) {
  std::string columns;
  for (const ColumnDefinition& column : table.columns) {
    if (!columns.empty()) columns += ",\n  ";
    columns += sqlName(column.name) + " " + sqlType(column);
    if (column.key) columns += " PRIMARY KEY";
    // Numbers of deleted rows are not given again.
    if (column.automatic) columns += " AUTOINCREMENT";
    if (!column.optional) columns += " NOT NULL";
    if (column.unique && !column.key) columns += " UNIQUE";
  }
  return "CREATE TABLE " + sqlName(table.name) + " (\n  " + columns + "\n)";
}

}  // namespace EventSystemHost
