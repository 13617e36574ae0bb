#include <gtest/gtest.h>

#include "tests/cluster/History.h"

namespace EventSystemTest {
namespace {

// Points in time, in order.
History::Time at(int second) {
  return History::Time(std::chrono::seconds(second));
}

class HistoryTest : public testing::Test {
 protected:
  HistoryTest() {
    history.wrote("a", 1, at(1), at(2));
    history.wrote("b", 2, at(3), at(4));
  }

  History history;
};

TEST_F(HistoryTest, FindsNothingWhereAllIsWell) {
  history.failed("c");
  history.consumed(1, "a");
  history.deleted(1);
  history.left(2, "b");
  history.left(3, "c");
  const History::Verdict verdict = history.check();
  EXPECT_EQ(verdict.details, "");
  EXPECT_EQ(verdict.operations, 5);
  EXPECT_EQ(verdict.unacknowledged, 1);
}

TEST_F(HistoryTest, FindsAnEventThatIsLost) {
  history.left(1, "a");
  EXPECT_EQ(history.check().lost, 1);
}

TEST_F(HistoryTest, FindsAnEventUnderAnotherIdThanWasTold) {
  history.left(1, "a");
  history.left(3, "b");
  EXPECT_EQ(history.check().lost, 1);
}

TEST_F(HistoryTest, FindsAnEventThatIsThereTwice) {
  history.consumed(1, "a");
  history.left(2, "b");
  history.left(3, "a");
  const History::Verdict verdict = history.check();
  EXPECT_EQ(verdict.doubled, 1);
  EXPECT_EQ(verdict.lost, 0);
}

TEST_F(HistoryTest, FindsAFailedEventThatIsThereTwice) {
  history.failed("c");
  history.left(1, "a");
  history.left(2, "b");
  history.left(3, "c");
  history.left(4, "c");
  EXPECT_EQ(history.check().doubled, 1);
}

TEST_F(HistoryTest, FindsALaterWriteWithALowerId) {
  history.wrote("c", 3, at(10), at(11));
  history.wrote("d", 4, at(5), at(6));
  for (const unsigned long id : {1UL, 2UL, 3UL, 4UL}) {
    history.left(id, std::string(1, static_cast<char>('a' + id - 1)));
  }
  EXPECT_EQ(history.check().reordered, 1);
}

TEST_F(HistoryTest, AllowsWritesAtTheSameTimeInAnyOrder) {
  history.wrote("c", 4, at(10), at(13));
  history.wrote("d", 3, at(11), at(12));
  history.left(1, "a");
  history.left(2, "b");
  history.left(3, "d");
  history.left(4, "c");
  EXPECT_EQ(history.check().details, "");
}

TEST_F(HistoryTest, FindsAnEventThatAppearsBehindTheReader) {
  history.consumed(2, "b");
  history.left(1, "a");
  EXPECT_EQ(history.check().reordered, 1);
}

TEST_F(HistoryTest, FindsADeletedEventThatComesBack) {
  history.left(1, "a");
  history.left(2, "b");
  history.deleted(1);
  EXPECT_EQ(history.check().resurrected, 1);
}

TEST_F(HistoryTest, FindsAnEventThatNobodyWrote) {
  history.left(1, "a");
  history.left(2, "b");
  history.left(3, "c");
  EXPECT_EQ(history.check().invented, 1);
}

}  // namespace
}  // namespace EventSystemTest
