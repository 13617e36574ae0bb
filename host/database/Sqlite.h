// A connection to a SQLite database and a prepared statement, each closed by its owner's end.
//
// Thread safety: none; a connection and its statements are used by one thread at a time.

#ifndef EVENTSYSTEM_HOST_DATABASE_SQLITE_H
#define EVENTSYSTEM_HOST_DATABASE_SQLITE_H

#include <sqlite3.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>

#include "host/database/Value.h"

namespace EventSystemHost {

// A SQLite status with SQLite's own words for it.
class SqliteError : public std::runtime_error {
 public:
  SqliteError(int status, const std::string& what) : std::runtime_error(what), m_status(status) {}
  int status() const { return m_status; }

 private:
  int m_status;
};

class Connection;

class Statement {
 public:
  Statement() = default;  // holds nothing

  // Throws SqliteError.
  Statement(const Connection& connection, const std::string& sql);

  explicit operator bool() const { return m_statement != nullptr; }

  // Parameters count from 1. Text is not copied: the value must outlive the next step().
  void bind(int parameter, const Value& value);

  // SQLITE_ROW, SQLITE_DONE, or a failure's extended status.
  int step();

  // Makes it ready for another run; its read transaction ends.
  void reset();

  // One run of a statement that gives no rows: SQLITE_OK or a status.
  int run();

  // Copies the current row; `row` keeps its buffers from one row to the next.
  void readRow(Row& row) const;
  std::int64_t number(int column) const;
  std::string text(int column) const;

 private:
  struct Finalizer {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
  };
  std::unique_ptr<sqlite3_stmt, Finalizer> m_statement;
};

class Connection {
 public:
  Connection() = default;  // holds nothing

  // Throws SqliteError.
  Connection(const std::filesystem::path& file, int flags);

  explicit operator bool() const { return m_connection != nullptr; }
  sqlite3* get() const { return m_connection.get(); }

  // SQLITE_OK or a failure's extended status.
  int execute(const std::string& sql) const;

  // The same; throws SqliteError.
  void require(const std::string& sql) const;

  // The first value of the first row. Throws SqliteError.
  std::int64_t number(const std::string& sql) const;
  std::string text(const std::string& sql) const;

  // Whether no transaction is open.
  bool idle() const { return sqlite3_get_autocommit(m_connection.get()) != 0; }

  // SQLite's words for the last failure.
  std::string errorText() const { return sqlite3_errmsg(m_connection.get()); }

 private:
  void requireRow(Statement& statement) const;
  void requireEnd(Statement& statement) const;

  struct Closer {
    void operator()(sqlite3* connection) const { sqlite3_close_v2(connection); }
  };
  std::unique_ptr<sqlite3, Closer> m_connection;
};

// The part of a status that says what kind of failure it is.
inline int primaryStatus(int status) {
  return status & 0xff;
}

// Whether what is stored in the file cannot be read, so that a row may be there and not be found.
bool saysDamage(int status);

// What an operator does about it.
inline constexpr char kDamageAdvice[] =
    "Stop all programs that write, keep the file and its -wal, and put a backup in its place with "
    "eventctl restore, or what sqlite3's .recover saves";

// Whether a file operation failed that is worth another attempt with the file opened anew.
inline bool saysFailedOperation(int status) {
  return primaryStatus(status) == SQLITE_IOERR && !saysDamage(status);
}

}  // namespace EventSystemHost

#endif
