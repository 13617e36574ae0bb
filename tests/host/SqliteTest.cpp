// The wrapper of SQLite where SQLite fails.

#include <gtest/gtest.h>
#include <sqlite3.h>

#include "host/database/Sqlite.h"

namespace EventSystemTest {
namespace {

using EventSystemHost::Connection;
using EventSystemHost::Row;
using EventSystemHost::SqliteError;
using EventSystemHost::Statement;
using EventSystemHost::Value;

constexpr int kInMemory = SQLITE_OPEN_READWRITE | SQLITE_OPEN_MEMORY;

// No memory is left for SQLite while it lives.
class FullMemory {
 public:
  FullMemory() { sqlite3_hard_heap_limit64(sqlite3_memory_used() + 1); }
  ~FullMemory() { sqlite3_hard_heap_limit64(m_before); }
  FullMemory(const FullMemory&) = delete;
  FullMemory& operator=(const FullMemory&) = delete;

 private:
  const sqlite3_int64 m_before = sqlite3_hard_heap_limit64(-1);
};

template <class Call>
int statusOf(const Call& call) {
  try {
    call();
    return SQLITE_OK;
  } catch (const SqliteError& problem) {
    return problem.status();
  }
}

// Of a blob of zeroes SQLite knows the length before it makes the bytes; a constant it makes at
// once.
TEST(SqliteStatement, TellsThatMemoryIsMissingForAValue) {
  const Connection connection("", kInMemory);
  Statement statement(connection, "SELECT zeroblob(100000 + 0 * random())");
  ASSERT_EQ(statement.step(), SQLITE_ROW);
  Row row;
  {
    const FullMemory full;
    EXPECT_EQ(statusOf([&] { statement.readRow(row); }), SQLITE_NOMEM);
  }
  statement.reset();
  ASSERT_EQ(statement.step(), SQLITE_ROW);
  statement.readRow(row);
  EXPECT_EQ(row.at(0), Value(std::string(100000, '\0')));
}

TEST(SqliteStatement, TellsThatAParameterWasNotTaken) {
  const Connection connection("", kInMemory);
  Statement statement(connection, "SELECT ?1");
  for (const Value& value : {Value(), Value(std::int64_t{1}), Value(std::string("a"))}) {
    EXPECT_EQ(statusOf([&] { statement.bind(2, value); }), SQLITE_RANGE);
    EXPECT_EQ(statusOf([&] { statement.bind(1, value); }), SQLITE_OK);
  }
  ASSERT_EQ(statement.step(), SQLITE_ROW);
  EXPECT_EQ(statusOf([&] { statement.bind(1, Value()); }), SQLITE_MISUSE) << "it stands on a row";
}

}  // namespace
}  // namespace EventSystemTest
