// A walk over a table's rows in key order, as the table was when the walk started.
//
// Thread safety: none; the database's mutex guards it.

#ifndef EVENTSYSTEM_HOST_DATABASE_WALK_H
#define EVENTSYSTEM_HOST_DATABASE_WALK_H

#include <optional>
#include <string>

#include "host/database/ReaderPool.h"
#include "host/database/Record.h"
#include "host/database/Sqlite.h"
#include "host/database/TableDefinition.h"

namespace EventSystemHost {

class Walk {
 public:
  // Takes a connection from the pool, which must outlive the walk or its finish().
  Walk(ReaderPool& pool, const TableDefinition& table, std::optional<Assignment> filter);
  ~Walk();

  Walk(const Walk&) = delete;
  Walk& operator=(const Walk&) = delete;

  // SQLITE_ROW with the next row; SQLITE_DONE after the last one; SQLITE_ABORT when the walk was
  // abandoned; otherwise a failure's status.
  int next(Row& row);

  // Gives the connection back; there are no further rows.
  void finish();

  // The same, because the database is closed or opened anew, which is told as a failure.
  void abandon();

  const std::string& table() const { return m_table; }

 private:
  int step(Row& row);

  ReaderPool& m_pool;
  const std::string m_table;
  std::optional<Assignment> m_filter;
  Connection m_connection;
  Statement m_statement;
  bool m_abandoned = false;
};

}  // namespace EventSystemHost

#endif
