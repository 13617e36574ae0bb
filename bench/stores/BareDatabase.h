// SQLite used by hand, as well as one can: the same columns, the same durability, every statement
// prepared once, nothing else.
//
// Thread safety: none.

#ifndef EVENTSYSTEM_BENCH_STORES_BAREDATABASE_H
#define EVENTSYSTEM_BENCH_STORES_BAREDATABASE_H

#include <sqlite3.h>

#include <filesystem>
#include <memory>
#include <string>

namespace EventSystemBench {

class BareDatabase {
 public:
  enum class Flush { kEachCommit, kNone };

  // Opens the file, and creates the tables of a queue where they are missing.
  BareDatabase(const std::filesystem::path& file, Flush flush);

  // One row, one transaction.
  void insert(const std::string& eventString);
  // The same with the highest id in the same transaction.
  void insertWithMaxId(const std::string& eventString);
  void remove(long id);
  // The first row after the id, its text copied; the row's id, or 0.
  long next(long afterId, char* text, int size);
  // Reads every column of every row; the sum of what it read.
  unsigned long scan();
  // Rows 1 to `count`, and the highest id.
  void fill(long count, const std::string& eventString);

  long lastId() const { return m_lastId; }

 private:
  struct Close {
    void operator()(sqlite3* database) const { sqlite3_close_v2(database); }
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
  };
  using Statement = std::unique_ptr<sqlite3_stmt, Close>;

  void execute(const std::string& sql);
  Statement prepare(const char* sql);
  void run(const Statement& statement);
  void bindRow(long id, const std::string& eventString);

  std::unique_ptr<sqlite3, Close> m_database;
  Statement m_begin;
  Statement m_commit;
  Statement m_insert;
  Statement m_maxId;
  Statement m_remove;
  Statement m_next;
  Statement m_scan;
  long m_lastId = 0;
};

// Opens an audit database, asks it for its rows, of which it has none, and closes it.
void lookForAuditRows(const std::filesystem::path& file);

}  // namespace EventSystemBench

#endif
