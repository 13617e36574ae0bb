// The books find what they are kept for: each kind of loss, doubling and change.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/death/Ledger.h"
#include "tests/death/Worker.h"

namespace EventSystemTest {
namespace {

using Kind = Message::Kind;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// A queue without faults that keeps the books informed; each test takes something back from it.
class LedgerOfAQueue : public testing::Test {
 protected:
  std::string asked(std::uint64_t number, std::uint32_t queue = 0) {
    const std::string text = eventStringOf(*makeEvent(number, 50));
    m_ledger.take({.kind = Kind::kWillAdd, .queue = queue, .number = number, .text = text});
    return text;
  }

  void answered(std::uint64_t number, std::uint64_t id, std::uint32_t queue = 0, int result = 0) {
    m_ledger.take(
        {.kind = Kind::kAdded, .queue = queue, .number = number, .id = id, .result = result});
  }

  void stored(std::uint64_t id, const std::string& text, std::uint32_t queue = 0) {
    m_files.queues[queue].emplace_back(id, withId(text, id));
    std::uint64_t& last = m_files.maxIds[queue == 0 ? "maxid" : "maxid_" + std::to_string(queue)];
    last = id;
  }

  // Asked for, acknowledged and stored.
  void add(std::uint64_t number, std::uint64_t id, std::uint32_t queue = 0) {
    stored(id, asked(number, queue), queue);
    answered(number, id, queue);
  }

  void willRemove(std::uint64_t id, std::uint32_t queue = 0) {
    for (const auto& [each, text] : m_files.queues[queue]) {
      if (each != id) continue;
      m_ledger.take({.kind = Kind::kWillDelete, .queue = queue, .id = id, .text = text});
    }
  }

  void removeFromFiles(std::uint64_t id, std::uint32_t queue = 0) {
    std::erase_if(m_files.queues[queue], [id](const auto& event) { return event.first == id; });
  }

  void remove(std::uint64_t id, std::uint32_t queue = 0) {
    willRemove(id, queue);
    removeFromFiles(id, queue);
    m_ledger.take({.kind = Kind::kDeleted, .queue = queue, .id = id});
  }

  void addAuditRow(std::uint64_t number) {
    m_ledger.addAuditRow(number);
    m_files.auditContents.insert(auditContentOf(number));
  }

  void importAuditRow(std::uint64_t number, std::uint64_t id) {
    stored(id, "EVENT{version:1;type:8;id:0;date:1;AUDITEVENT{" + auditContentOf(number) + ";}}");
  }

  void endLife(bool closed = false) { m_ledger.endLife(m_files, closed); }

  std::string failure() const {
    return m_ledger.failures().empty() ? "" : m_ledger.failures().front();
  }

