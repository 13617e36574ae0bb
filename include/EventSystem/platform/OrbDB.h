// The configuration database, as the library needs it from its host. Declarations only: the host
// defines every member; docs/host-contract.md says how.
//
// Thread safety: the library calls all of this under one mutex (EventManager's) or during
// construction; a host that calls it too must make its own implementation safe for that.
// Any call may throw; the library takes that as a failure of the call.

#ifndef EVENTSYSTEM_PLATFORM_ORBDB_H
#define EVENTSYSTEM_PLATFORM_ORBDB_H

#include <vector>

#include "EventSystem/Export.h"

namespace OrbDB {

// One column value of a table handle's current row. Owned by that handle and valid until its
// current row changes or the handle is destroyed.
class EVENTSYSTEM_HOST_API CColumn {
 public:
  struct Impl;

  explicit CColumn(Impl*);
  ~CColumn();

  CColumn(const CColumn&) = delete;
  CColumn& operator=(const CColumn&) = delete;

  // The column's name, as the table definition spells it.
  const char* name() const;

  // The value as a 64-bit number, a 32-bit number, or text. 0 on success; otherwise the output is
  // left alone. Text is cut to `size` bytes, terminator included.
  int GetDataBigInt(long& value) const;
  int GetDataInt(int& value) const;
  int GetDataStr(char* buffer, unsigned int size) const;

 private:
  Impl* m_impl;
};

// A handle to one table, with a current row and a walk of its own. The library takes a copy for
// each operation and destroys it when the operation ends.
//
// Keys are the decimal text of the table's key column. A record is either positional,
// `1,1,5,1700000000,"text"`, one field for each column in order, or named,
// `propname=maxid,propvalue=7`. Text fields come through QMStringEscapeA().
class EVENTSYSTEM_HOST_API CTable {
 public:
  struct Impl;

  explicit CTable(Impl*);
  CTable(const CTable&);  // neither the current row nor the walk is copied
  ~CTable();

  CTable& operator=(const CTable&) = delete;

  // Makes the row with this key current. 0 on success.
  int readRecord(const char* key);

  // Columns of the current row; at most `size` bytes, always terminated. 0 on success; otherwise
  // a number is left alone.
  int GetValStr(const char* column, char* buffer, unsigned int size);
  int GetValBigInt(const char* column, long& value);
  int GetValInt(const char* column, int& value);

  // A column of the row with this key, without making that row current. 0 on success; otherwise
  // `value` is left alone.
  int GetValBigInt(const char* key, const char* column, long& value);

  // Appends a row. Below 1 is success, a positive result a database status. Where the table
  // numbers its rows itself, the number goes to `*key` unless that is NULL. `flags` is 0.
  int addRecord(const char* record, int* key, unsigned int flags);

  // Rewrites the columns named in a named record. Positive: failure; nothing was changed.
  int updateRecord(const char* key, const char* assignments);

  // 0 on success.
  int deleteRecord(const char* key);

  // Walks the rows that match `column=value`, all rows for NULL, in key order. 0 while a row is
  // current, non-zero when there is no (further) row. The walk sees the table as it was when it
  // started. The second form also fills the vector with the current row's columns.
  int ListRecordsStart(const char* filter);
  int ListRecordsNext(const char* filter);
  int ListRecordsStart(std::vector<CColumn*>& columns, const char* filter);
  int ListRecordsNext(std::vector<CColumn*>& columns, const char* filter);

  // A column of the current row, or NULL when there is none of that name.
  CColumn* getcolumn(const char* name);

 private:
  Impl* m_impl;
};

// The process-wide database.
class EVENTSYSTEM_HOST_API COrbDatabase {
 public:
  static COrbDatabase& Instance();

  // Owned by the database; NULL when the table does not exist. Must answer before open() too.
  CTable* GetTable(const char* name);

  // Creates the table as the ini file defines it. 0 on success.
  int CheckAddTable(const char* name, const char* iniPath);

  // Inserts the table's initial rows that the ini file lists. 0 on success.
  int insertRecordsFromIni(const char* name, const char* iniPath);

  // 0 when the database is open.
  int open();
};

}  // namespace OrbDB

#endif
