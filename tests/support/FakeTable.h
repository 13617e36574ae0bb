// A table of the fake host's database: typed columns, rows by key, automatic numbers, and records
// in the two text forms that the host contract knows.
//
// Thread safety: none; the fake host locks around it.

#ifndef EVENTSYSTEM_TESTS_SUPPORT_FAKETABLE_H
#define EVENTSYSTEM_TESTS_SUPPORT_FAKETABLE_H

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace EventSystemTest {

enum class ColumnType { kNumber, kText };

struct FakeColumn {
  std::string name;
  ColumnType type = ColumnType::kNumber;
};

// One value of a row.
struct FakeCell {
  std::string text;
  bool readable = true;  // false: the column is there, but every read of it fails
};

// By column name; a column that is not in the map is missing from the row.
typedef std::map<std::string, FakeCell> FakeRow;

// A record taken apart: fields with their outer quotes removed and inner ones single again.
// Nothing when a quoted field is not closed or goes on after its closing quote.
std::optional<std::vector<std::string> > splitRecord(const std::string& record);

// Whether a record ends within a quoted field, as one that was cut there does.
bool endsInsideQuotes(const std::string& record);

class FakeTable {
 public:
  // The first column is the key.
  FakeTable(std::string name, std::vector<FakeColumn> columns, bool numbersItsRows);

  const std::string& name() const { return m_name; }
  const std::vector<FakeColumn>& columns() const { return m_columns; }

  // --- for tests ---
  // Adds or replaces a row, given in the order of the columns. No checks.
  void put(const std::vector<std::string>& values);
  bool has(const std::string& key) const;
  // A value of a row; the row and the column must be there.
  std::string value(const std::string& key, const std::string& column) const;
  void removeColumn(const std::string& key, const std::string& column);
  void makeUnreadable(const std::string& key, const std::string& column);
  void makeReadable(const std::string& key, const std::string& column);
  std::vector<std::string> keys() const;  // in key order
  std::size_t size() const { return m_rows.size(); }

  // --- for the platform functions: 0 or a status ---
  int add(const std::string& record, int* key);
  int update(const std::string& key, const std::string& assignments);
  int remove(const std::string& key);
  const FakeRow* find(const std::string& key) const;
  // Rows that match `column=value`, all for NULL, in key order.
  std::vector<FakeRow> select(const char* filter) const;

 private:
  typedef std::map<unsigned long, FakeRow> Rows;

  const FakeColumn* column(const std::string& name) const;
  // Turns a record into a row; nothing when it does not fit the columns.
  std::optional<FakeRow> rowOf(const std::vector<std::string>& fields) const;
  std::optional<FakeRow> assignments(const std::vector<std::string>& fields) const;
  bool fits(const FakeColumn& column, const std::string& text) const;

  std::string m_name;
  std::vector<FakeColumn> m_columns;
  bool m_numbersItsRows;
  unsigned long m_lastNumber = 0;
  Rows m_rows;
};

}  // namespace EventSystemTest

#endif
