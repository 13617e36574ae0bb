// One run of moving the rows of the audit database, a SQLite file that off-line services leave
// behind, into a queue.
//
// Thread safety: none; used under EventManager's mutex. Other processes may hold the file: every
// wait is SQLite's own, 10 seconds at most.

#ifndef EVENTSYSTEM_SRC_BACKENDS_AUDITIMPORT_H
#define EVENTSYSTEM_SRC_BACKENDS_AUDITIMPORT_H

#include <sqlite3.h>

#include <memory>

#include "EventSystem/EventStorage.h"

namespace EventSystem {

class AuditImport {
 public:
  // `path` and `queue` must outlive the run.
  AuditImport(const char* path, EventStorage& queue) : m_path(path), m_queue(queue) {}

  // Writes every row as an AuditEvent into the queue, in `_id` order, and deletes the rows that
  // were read, those that failed included. A row of another type ends the run with nothing
  // deleted. Returns 0, or the code of the last failure.
  int run();

 private:
  enum class Rows { kRead, kAbandoned };

  bool hasRows() const;
  bool hasOddJournal() const;
  bool open();
  bool prepare();
  Rows readRows();
  bool takeRow();
  bool mayRetry(int step);
  void queueRow(const char* date, const char* content);
  // The row goes with the others: what it held is then in the log alone. A row that does not parse
  // is there already, in the line that says so.
  void keepInLog(const char* date, const char* content) const;
  void deleteRows();
  void close();

  struct CloseDatabase {
    void operator()(sqlite3* database) const { sqlite3_close(database); }
  };
  struct FinalizeStatement {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
  };

  const char* const m_path;
  EventStorage& m_queue;
  std::unique_ptr<sqlite3, CloseDatabase> m_database;
  std::unique_ptr<sqlite3_stmt, FinalizeStatement> m_statement;  // goes before its database
  char m_text[10240];
  int m_result = 0;
  int m_retries = 0;
  int m_rowId = 0;  // `_id` of the row read last
  unsigned int m_largestRowId = 0;
  unsigned long m_lastEventId = 0;
  unsigned long m_handled = 0;  // rows that this run is done with
  unsigned long m_toSkip = 0;   // of those, how many a restarted statement has yet to pass over
};

}  // namespace EventSystem

#endif
