#include "host/database/TableQueries.h"

#include <algorithm>
#include <utility>

namespace EventSystemHost {

namespace {

std::string selectSql(const TableDefinition& table) {
  return "SELECT " + columnList(table) + " FROM " + sqlName(table.name);
}

// "name = ?1, other = ?2": a column for each value, numbered as the values, that `wanted` wants.
template <class Wanted>
std::string assignmentList(const TableDefinition& table, const std::vector<Assignment>& values,
                           const char* separator, const Wanted& wanted) {
  std::string list;
  for (std::size_t i = 0; i < values.size(); ++i) {
    const ColumnDefinition& column = table.columns[values[i].column];
    if (!wanted(column)) continue;
    if (!list.empty()) list += separator;
    list += sqlName(column.name) + " = ?" + std::to_string(i + 1);
  }
  return list;
}

bool isIndexed(const ColumnDefinition& column) {
  return column.unique && !column.key;
}

bool assigns(const std::vector<std::size_t>& columns, const std::vector<Assignment>& values) {
  return std::equal(
      columns.begin(), columns.end(), values.begin(), values.end(),
      [](std::size_t column, const Assignment& value) { return column == value.column; });
}

// Resets a statement at the end of a scope, also when a row of it could not be read: one that
// stands on a row takes no new values.
class Resetting {
 public:
  explicit Resetting(Statement& statement) : m_statement(statement) {}
  ~Resetting() { m_statement.reset(); }
  Resetting(const Resetting&) = delete;
  Resetting& operator=(const Resetting&) = delete;

 private:
  Statement& m_statement;
};

void bindAll(Statement& statement, const std::vector<Assignment>& values) {
  int parameter = 0;
  for (const Assignment& value : values) statement.bind(++parameter, value.value);
}

}  // namespace

TableQueries::TableQueries(const Connection& connection, const TableDefinition& table)
    : m_connection(connection), m_table(table), m_selects(table.columns.size()) {}

TableQueries::Assigning& TableQueries::prepared(std::vector<Assigning>& known,
                                                const std::vector<Assignment>& values,
                                                Prepare prepare) {
  for (Assigning& one : known) {
    if (assigns(one.columns, values)) return one;
  }
  Assigning made;
  for (const Assignment& value : values) made.columns.push_back(value.column);
  (this->*prepare)(values, made);
  return known.emplace_back(std::move(made));
}

int TableQueries::select(std::size_t column, const Value& value, Row& row) {
  Statement& statement = m_selects[column];
  if (!statement) {
    const std::string name = sqlName(m_table.columns[column].name);
    statement = Statement(m_connection, selectSql(m_table) + " WHERE " + name + " = ?");
  }
  const Resetting resetting(statement);
  statement.bind(1, value);
  const int status = statement.step();
  if (status == SQLITE_ROW) statement.readRow(row);
  return status;
}

int TableQueries::insert(const std::vector<Assignment>& values) {
  Statement& statement = prepared(m_inserts, values, &TableQueries::prepareInsert).statement;
  bindAll(statement, values);
  return change(statement, kRowIgnored);
}

void TableQueries::prepareInsert(const std::vector<Assignment>& values, Assigning& made) {
  std::string columns;
  std::string parameters;
  for (const Assignment& value : values) {
    columns += (columns.empty() ? "" : ", ") + sqlName(m_table.columns[value.column].name);
    parameters += parameters.empty() ? "?" : ", ?";
  }
  made.statement = Statement(m_connection, "INSERT INTO " + sqlName(m_table.name) + " (" + columns +
                                               ") VALUES (" + parameters + ")");
}

int TableQueries::update(std::int64_t key, const std::vector<Assignment>& values) {
  Assigning& update = prepared(m_updates, values, &TableQueries::prepareUpdate);
  for (Statement* statement : {&update.others, &update.statement}) {
    if (!*statement) continue;
    bindAll(*statement, values);
    statement->bind(static_cast<int>(values.size()) + 1, key);
    const int status = change(*statement, SQLITE_NOTFOUND);
    if (status != SQLITE_NOTFOUND) return status;
  }
  return SQLITE_NOTFOUND;
}

// SQLite writes the index of an assigned column even where its value stays. `others` assigns to
// the other columns of a row whose indexed ones have their new values already.
void TableQueries::prepareUpdate(const std::vector<Assignment>& values, Assigning& made) {
  const std::string update = "UPDATE " + sqlName(m_table.name) + " SET ";
  const std::string where =
      " WHERE " + sqlName(m_table.keyColumn().name) + " = ?" + std::to_string(values.size() + 1);
  const auto any = [](const ColumnDefinition&) { return true; };
  made.statement =
      Statement(m_connection, update + assignmentList(m_table, values, ", ", any) + where);
  const auto plain = [](const ColumnDefinition& column) { return !isIndexed(column); };
  const std::string others = assignmentList(m_table, values, ", ", plain);
  const std::string same = assignmentList(m_table, values, " AND ", isIndexed);
  if (others.empty() || same.empty()) return;
  made.others = Statement(m_connection, update + others + where + " AND " + same);
}

int TableQueries::remove(std::int64_t key) {
  if (!m_remove) {
    m_remove = Statement(m_connection, "DELETE FROM " + sqlName(m_table.name) + " WHERE " +
                                           sqlName(m_table.keyColumn().name) + " = ?");
  }
  m_remove.bind(1, key);
  return change(m_remove, SQLITE_NOTFOUND);
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
