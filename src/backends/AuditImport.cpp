#include "AuditImport.h"

#include <algorithm>
#include <boost/filesystem.hpp>
#include <cstdio>
#include <cstring>
#include <string>

#include "EventSystem/AuditEvent.h"
#include "EventSystem/ResultCode.h"
#include "EventSystem/platform/HostLog.h"

namespace EventSystem {
namespace {

constexpr char kFunction[] = "PopuAuditEventDB";
constexpr char kQuery[] = "SELECT _id,date_created, content,etype FROM event order by _id ";
static_assert(sizeof kQuery == 64);

enum Column { kRowId, kDateCreated, kContent, kType };

constexpr int kBusyTimeout = 10000;  // milliseconds
constexpr int kMaxRetries = 2;
constexpr int kDeleteAttempts = 3;

// A column's text; NULL for a null. Where memory is short, a text that has to be converted is also
// given as NULL: `readable` is false then.
const char* columnText(sqlite3_stmt* statement, Column column, bool& readable) {
  const bool isNull = sqlite3_column_type(statement, column) == SQLITE_NULL;
  const unsigned char* const text = sqlite3_column_text(statement, column);
  if (text == nullptr && !isNull) readable = false;
  return reinterpret_cast<const char*>(text);
}

// What SQLite offers against files of unknown origin. A view in place of the table could have rows
// without end, and keep them all: nothing can be deleted from it.
void distrustSchema(sqlite3* database) {
  sqlite3_db_config(database, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
  sqlite3_db_config(database, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
  sqlite3_db_config(database, SQLITE_DBCONFIG_ENABLE_VIEW, 0, nullptr);
}

const char* orNull(const char* text) {
  return text == nullptr ? "(null)" : text;
}

}  // namespace

int AuditImport::run() {
  if (!hasRows()) return kSuccess;
  if (!open() || !prepare()) return kStoreFailure;
  if (readRows() == Rows::kRead && m_largestRowId != 0) deleteRows();
  close();
  return m_result;
}

bool AuditImport::hasRows() const {
  if (*m_path == '\0') return true;
  namespace fs = boost::filesystem;
  boost::system::error_code error;
  if (fs::status(m_path, error).type() < fs::regular_file) {
    if (TraceOn()) __Trace("%s:sqlite3 db file not exists yet: %s", kFunction, m_path);
    return false;
  }
  if (fs::is_empty(m_path, error)) {
    if (TraceOn()) __Trace("%s:sqlite3 db file has no table inited: %s", kFunction, m_path);
    return false;
  }
  return true;
}

// SQLite would open a pipe that stands there, and wait for its other end without a limit.
bool AuditImport::hasOddJournal() const {
  namespace fs = boost::filesystem;
  boost::system::error_code error;
  return fs::status(std::string(m_path) + "-journal", error).type() > fs::regular_file;
}

bool AuditImport::open() {
  sqlite3* database = nullptr;
  const int result = hasOddJournal() ? SQLITE_CANTOPEN : sqlite3_open(m_path, &database);
  m_database.reset(database);
  if (result != SQLITE_OK) {
    ErrorA(kStoreFailure, "%s: faile to open file (%s) ", kFunction, m_path);
    return false;
  }
  sqlite3_busy_timeout(database, kBusyTimeout);
  distrustSchema(database);
  return true;
}

bool AuditImport::prepare() {
  sqlite3_stmt* statement = nullptr;
  const int result =
      sqlite3_prepare_v2(m_database.get(), kQuery, sizeof kQuery, &statement, nullptr);
  m_statement.reset(statement);
  if (result == SQLITE_OK) return true;
  ErrorA(kStoreFailure, "%s: DB[%s] failed to prepare SQL[%s] (%s):%s.", kFunction, m_path, kQuery,
         sqlite3_errstr(result), sqlite3_errmsg(m_database.get()));
  return false;
}

AuditImport::Rows AuditImport::readRows() {
  for (;;) {
    const int step = sqlite3_step(m_statement.get());
    if (step == SQLITE_DONE || step == SQLITE_OK) return Rows::kRead;
    const bool goOn = step == SQLITE_ROW ? takeRow() : mayRetry(step);
    if (!goOn) return Rows::kAbandoned;
  }
}

bool AuditImport::takeRow() {
  if (m_toSkip > 0) {
    --m_toSkip;
    return true;
  }
  m_rowId = sqlite3_column_int(m_statement.get(), kRowId);
  m_largestRowId = std::max(m_largestRowId, static_cast<unsigned int>(m_rowId));
  bool readable = true;
  const char* const date = columnText(m_statement.get(), kDateCreated, readable);
  const char* const content = columnText(m_statement.get(), kContent, readable);
  if (!readable) return mayRetry(SQLITE_NOMEM);
  const int type = sqlite3_column_int(m_statement.get(), kType);
  if (TraceOn()) {
    __Trace("%s:id:%d,date_created:%s,content:%s,etype:%d", kFunction, m_rowId, orNull(date),
            orNull(content), type);
  }
  if (content == nullptr || date == nullptr) {
    ErrorA(m_result, "%s:eventid %d content is empty.", kFunction, m_rowId);
    if (content != date) keepInLog(date, content);
  } else if (type != kAuditEvent) {
    ErrorA(m_result, "%s:only audit event is supported, wrong: %d.", kFunction, type);
    return false;
  } else {
    queueRow(date, content);
  }
  ++m_handled;
  return true;
}

void AuditImport::queueRow(const char* date, const char* content) {
  memset(m_text, 0, sizeof m_text);
  const int length = snprintf(
      m_text, sizeof m_text, "EVENT{version:1;type:8;id:0;date:%s;AUDITEVENT{%s;}}", date, content);
  if (length < 0 || static_cast<unsigned long>(length) >= sizeof m_text) {
    WarningA(kStoreFailure, "%s AUDITEVENT string is too long %d than buffer size:%d", kFunction,
             length, static_cast<int>(sizeof m_text));
  }
  Event* parsed = nullptr;
  m_result = AuditEvent::fromString(m_text, &parsed);
  const std::unique_ptr<Event> event(parsed);
  if (m_result != kSuccess) {
    ErrorA(m_result, "%s:eventid %d failed fromString:%s.", kFunction, m_rowId, content);
  } else {
    m_result = m_queue.writeEvent(event.get());
    m_lastEventId = event == nullptr ? 0 : event->getId();
    if (m_result != kSuccess) keepInLog(date, content);
  }
  // Written for a row that did not parse too: operators count these lines.
  if (m_result != kSuccess) {
    ErrorA(m_result, "%s:eventid %d failed writeEvent: %d.", kFunction, m_rowId, m_result);
  }
}

void AuditImport::keepInLog(const char* date, const char* content) const {
  ErrorA(m_result, "%s:eventid %d is not queued, date_created:%s,content:%s", kFunction, m_rowId,
         orNull(date), orNull(content));
}

bool AuditImport::mayRetry(int step) {
  ++m_retries;
  m_result = kStoreFailure;
  ErrorA(kStoreFailure,
         "%s:pop sqlite to orbdb ,eventid %d failed: %d:%s(0 means read from sqlite "
         "failed),retrySelect:%d",
         kFunction, m_rowId, step, sqlite3_errmsg(m_database.get()), m_retries);
  if (m_retries > kMaxRetries) return false;
  // The statement starts over; what this run has handled must not be queued again.
  sqlite3_reset(m_statement.get());
  m_toSkip = m_handled;
  return true;
}

void AuditImport::deleteRows() {
  InfoA(kSuccess, "%s audit events found till Number: %d,MaxNewEventid: %d.", kFunction,
        static_cast<int>(m_largestRowId), static_cast<int>(m_lastEventId));
  memset(m_text, 0, sizeof m_text);
  snprintf(m_text, sizeof m_text, "delete from event where _id <= %d",
           static_cast<int>(m_largestRowId));
  for (int attempt = 0; attempt < kDeleteAttempts; ++attempt) {
    char* error = nullptr;
    const int result = sqlite3_exec(m_database.get(), m_text, nullptr, nullptr, &error);
    const std::unique_ptr<char, void (*)(void*)> message(error, sqlite3_free);
    if (result == SQLITE_OK) return;
    m_result = kStoreFailure;
    ErrorA(kStoreFailure, "%s:SQL error deleteing:  %s .retryDelete:%d", kFunction,
           sqlite3_errmsg(m_database.get()), attempt);
  }
}

void AuditImport::close() {
  m_statement.reset();
  m_database.reset();
  if (TraceOn()) __Trace("%s exit.", kFunction);
}

}  // namespace EventSystem