  Ledger m_ledger;
  StoredFiles m_files;
};

TEST_F(LedgerOfAQueue, AgreesWithAQueueThatLosesNothing) {
  add(1, 1);
  add(2, 2);
  add(3, 1, 5);
  remove(2);
  endLife();
  add(4, 3);
  add(5, 2, 7);
  endLife();
  EXPECT_THAT(m_ledger.failures(), IsEmpty());
  EXPECT_EQ(m_ledger.tally().acknowledgedEvents, 5U);
  EXPECT_EQ(m_ledger.tally().acknowledgedDeletions, 1U);
}

TEST_F(LedgerOfAQueue, AgreesWithAnUnansweredCallThatWasDone) {
  stored(1, asked(1));
  endLife();
  add(2, 2);
  endLife();
  EXPECT_THAT(m_ledger.failures(), IsEmpty());
  EXPECT_EQ(m_ledger.tally().unknownStored, 1U);
}

TEST_F(LedgerOfAQueue, AgreesWithAnUnansweredCallThatWasNotDone) {
  asked(1);
  endLife();
  add(2, 1);
  endLife();
  EXPECT_THAT(m_ledger.failures(), IsEmpty());
  EXPECT_EQ(m_ledger.tally().unknownEvents, 1U);
  EXPECT_EQ(m_ledger.tally().unknownStored, 0U);
}

TEST_F(LedgerOfAQueue, AgreesWithAnUnansweredDeletionEitherWay) {
  add(1, 1);
  add(2, 2);
  willRemove(1);
  willRemove(2);
  removeFromFiles(2);
  endLife();
  EXPECT_THAT(m_ledger.failures(), IsEmpty());
  EXPECT_EQ(m_ledger.tally().unknownDeletions, 2U);
}

TEST_F(LedgerOfAQueue, MissesAnAcknowledgedEvent) {
  add(1, 1);
  add(2, 2);
  removeFromFiles(1);
  endLife();
  EXPECT_THAT(failure(), HasSubstr("gone: event 1"));
}

TEST_F(LedgerOfAQueue, MissesAnEventThatWasThereAtTheLastStart) {
  add(1, 1);
  endLife();
  m_ledger.take({.kind = Kind::kContentsEnd});
  EXPECT_THAT(failure(), HasSubstr("gone: event 1"));
}

TEST_F(LedgerOfAQueue, FindsAnEventThatIsThereTwice) {
  add(1, 1);
  stored(2, m_files.queues[0].front().second);
  endLife();
  EXPECT_THAT(failure(), HasSubstr("twice"));
}

TEST_F(LedgerOfAQueue, FindsAnEventThatHasChanged) {
  add(1, 1);
  m_files.queues[0].front().second += " ";
  endLife();
  EXPECT_THAT(failure(), HasSubstr("changed"));
}

TEST_F(LedgerOfAQueue, FindsAnEventInAnotherQueue) {
  stored(1, asked(1, 5), 7);
  endLife();
  EXPECT_THAT(failure(), HasSubstr("changed"));
}

TEST_F(LedgerOfAQueue, FindsAnEventThatNobodyHasAdded) {
  stored(1, eventStringOf(*makeEvent(9, 50)));
  endLife();
  EXPECT_THAT(failure(), HasSubstr("nobody"));
}

TEST_F(LedgerOfAQueue, FindsAnEventThatComesLate) {
  const std::string text = asked(1);
  endLife();
  stored(1, text);
  endLife();
  EXPECT_THAT(failure(), HasSubstr("late"));
}

TEST_F(LedgerOfAQueue, FindsADeletedEventThatIsBack) {
  add(1, 1);
  const StoredFiles before = m_files;
  remove(1);
  m_files = before;
  endLife();
  EXPECT_THAT(failure(), HasSubstr("back"));
}

TEST_F(LedgerOfAQueue, FindsAnIdThatWasGivenTwiceAfterADeletion) {
  add(1, 1);
  remove(1);
  endLife();
  add(2, 1);
  EXPECT_THAT(failure(), HasSubstr("given twice"));
}

TEST_F(LedgerOfAQueue, FindsAGapInTheIds) {
  add(1, 1);
  add(2, 3);
  endLife();
  EXPECT_THAT(failure(), HasSubstr("id 2 of the global queue is missing"));
}

TEST_F(LedgerOfAQueue, FindsAStoredMaximumThatLagsBehind) {
  add(1, 1);
  add(2, 2);
  m_files.maxIds["maxid"] = 1;
  endLife();
  EXPECT_THAT(failure(), HasSubstr("maxid is 1, not 2"));
}

TEST_F(LedgerOfAQueue, FindsACallThatWasRefused) {
  asked(1);
  answered(1, 0, 0, 4);
  EXPECT_THAT(failure(), HasSubstr("newEvent gave 4"));
}

TEST_F(LedgerOfAQueue, FindsWhatACheckCounted) {
  m_ledger.take({.kind = Kind::kProblems, .number = 2});
  EXPECT_THAT(failure(), HasSubstr("2 problems"));
}

TEST_F(LedgerOfAQueue, FindsAnEmptiedSetOfDataSelectionsThatBeginsAnew) {
  add(1, 1, 5);
  add(2, 2, 7);
  remove(1, 5);
  remove(2, 7);
  endLife();
  add(3, 1, 7);
  EXPECT_THAT(failure(), HasSubstr("given twice"));
}

TEST_F(LedgerOfAQueue, ExpectsDataSelectionsToGoOnAboveWhateverTheyHaveGiven) {
  add(1, 1, 5);
  add(2, 2, 5);
  add(3, 3, 7);
  remove(2, 5);
  remove(3, 7);
  endLife();
  add(4, 4, 7);
  endLife();
  EXPECT_THAT(m_ledger.failures(), IsEmpty());
  add(5, 6, 5);
  endLife();
  EXPECT_THAT(failure(), HasSubstr("id 5 of the data selections is missing"));
}

TEST_F(LedgerOfAQueue, FindsAnIdOfADataSelectionThatIsGivenTwiceAtATime) {
  add(1, 1, 5);
  add(2, 1, 7);
  EXPECT_THAT(failure(), HasSubstr("given twice"));
}

TEST_F(LedgerOfAQueue, AgreesWithAuditRecordsThatAreImportedOnceEvenAcrossADeath) {
  addAuditRow(1);
  addAuditRow(2);
  importAuditRow(1, 1);
  endLife();  // died before the deletion
  importAuditRow(1, 2);
  importAuditRow(2, 3);
  m_files.auditContents.clear();
  endLife(true);
  EXPECT_THAT(m_ledger.failures(), IsEmpty());
  EXPECT_EQ(m_ledger.tally().auditCopies, 1U);
}

TEST_F(LedgerOfAQueue, MissesAnAuditRecordThatIsNeitherQueuedNorInTheFile) {
  addAuditRow(1);
  m_files.auditContents.clear();
  endLife();
  EXPECT_THAT(failure(), HasSubstr("gone: audit record 1"));
}

TEST_F(LedgerOfAQueue, FindsAnAuditRecordThatOneProcessQueuedTwice) {
  addAuditRow(1);
  importAuditRow(1, 1);
  importAuditRow(1, 2);
  endLife();
  EXPECT_THAT(failure(), HasSubstr("without cause"));
}

TEST_F(LedgerOfAQueue, FindsAnAuditRecordThatIsQueuedAgainAfterItWasDeleted) {
  addAuditRow(1);
  importAuditRow(1, 1);
  m_files.auditContents.clear();
  endLife();
  importAuditRow(1, 2);
  endLife();
  EXPECT_THAT(failure(), HasSubstr("without cause"));
}

TEST_F(LedgerOfAQueue, FindsAnImportThatLeavesItsRecordsBehind) {
  addAuditRow(1);
  importAuditRow(1, 1);
  endLife(true);
  EXPECT_THAT(failure(), HasSubstr("without its deletion"));
}

TEST_F(LedgerOfAQueue, ReportsDamagedFiles) {
  m_files.damage.emplace_back("page 3 is bad");
  endLife();
  EXPECT_THAT(m_ledger.failures(), ElementsAre("the files: page 3 is bad"));
}

TEST(EventMaker, MakesEventsThatComeBackFromTheirText) {
  for (std::uint64_t number = 1; number <= 300; ++number) {
    const std::string text = eventStringOf(*makeEvent(number, 900));
    EXPECT_EQ(numberOf(text), (EventNumber{number, false}));
    EventSystem::Event* read = nullptr;
    ASSERT_EQ(EventSystem::Event::fromString(withId(text, 17).c_str(), &read), 0) << text;
    const std::unique_ptr<EventSystem::Event> event(read);
    EXPECT_EQ(eventStringOf(*event), withId(text, 17));
  }
}

}  // namespace
}  // namespace EventSystemTest
