#include "host/database/Sqlite.h"

namespace EventSystemHost {

namespace {

// The value as SQLite holds it is looked up once: it is not safe for several threads, but neither
// is the connection.
void readValue(sqlite3_stmt* statement, int column, Value& value) {
  sqlite3_value* const held = sqlite3_column_value(statement, column);
  switch (sqlite3_value_type(held)) {
    case SQLITE_NULL:
      value = std::monostate();
      return;
    case SQLITE_INTEGER:
      value = static_cast<std::int64_t>(sqlite3_value_int64(held));
      return;
    default:
      break;
  }
  const void* bytes = sqlite3_value_blob(held);
  const auto length = static_cast<std::size_t>(sqlite3_value_bytes(held));
  // An empty value has no bytes either; one that memory is missing for is none from here on.
  const bool isLost = length > 0 || sqlite3_value_type(held) == SQLITE_NULL;
  if (bytes == nullptr && isLost) throw SqliteError(SQLITE_NOMEM, sqlite3_errstr(SQLITE_NOMEM));
  if (!std::holds_alternative<std::string>(value)) value = std::string();
  std::get<std::string>(value).assign(bytes == nullptr ? "" : static_cast<const char*>(bytes),
                                      length);
}

}  // namespace

bool saysDamage(int status) {
  switch (status) {
    case SQLITE_IOERR_READ:
    case SQLITE_IOERR_SHORT_READ:
    case SQLITE_IOERR_DATA:
    case SQLITE_IOERR_CORRUPTFS:
      return true;
    default:
      return primaryStatus(status) == SQLITE_CORRUPT || primaryStatus(status) == SQLITE_NOTADB;
  }
}

Statement::Statement(const Connection& connection, const std::string& sql) {
  sqlite3_stmt* statement = nullptr;
  const int status =
      sqlite3_prepare_v3(connection.get(), sql.c_str(), static_cast<int>(sql.size()) + 1,
                         SQLITE_PREPARE_PERSISTENT, &statement, nullptr);
  m_statement.reset(statement);
  if (status != SQLITE_OK) throw SqliteError(status, connection.errorText());
}

void Statement::bind(int parameter, const Value& value) {
  const int status = tryBinding(parameter, value);
  if (status != SQLITE_OK) throw SqliteError(status, sqlite3_errstr(status));
}

int Statement::tryBinding(int parameter, const Value& value) {
  sqlite3_stmt* const statement = m_statement.get();
  if (const auto* number = std::get_if<std::int64_t>(&value)) {
    return sqlite3_bind_int64(statement, parameter, *number);
  }
  if (const auto* text = std::get_if<std::string>(&value)) {
    return sqlite3_bind_text64(statement, parameter, text->data(), text->size(), SQLITE_STATIC,
                               SQLITE_UTF8);
  }
  return sqlite3_bind_null(statement, parameter);
}

int Statement::step() {
  return sqlite3_step(m_statement.get());
}

void Statement::reset() {
  sqlite3_reset(m_statement.get());
  sqlite3_clear_bindings(m_statement.get());
}

int Statement::run() {
  int status = step();
  while (status == SQLITE_ROW) status = step();
  reset();
  return status == SQLITE_DONE ? SQLITE_OK : status;
}

void Statement::readRow(Row& row) const {
  const int columns = sqlite3_column_count(m_statement.get());
  row.resize(static_cast<std::size_t>(columns));
  for (int i = 0; i < columns; ++i) {
    readValue(m_statement.get(), i, row[static_cast<std::size_t>(i)]);
  }
}

std::int64_t Statement::number(int column) const {
  return sqlite3_column_int64(m_statement.get(), column);
}

std::string Statement::text(int column) const {
  Value value = std::string();
  readValue(m_statement.get(), column, value);
  if (const auto* text = std::get_if<std::string>(&value)) return *text;
  const auto number = asNumber(value);
  return number ? std::to_string(*number) : std::string();
}

Connection::Connection(const std::filesystem::path& file, int flags) {
  sqlite3* connection = nullptr;
  const int status =
      sqlite3_open_v2(file.c_str(), &connection, flags | SQLITE_OPEN_NOMUTEX, nullptr);
  m_connection.reset(connection);
  if (status != SQLITE_OK) {
    throw SqliteError(status, connection == nullptr ? "no memory" : errorText());
  }
  sqlite3_extended_result_codes(connection, 1);
}

int Connection::execute(const std::string& sql) const {
  return sqlite3_exec(m_connection.get(), sql.c_str(), nullptr, nullptr, nullptr);
}

void Connection::require(const std::string& sql) const {
  const int status = execute(sql);
  if (status != SQLITE_OK) throw SqliteError(status, errorText());
}

std::int64_t Connection::number(const std::string& sql) const {
  Statement statement(*this, sql);
  requireRow(statement);
  const std::int64_t value = statement.number(0);
  requireEnd(statement);
  return value;
}

std::string Connection::text(const std::string& sql) const {
  Statement statement(*this, sql);
  requireRow(statement);
  std::string value = statement.text(0);
  requireEnd(statement);
  return value;
}

void Connection::requireRow(Statement& statement) const {
  const int status = statement.step();
  if (status != SQLITE_ROW) throw SqliteError(status, errorText());
}

// A statement that gives a row may do its work, and fail, only behind it.
void Connection::requireEnd(Statement& statement) const {
  int status = statement.step();
  while (status == SQLITE_ROW) status = statement.step();
  if (status != SQLITE_DONE) throw SqliteError(status, errorText());
}

}  // namespace EventSystemHost
