// A table of the host's database for the length of one operation of a store. The handle is
// released on every path, and a call that throws counts as that one call failing: it is logged,
// and the operation goes on as for a failing result.
//
// Thread safety: none; used under EventManager's mutex.

#ifndef EVENTSYSTEM_SRC_BACKENDS_DATABASETABLE_H
#define EVENTSYSTEM_SRC_BACKENDS_DATABASETABLE_H

#include <optional>
#include <vector>

#include "EventSystem/platform/OrbDB.h"

namespace EventSystem {

using Columns = std::vector<OrbDB::CColumn*>;

class DatabaseTable {
 public:
  // Takes a handle to the table. `operation` is the store's function that log lines name; both
  // texts must outlive the object.
  DatabaseTable(const char* name, const char* operation);

  // Whether the table exists; nothing else may be called when it does not.
  explicit operator bool() const { return m_table.has_value(); }

  // Each returns what the database returned; non-zero (positive for the two that change a row
  // by text) where the call threw.
  int readRecord(unsigned long id);
  int deleteRecord(unsigned long id);
  int addRecord(const char* record, int* key);
  int updateRecord(const char* key, const char* assignments);

  // Columns of the current row; 0 on success, otherwise the output is left alone.
  int getText(const char* column, char* buffer, unsigned int size);
  int getNumber(const char* column, long& value);
  int getNumber(const char* column, int& value);
  // A column of the row with this key; kNoAnswer when the call threw, which says nothing of the
  // row.
  static constexpr int kNoAnswer = -1;
  int getNumber(const char* key, const char* column, long& value);

  // A column of the current row read as an unsigned decimal text; `value` is left alone where the
  // row lacks the column. False, with a log line, where the column is there but cannot be read.
  template <class Unsigned>
  bool getDecimal(const char* column, Unsigned& value);

  // A walk over the rows that match the filter (NULL: all): true while a row is current.
  bool firstRow(const char* filter);
  bool nextRow(const char* filter);
  // A walk over all rows that also gives each row's columns.
  bool firstRow(Columns& columns);
  bool nextRow(Columns& columns);

 private:
  const char* m_operation;
  std::optional<OrbDB::CTable> m_table;
};

// Columns of a walk's row; false where the value cannot be read, which leaves the output alone.
bool getNumber(const OrbDB::CColumn& column, long& value, const char* operation);
bool getNumber(const OrbDB::CColumn& column, int& value, const char* operation);
bool getText(const OrbDB::CColumn& column, char* buffer, unsigned int size, const char* operation);

bool databaseHasTable(const char* name, const char* operation);

// Each returns whether it worked.
bool createTable(const char* name, const char* iniPath, const char* operation);
bool insertInitialRows(const char* name, const char* iniPath, const char* operation);
bool openDatabase(const char* operation);

// The path of "orbdb.ini" in the host's database configuration directory; false when the host has
// no such directory.
bool locateDatabaseIni(char (&path)[4096]);

// "directory/file", cut to the room there is.
void joinPath(char (&path)[4096], const char* directory, const char* file);

}  // namespace EventSystem

#endif
