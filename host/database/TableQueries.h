// The statements of one table on one connection, prepared when first used and kept.
//
// Thread safety: as Connection.

#ifndef EVENTSYSTEM_HOST_DATABASE_TABLEQUERIES_H
#define EVENTSYSTEM_HOST_DATABASE_TABLEQUERIES_H

#include <cstddef>
#include <string>
#include <vector>

#include "host/database/Record.h"
#include "host/database/Sqlite.h"
#include "host/database/TableDefinition.h"

namespace EventSystemHost {

// The status of an insert that succeeded and added no row; SQLite has none of its own for it.
constexpr int kRowIgnored = SQLITE_CONSTRAINT | (255 << 8);

class TableQueries {
 public:
  // Both must outlive it.
  TableQueries(const Connection& connection, const TableDefinition& table);

  // SQLITE_ROW when there is such a row, SQLITE_DONE when there is none, or a failure's status.
  // `column` is a key or unique.
  int select(std::size_t column, const Value& value, Row& row);

  // SQLITE_OK or a status; kRowIgnored when nothing was added.
  int insert(const std::vector<Assignment>& values);

  // SQLITE_OK or a status; SQLITE_NOTFOUND when there is no row with the key.
  int update(std::int64_t key, const std::vector<Assignment>& values);
  int remove(std::int64_t key);

 private:
  // A statement that assigns to these columns, in this order.
  struct Assigning {
    std::vector<std::size_t> columns;
    Statement statement;
    Statement others;  // of an update; see update()
  };
  using Prepare = void (TableQueries::*)(const std::vector<Assignment>& values, Assigning& made);

  Assigning& prepared(std::vector<Assigning>& known, const std::vector<Assignment>& values,
                      Prepare prepare);
  void prepareInsert(const std::vector<Assignment>& values, Assigning& made);
  void prepareUpdate(const std::vector<Assignment>& values, Assigning& made);
  int change(Statement& statement, int whenNone);

  const Connection& m_connection;
  const TableDefinition& m_table;
  std::vector<Statement> m_selects;  // by column
  std::vector<Assigning> m_inserts;
  std::vector<Assigning> m_updates;
  Statement m_remove;
};

// The rows of a table in the order of its key; with `column`, those where it equals parameter 1.
std::string walkSql(const TableDefinition& table, const ColumnDefinition* column);

}  // namespace EventSystemHost

#endif
