#include "tests/cluster/FaultTable.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <vector>

namespace EventSystemTest {
namespace {

struct Row {
  std::string fault;
  History::Verdict verdict;
};

class Table : public testing::Environment {
 public:
  void add(Row row) { m_rows.push_back(std::move(row)); }

  void TearDown() override {
    if (m_rows.empty()) return;
    std::printf("\n%-44s %10s %7s %6s %8s %10s %9s\n", "fault", "operations", "unknown", "lost",
                "doubled", "reordered", "came back");
    for (const Row& row : m_rows) {
      std::printf("%-44s %10ld %7ld %6ld %8ld %10ld %9ld\n", row.fault.c_str(),
                  row.verdict.operations, row.verdict.unacknowledged, row.verdict.lost,
                  row.verdict.doubled, row.verdict.reordered, row.verdict.resurrected);
    }
  }

 private:
  std::vector<Row> m_rows;
};

// Owned by GoogleTest.
Table& table() {
  static Table* const theOne = static_cast<Table*>(testing::AddGlobalTestEnvironment(new Table));
  return *theOne;
}

// The environment must be known before the tests start.
[[maybe_unused]] const Table& g_registered = table();

}  // namespace

void report(const std::string& fault, const History& history) {
  const History::Verdict verdict = history.check();
  EXPECT_GT(verdict.operations, 0);
  EXPECT_EQ(verdict.lost, 0) << verdict.details;
  EXPECT_EQ(verdict.doubled, 0) << verdict.details;
  EXPECT_EQ(verdict.reordered, 0) << verdict.details;
  EXPECT_EQ(verdict.resurrected, 0) << verdict.details;
  EXPECT_EQ(verdict.invented, 0) << verdict.details;
  table().add({fault, verdict});
}

}  // namespace EventSystemTest
