// Stands between a test program and SQLite: the program's own definitions of the functions that
// the audit import calls count handles, fail where a test says so, and otherwise go on to the real
// ones.
//
// Thread safety: none; used from one thread.

#ifndef EVENTSYSTEM_TESTS_SUPPORT_SQLITEPROBE_H
#define EVENTSYSTEM_TESTS_SUPPORT_SQLITEPROBE_H

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace EventSystemTest {

class SqliteProbe {
 public:
  static SqliteProbe& instance();

  // While one lives, calls are neither counted nor failed: for what tests themselves, and SQLite's
  // own functions among each other, do.
  class Pause {
   public:
    Pause() { ++instance().m_pauses; }
    ~Pause() { --instance().m_pauses; }
    Pause(const Pause&) = delete;
    Pause& operator=(const Pause&) = delete;
  };

  // Forgets counts and failures; handles that are open stay counted.
  void reset();

  // Makes the n-th (from 1) call of a function from now on return `result` without reaching
  // SQLite; sqlite3_open is made all the same, because it gives a handle also when it fails.
  // Functions: "open", "prepare", "step", "exec", "column_text" (which then gives NULL, as without
  // memory).
  void fail(const std::string& function, std::size_t nth, int result);

  std::size_t calls(const std::string& function) const;
  std::size_t totalCalls() const;
  // The n-th call of all counted ones fails with SQLITE_IOERR.
  void failNthOfAll(std::size_t nth);
  int openDatabases() const { return m_databases; }
  int openStatements() const { return m_statements; }
  int lastBusyTimeout() const { return m_busyTimeout; }
  // Whether the connection of the last prepare distrusts its file's schema.
  bool wasDefensive() const { return m_defensive; }
  // From now on SQLite waits for locks only this part of the time that it is told to.
  void divideBusyTimeout(int divisor) { m_busyTimeoutDivisor = divisor; }
  int busyTimeoutDivisor() const { return m_busyTimeoutDivisor; }

  // SQL text and length of the last prepare.
  const std::string& preparedSql() const { return m_preparedSql; }
  int preparedLength() const { return m_preparedLength; }
  // The statements that exec was given, in order, failed ones included.
  const std::vector<std::string>& executed() const { return m_executed; }

  // --- for the functions in between ---
  // Counts a call; the result to return instead of calling.
  std::optional<int> enter(const std::string& function);
  void noteDatabase(int change);
  void noteStatement(int change);
  void noteDefences(bool all) { m_defensive = all; }
  void noteBusyTimeout(int milliseconds) { m_busyTimeout = milliseconds; }
  void notePrepare(const char* sql, int length);
  void noteExec(const char* sql);

 private:
  std::map<std::string, std::size_t> m_calls;
  std::map<std::string, std::map<std::size_t, int> > m_failures;
  std::size_t m_total = 0;
  std::size_t m_failTotal = 0;
  int m_pauses = 0;
  int m_databases = 0;
  int m_statements = 0;
  int m_busyTimeout = 0;
  int m_busyTimeoutDivisor = 1;
  bool m_defensive = false;
  std::string m_preparedSql;
  int m_preparedLength = 0;
  std::vector<std::string> m_executed;
};

}  // namespace EventSystemTest

#endif
