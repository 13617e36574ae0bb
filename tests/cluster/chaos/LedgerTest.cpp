#include <gtest/gtest.h>

#include "tests/cluster/chaos/Ledger.h"

namespace EventSystemTest {
namespace {

class ChaosLedger : public testing::Test {
 protected:
  // An entry a second later than the one before.
  void note(JournalEntry::Kind kind, unsigned long id, const std::string& text,
            unsigned long afterId = 0) {
    JournalEntry entry{kind};
    m_time += std::chrono::seconds(1);
    entry.begin = m_time;
    m_time += std::chrono::seconds(1);
    entry.end = m_time;
    entry.id = id;
    entry.afterId = afterId;
    entry.text = text;
    ledger.take("host0", {entry});
  }

  void write(unsigned long id, const std::string& text) {
    note(JournalEntry::kWriting, 0, text);
    note(JournalEntry::kWritten, id, text);
  }

  Ledger ledger;

 private:
  JournalEntry::Time m_time{};
};

TEST_F(ChaosLedger, FindsNothingWhereAllIsWell) {
  write(1, "a");
  write(2, "b");
  note(JournalEntry::kRow, 1, "row");
  note(JournalEntry::kRead, 1, "a");
  note(JournalEntry::kDeleting, 1, "");
  note(JournalEntry::kDeleted, 1, "");
  note(JournalEntry::kRead, 2, "b", 1);
  ledger.left(0, 2, "b");
  ledger.left(0, 3, "row");
  const HistoryVerdict verdict = ledger.close();
  EXPECT_EQ(verdict.details, "");
  EXPECT_EQ(ledger.figures().written, 2);
  EXPECT_EQ(ledger.figures().deleted, 1);
  EXPECT_EQ(ledger.figures().reads, 2);
  EXPECT_EQ(ledger.figures().rows, 1);
  EXPECT_EQ(ledger.figures().longestWait, std::chrono::seconds(1));
  EXPECT_EQ(ledger.writtenBy("host0"), 2);
}

TEST_F(ChaosLedger, FindsALostEventInItsQueue) {
  write(1, "a");
  ledger.left(4, 1, "a");
  const HistoryVerdict verdict = ledger.close();
  EXPECT_EQ(verdict.lost, 1);
  EXPECT_EQ(verdict.invented, 1);
  EXPECT_EQ(verdict.details,
            "data selection 0: lost: id 1, text \"a\"\n"
            "data selection 4: invented: id 1, text \"a\"\n");
}

TEST_F(ChaosLedger, FindsAnEventWhoseWriterWasToldThatItIsNotStored) {
  note(JournalEntry::kWriting, 0, "a");
  note(JournalEntry::kRefused, 0, "a");
  ledger.left(0, 1, "a");
  const HistoryVerdict verdict = ledger.close();
  EXPECT_EQ(verdict.invented, 1);
  EXPECT_EQ(verdict.wrong(), 1);
  EXPECT_EQ(ledger.figures().refused, 1);
}

TEST_F(ChaosLedger, LetsAWriteOfUnknownOutcomeBeThereOnceOrNotAtAll) {
  note(JournalEntry::kWriting, 0, "a");
  note(JournalEntry::kWriting, 0, "b");
  note(JournalEntry::kWriting, 0, "c");
  ledger.left(0, 1, "b");
  ledger.left(0, 2, "c");
  ledger.left(0, 3, "c");
  const HistoryVerdict verdict = ledger.close();
  EXPECT_EQ(verdict.doubled, 1);
  EXPECT_EQ(verdict.wrong(), 1);
  EXPECT_EQ(ledger.figures().unknown, 3);
  EXPECT_EQ(ledger.figures().unknownStored, 2);
}

TEST_F(ChaosLedger, LetsItArriveInTheNextEpochAndNotOnceMoreAfterThat) {
  note(JournalEntry::kWriting, 0, "a");
  EXPECT_EQ(ledger.close().wrong(), 0);
  ledger.left(0, 1, "a");
  EXPECT_EQ(ledger.close().wrong(), 0);
  ledger.left(0, 2, "a");
  EXPECT_EQ(ledger.close().resurrected, 1);
}

TEST_F(ChaosLedger, FindsARowThatIsCopiedAgainInALaterEpoch) {
  note(JournalEntry::kRow, 1, "row");
  ledger.left(0, 1, "row");
  EXPECT_EQ(ledger.close().wrong(), 0);
  ledger.left(0, 2, "row");
  EXPECT_EQ(ledger.close().resurrected, 1);
}

TEST_F(ChaosLedger, FindsAnIdOfAnEarlierEpoch) {
  write(5, "a");
  ledger.left(0, 5, "a");
  EXPECT_EQ(ledger.close().wrong(), 0);
  write(5, "b");
  ledger.left(0, 5, "b");
  const HistoryVerdict verdict = ledger.close();
  EXPECT_EQ(verdict.reordered, 1);
  EXPECT_EQ(verdict.wrong(), 1);
}

}  // namespace
}  // namespace EventSystemTest
