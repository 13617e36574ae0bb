#include "host/database/Walk.h"

#include <utility>

#include "host/database/TableQueries.h"

namespace EventSystemHost {

Walk::Walk(ReaderPool& pool, const TableDefinition& table, std::optional<Assignment> filter)
    : m_pool(pool), m_table(table.name), m_filter(std::move(filter)), m_connection(pool.take()) {
  const ColumnDefinition* column = m_filter ? &table.columns[m_filter->column] : nullptr;
  m_statement = Statement(m_connection, walkSql(table, column));
  if (m_filter) m_statement.bind(1, m_filter->value);
}

Walk::~Walk() {
  finish();
}

int Walk::next(Row& row) {
  if (!m_statement) return m_abandoned ? SQLITE_ABORT : SQLITE_DONE;
  const int status = step(row);
  if (status == SQLITE_DONE) finish();
  if (status != SQLITE_ROW && status != SQLITE_DONE) abandon();
  return status;
}

int Walk::step(Row& row) {
  try {
    const int status = m_statement.step();
    if (status == SQLITE_ROW) m_statement.readRow(row);
    return status;
  } catch (const SqliteError& problem) {
    return problem.status();
  }
}

void Walk::finish() {
  m_statement = Statement();
  if (m_connection) m_pool.giveBack(std::move(m_connection));
}

void Walk::abandon() {
  m_abandoned = true;
  finish();
}

}  // namespace EventSystemHost
