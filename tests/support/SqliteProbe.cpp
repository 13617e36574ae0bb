#include "tests/support/SqliteProbe.h"

#include <dlfcn.h>
#include <sqlite3.h>

namespace EventSystemTest {

SqliteProbe& SqliteProbe::instance() {
  static SqliteProbe probe;
  return probe;
}

void SqliteProbe::reset() {
  m_calls.clear();
  m_failures.clear();
  m_total = 0;
  m_failTotal = 0;
  m_preparedSql.clear();
  m_preparedLength = 0;
  m_executed.clear();
  m_busyTimeout = 0;
  m_busyTimeoutDivisor = 1;
}

void SqliteProbe::fail(const std::string& function, std::size_t nth, int result) {
  m_failures[function][m_calls[function] + nth] = result;
}

void SqliteProbe::failNthOfAll(std::size_t nth) {
  m_failTotal = m_total + nth;
}

std::size_t SqliteProbe::calls(const std::string& function) const {
  const auto found = m_calls.find(function);
  return found == m_calls.end() ? 0 : found->second;
}

std::size_t SqliteProbe::totalCalls() const {
  return m_total;
}

std::optional<int> SqliteProbe::enter(const std::string& function) {
  if (m_pauses > 0) return std::nullopt;
  const std::size_t call = ++m_calls[function];
  if (++m_total == m_failTotal) return SQLITE_IOERR;
  const auto failure = m_failures[function].find(call);
  if (failure == m_failures[function].end()) return std::nullopt;
  return failure->second;
}

void SqliteProbe::noteDatabase(int change) {
  if (m_pauses == 0) m_databases += change;
}

void SqliteProbe::noteStatement(int change) {
  if (m_pauses == 0) m_statements += change;
}

void SqliteProbe::noteExec(const char* sql) {
  if (m_pauses == 0) m_executed.push_back(sql);
}

void SqliteProbe::notePrepare(const char* sql, int length) {
  if (m_pauses > 0) return;
  m_preparedSql = sql;
  m_preparedLength = length;
}

}  // namespace EventSystemTest

namespace {

using EventSystemTest::SqliteProbe;

// SQLite's own function of that name.
template <typename Function>
Function real(const char* name) {
  return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

SqliteProbe& probe() {
  return SqliteProbe::instance();
}

// Calls SQLite; what it calls of its own exported functions meanwhile is not counted.
template <typename Function, typename... Arguments>
int paused(Function function, Arguments... arguments) {
  const SqliteProbe::Pause pause;
  return function(arguments...);
}

// A setting of the connection.
bool isOn(sqlite3* database, int setting) {
  int value = 0;
  sqlite3_db_config(database, setting, -1, &value);
  return value != 0;
}

}  // namespace

#define EVENTSYSTEM_TEST_REAL(name) static const auto next = real<decltype(&name)>(#name)

#pragma GCC visibility push(default)
extern "C" {

int sqlite3_open(const char* path, sqlite3** database) {
  EVENTSYSTEM_TEST_REAL(sqlite3_open);
  const std::optional<int> failure = probe().enter("open");
  const int result = paused(next, path, database);
  if (*database != nullptr) probe().noteDatabase(1);
  return failure.value_or(result);
}

int sqlite3_close(sqlite3* database) {
  EVENTSYSTEM_TEST_REAL(sqlite3_close);
  const int result = paused(next, database);
  if (database != nullptr && result == SQLITE_OK) probe().noteDatabase(-1);
  return result;
}

int sqlite3_busy_timeout(sqlite3* database, int milliseconds) {
  EVENTSYSTEM_TEST_REAL(sqlite3_busy_timeout);
  probe().noteBusyTimeout(milliseconds);
  return paused(next, database, milliseconds / probe().busyTimeoutDivisor());
}

int sqlite3_prepare_v2(sqlite3* database, const char* sql, int length, sqlite3_stmt** statement,
                       const char** tail) {
  EVENTSYSTEM_TEST_REAL(sqlite3_prepare_v2);
  probe().notePrepare(sql, length);
  probe().noteDefences(isOn(database, SQLITE_DBCONFIG_DEFENSIVE) &&
                       !isOn(database, SQLITE_DBCONFIG_TRUSTED_SCHEMA) &&
                       !isOn(database, SQLITE_DBCONFIG_ENABLE_VIEW));
  const std::optional<int> failure = probe().enter("prepare");
  if (failure) {
    *statement = nullptr;
    return *failure;
  }
  const int result = paused(next, database, sql, length, statement, tail);
  if (*statement != nullptr) probe().noteStatement(1);
  return result;
}

int sqlite3_step(sqlite3_stmt* statement) {
  EVENTSYSTEM_TEST_REAL(sqlite3_step);
  const std::optional<int> failure = probe().enter("step");
  return failure ? *failure : paused(next, statement);
}

const unsigned char* sqlite3_column_text(sqlite3_stmt* statement, int column) {
  EVENTSYSTEM_TEST_REAL(sqlite3_column_text);
  if (probe().enter("column_text")) return nullptr;
  const SqliteProbe::Pause pause;
  return next(statement, column);
}

int sqlite3_finalize(sqlite3_stmt* statement) {
  EVENTSYSTEM_TEST_REAL(sqlite3_finalize);
  if (statement != nullptr) probe().noteStatement(-1);
  return paused(next, statement);
}

int sqlite3_exec(sqlite3* database, const char* sql, int (*callback)(void*, int, char**, char**),
                 void* context, char** error) {
  EVENTSYSTEM_TEST_REAL(sqlite3_exec);
  probe().noteExec(sql);
  const std::optional<int> failure = probe().enter("exec");
  if (!failure) return paused(next, database, sql, callback, context, error);
  if (error != nullptr) *error = sqlite3_mprintf("scripted failure");
  return *failure;
}

}  // extern "C"
#pragma GCC visibility pop
