// What a table looks like, as its section of orbdb.ini says.
//
// Thread safety: plain values.

#ifndef EVENTSYSTEM_HOST_DATABASE_TABLEDEFINITION_H
#define EVENTSYSTEM_HOST_DATABASE_TABLEDEFINITION_H

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace EventSystemHost {

enum class ColumnType { kInt, kBigInt, kText };

struct ColumnDefinition {
  std::string name;
  ColumnType type = ColumnType::kText;
  bool key = false;
  bool automatic = false;  // a key that the table numbers itself
  bool unique = false;
  bool optional = false;

  // At most one row has a given value.
  bool selectsOneRow() const { return key || unique; }
};

struct TableDefinition {
  std::string name;
  std::vector<ColumnDefinition> columns;
  std::size_t key = 0;  // index of the key column
  bool deferrable = false;
  std::vector<std::string> initialRows;  // records

  const ColumnDefinition& keyColumn() const { return columns[key]; }
  std::optional<std::size_t> find(std::string_view column) const;
};

// The type as SQLite's table keeps it.
const char* sqlType(const ColumnDefinition& column);

// A name as SQL takes it.
std::string sqlName(std::string_view name);

// The names of all columns, separated by commas.
std::string columnList(const TableDefinition& table);

std::string createTableSql(const TableDefinition& table);

}  // namespace EventSystemHost

#endif
