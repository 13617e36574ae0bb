#include <gtest/gtest.h>

#include <initializer_list>

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

  void leave(std::initializer_list<const char*> texts, unsigned long id = 1) {
    for (const char* const text : texts) history.left(id++, text);
  }

  // That the check finds this and nothing else.
  void finds(long HistoryVerdict::*kind, long times = 1) const {
    const HistoryVerdict verdict = history.check();
    EXPECT_EQ(verdict.*kind, times) << verdict.details;
    EXPECT_EQ(verdict.wrong(), times) << verdict.details;
  }

  History history;
};

TEST_F(HistoryTest, FindsNothingWhereAllIsWell) {
  history.handedOut(0);
  history.gone("old");
  history.failed("c", at(5));
  history.failed("d", at(5));
  history.copied("m", "e", at(0));
  history.read(0, 1, "a", at(5), at(6));
  history.read(1, 2, "b", at(5), at(6));
  history.deleting(1, at(7));
  history.deleted(1, at(8));
  history.read(4, 0, "", at(9), at(10));
  leave({"b", "c", "e"}, 2);
  const HistoryVerdict verdict = history.check();
  EXPECT_EQ(verdict.details, "");
  EXPECT_EQ(verdict.wrong(), 0);
  EXPECT_EQ(verdict.operations, 8);
  EXPECT_EQ(verdict.unacknowledged, 2);
}

TEST_F(HistoryTest, FindsAnEventThatIsLost) {
  leave({"a"});
  finds(&HistoryVerdict::lost);
}

TEST_F(HistoryTest, FindsAnEventUnderAnotherIdThanWasTold) {
  history.left(1, "a");
  history.left(3, "b");
  finds(&HistoryVerdict::lost);
}

TEST_F(HistoryTest, FindsAnEventThatWasSeenAndIsGoneThoughNobodyDeletedIt) {
  history.read(0, 1, "a", at(5), at(6));
  leave({"b"}, 2);
  finds(&HistoryVerdict::lost);
}

TEST_F(HistoryTest, AllowsAnEventToGoThatSomebodyMayHaveDeleted) {
  history.read(0, 1, "a", at(5), at(6));
  history.deleting(1, at(7));
  leave({"b"}, 2);
  finds(&HistoryVerdict::lost, 0);
}

TEST_F(HistoryTest, FindsAnEventThatIsThereTwice) {
  leave({"a", "b", "a"});
  finds(&HistoryVerdict::doubled);
}

TEST_F(HistoryTest, FindsAConsumedEventThatIsThereAgainUnderAnotherId) {
  history.read(0, 1, "a", at(5), at(6));
  history.deleting(1, at(7));
  history.deleted(1, at(8));
  leave({"b", "a"}, 2);
  finds(&HistoryVerdict::doubled);
}

TEST_F(HistoryTest, FindsAFailedEventThatIsThereTwice) {
  history.failed("c", at(5));
  leave({"a", "b", "c", "c"});
  finds(&HistoryVerdict::doubled);
}

TEST_F(HistoryTest, FindsTwoEventsUnderOneId) {
  history.failed("c", at(3));
  history.read(1, 2, "c", at(6), at(7));
  leave({"a", "b"});
  finds(&HistoryVerdict::doubled);
}

TEST_F(HistoryTest, FindsALaterWriteWithALowerId) {
  history.wrote("c", 3, at(10), at(11));
  history.wrote("d", 4, at(5), at(6));
  leave({"a", "b", "c", "d"});
  finds(&HistoryVerdict::reordered);
}

TEST_F(HistoryTest, FindsAnUnacknowledgedLaterWriteWithALowerId) {
  history.wrote("d", 4, at(5), at(6));
  history.failed("c", at(7));
  leave({"a", "b", "c", "d"});
  finds(&HistoryVerdict::reordered);
}

TEST_F(HistoryTest, FindsAWriteBelowWhatWasReadBeforeItBegan) {
  history.failed("d", at(5));
  history.read(2, 4, "d", at(6), at(7));
  history.wrote("c", 3, at(8), at(9));
  history.deleting(3, at(10));
  leave({"a", "b", "c", "d"});
  // It was passed by, too.
  finds(&HistoryVerdict::reordered, 2);
}

TEST_F(HistoryTest, FindsAnIdThatWasHandedOutBefore) {
  history.handedOut(1);
  leave({"a", "b"});
  finds(&HistoryVerdict::reordered);
}

TEST_F(HistoryTest, AllowsWritesAtTheSameTimeInAnyOrder) {
  history.wrote("c", 4, at(10), at(13));
  history.wrote("d", 3, at(11), at(12));
  leave({"a", "b", "d", "c"});
  finds(&HistoryVerdict::reordered, 0);
}

TEST_F(HistoryTest, FindsAnEventThatAppearsBehindTheReader) {
  history.read(0, 2, "b", at(5), at(6));
  history.deleting(1, at(7));
  leave({"a", "b"});
  finds(&HistoryVerdict::reordered);
}

TEST_F(HistoryTest, AllowsAReaderToMissWhatIsBeingDeleted) {
  history.read(0, 1, "a", at(5), at(6));
  history.deleting(1, at(7));
  history.read(0, 2, "b", at(5), at(8));
  leave({"b"}, 2);
  finds(&HistoryVerdict::reordered, 0);
}

TEST_F(HistoryTest, FindsAnEndOfTheQueueThatIsNone) {
  history.read(1, 0, "", at(3), at(5));
  leave({"a", "b"});
  finds(&HistoryVerdict::reordered, 0);
  history.read(1, 0, "", at(5), at(6));
  finds(&HistoryVerdict::reordered);
}

TEST_F(HistoryTest, FindsAReaderThatIsGivenWhatItHasPassed) {
  history.read(2, 1, "a", at(5), at(6));
  leave({"a", "b"});
  finds(&HistoryVerdict::reordered);
}

TEST_F(HistoryTest, FindsADeletedEventThatComesBack) {
  history.deleted(1, at(5));
  leave({"a", "b"});
  finds(&HistoryVerdict::resurrected);
}

TEST_F(HistoryTest, FindsADeletedEventThatIsReadAgain) {
  history.deleting(1, at(5));
  history.deleted(1, at(6));
  history.read(0, 1, "a", at(5), at(7));
  leave({"b"}, 2);
  finds(&HistoryVerdict::resurrected, 0);
  history.read(0, 1, "a", at(7), at(8));
  finds(&HistoryVerdict::resurrected);
}

TEST_F(HistoryTest, FindsAnEventOfEarlierTimes) {
  history.gone("old");
  leave({"a", "b", "old"});
  finds(&HistoryVerdict::resurrected);
}

TEST_F(HistoryTest, FindsAnEventThatNobodyWrote) {
  leave({"a", "b", "c"});
  finds(&HistoryVerdict::invented);
}

TEST_F(HistoryTest, FindsARowThatWasNotCopied) {
  history.copied("m", "c", at(0));
  leave({"a", "b"});
  finds(&HistoryVerdict::lost);
}

TEST_F(HistoryTest, FindsARowThatWasCopiedTwice) {
  history.copied("m", "c", at(0));
  leave({"a", "b", "c", "c"});
  finds(&HistoryVerdict::doubled);
}

TEST_F(HistoryTest, FindsARowThatWasCopiedBeforeTheOneInFrontOfIt) {
  history.copied("m", "d", at(0));
  history.copied("n", "e", at(0));
  history.copied("m", "c", at(0));
  leave({"a", "b", "c", "d", "e"});
  finds(&HistoryVerdict::reordered);
}

}  // namespace
}  // namespace EventSystemTest
