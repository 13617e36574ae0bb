#include "host/database/TableQueries.h"

namespace EventSystemHost {

namespace {

std::string selectSql(const TableDefinition& table) {
  return "SELECT " + columnList(table) + " FROM " + sqlName(table.name);
}

// The names of the assigned columns, each followed by `after`, separated by commas.
std::string assignedList(const TableDefinition& table, const std::vector<Assignment>& values,
                         const char* after) {
  std::string list;
  for (const Assignment& value : values) {
    if (!list.empty()) list += ", ";
    list += sqlName(table.columns[value.column].name) + after;
  }
  return list;
}

void bindAll(Statement& statement, const std::vector<Assignment>& values) {
  int parameter = 0;
  for (const Assignment& value : values) statement.bind(++parameter, value.value);
}

}  // namespace

TableQueries::TableQueries(const Connection& connection, const TableDefinition& table)
    : m_connection(connection), m_table(table) {}

Statement& TableQueries::prepared(const std::string& sql) {
  const auto known = m_statements.find(sql);
  if (known != m_statements.end()) return known->second;
  return m_statements.emplace(sql, Statement(m_connection, sql)).first->second;
}

int TableQueries::select(std::size_t column, const Value& value, Row& row) {
  Statement& statement =
      prepared(selectSql(m_table) + " WHERE " + sqlName(m_table.columns[column].name) + " = ?");
  statement.bind(1, value);
  const int status = statement.step();
  if (status == SQLITE_ROW) statement.readRow(row);
  statement.reset();
  return status;
}

int TableQueries::insert(const std::vector<Assignment>& values) {
  std::string parameters;
  for (std::size_t i = 0; i < values.size(); ++i) parameters += i == 0 ? "?" : ", ?";
  Statement& statement =
      prepared("INSERT INTO " + sqlName(m_table.name) + " (" + assignedList(m_table, values, "") +
               ") VALUES (" + parameters + ")");
  bindAll(statement, values);
  return change(statement, kRowIgnored);
}

int TableQueries::update(std::int64_t key, const std::vector<Assignment>& values) {
  Statement& statement =
      prepared("UPDATE " + sqlName(m_table.name) + " SET " + assignedList(m_table, values, " = ?") +
               " WHERE " + sqlName(m_table.keyColumn().name) + " = ?");
  bindAll(statement, values);
  statement.bind(static_cast<int>(values.size()) + 1, key);
  return change(statement, SQLITE_NOTFOUND);
}

int TableQueries::remove(std::int64_t key) {
  Statement& statement = prepared("DELETE FROM " + sqlName(m_table.name) + " WHERE " +
                                  sqlName(m_table.keyColumn().name) + " = ?");
  statement.bind(1, key);
  return change(statement, SQLITE_NOTFOUND);
}

int TableQueries::change(Statement& statement, int whenNone) {
  const int status = statement.run();
  if (status != SQLITE_OK) return status;
  return sqlite3_changes(m_connection.get()) > 0 ? SQLITE_OK : whenNone;
}

std::string walkSql(const TableDefinition& table, const ColumnDefinition* column) {
  std::string sql = selectSql(table);
  if (column != nullptr) sql += " WHERE " + sqlName(column->name) + " = ?";
  return sql + " ORDER BY " + sqlName(table.keyColumn().name);
}

}  // namespace EventSystemHost
