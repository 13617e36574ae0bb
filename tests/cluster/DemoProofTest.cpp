// What the tour of the cluster mode proves can also fail.

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "apps/eventctl/DemoProof.h"

namespace EventSystemTest {
namespace {

using EventApps::demoEventString;
using EventApps::DemoFate;
using EventApps::DemoFound;
using EventApps::DemoProof;
using EventApps::DemoRecord;
using EventApps::proveQueue;

DemoFound stored(const std::string& writer, unsigned long number, unsigned long id) {
  return {id, demoEventString(writer, number, id)};
}

// Two writers take turns in the global queue; their events 1 and 2 are acknowledged, 3 is not.
class DemoProofOfAQueue : public testing::Test {
 protected:
  DemoProof prove() const { return proveQueue(m_records, 0, m_found); }

  std::vector<DemoRecord> m_records = {
      {"a", {DemoFate{0, true, 1}, DemoFate{0, true, 3}, DemoFate{0, false, 0}}},
      {"b", {DemoFate{0, true, 2}, DemoFate{0, true, 4}, DemoFate{4, true, 1}}}};
  std::vector<DemoFound> m_found = {stored("a", 1, 1), stored("b", 1, 2), stored("a", 2, 3),
                                    stored("b", 2, 4)};
};

TEST_F(DemoProofOfAQueue, HoldsWhereEveryAcknowledgedEventIsThereOnce) {
  const DemoProof proof = prove();
  EXPECT_TRUE(proof.holds());
  EXPECT_EQ(proof.found, 4u);
  EXPECT_EQ(proof.acknowledged, (std::vector<unsigned long>{2, 2}));
  EXPECT_EQ(proof.unanswered, 0u);
}

TEST_F(DemoProofOfAQueue, LetsAnEventBeThereThatGotNoAnswer) {
  m_found.push_back(stored("a", 3, 5));
  const DemoProof proof = prove();
  EXPECT_TRUE(proof.holds());
  EXPECT_EQ(proof.unanswered, 1u);
}

TEST_F(DemoProofOfAQueue, NamesALostEvent) {
  m_found.erase(m_found.begin() + 1);
  EXPECT_EQ(prove().lost, 1u);
  EXPECT_FALSE(prove().holds());
}

TEST_F(DemoProofOfAQueue, NamesADoubledEvent) {
  m_found.push_back(stored("a", 1, 5));
  EXPECT_EQ(prove().doubled, 1u);
  EXPECT_FALSE(prove().holds());
}

TEST_F(DemoProofOfAQueue, NamesEventsOfOneWriterInAnotherOrderThanWritten) {
  m_records[0].events[0].id = 3;
  m_records[0].events[1].id = 1;
  m_found = {stored("a", 2, 1), stored("b", 1, 2), stored("a", 1, 3), stored("b", 2, 4)};
  EXPECT_EQ(prove().disordered, 1u);
  EXPECT_EQ(prove().misnumbered, 0u);
  EXPECT_FALSE(prove().holds());
}

TEST_F(DemoProofOfAQueue, NamesAnIdThatDoesNotGrow) {
  std::swap(m_found[1], m_found[2]);
  EXPECT_EQ(prove().disordered, 1u);
  EXPECT_FALSE(prove().holds());
  m_found[2] = stored("b", 1, 3);
  EXPECT_EQ(prove().disordered, 1u) << "the same id twice";
}

TEST_F(DemoProofOfAQueue, NamesAnEventUnderAnotherIdThanItsWriterWasTold) {
  m_found[3] = stored("b", 2, 5);
  EXPECT_EQ(prove().misnumbered, 1u);
  EXPECT_FALSE(prove().holds());
}

TEST_F(DemoProofOfAQueue, TakesAnyIdWhereTheWriterWasToldNone) {
  m_records[1].events[1].id = 0;
  m_found[3] = stored("b", 2, 5);
  EXPECT_TRUE(prove().holds());
}

TEST_F(DemoProofOfAQueue, NamesATextThatWasChangedAsLostAndForeign) {
  m_found[1].eventString.replace(m_found[1].eventString.find("backup"), 6, "Backup");
  EXPECT_EQ(prove().foreign, 1u);
  EXPECT_EQ(prove().lost, 1u);
}

TEST_F(DemoProofOfAQueue, NamesWhatNobodyWroteToThisQueue) {
  m_found.push_back(stored("b", 3, 5));  // written to another queue
  m_found.push_back(stored("a", 4, 6));  // not written
  m_found.push_back(stored("a", 0, 7));
  m_found.push_back(stored("c", 1, 8));
  m_found.push_back({9, "EVENT{version:1;type:6;id:9;date:1;ABILITIESEVENT{flags:0x1;server:a;}}"});
  EXPECT_EQ(prove().foreign, 5u);
  EXPECT_EQ(prove().lost, 0u);
  EXPECT_FALSE(prove().holds());
}

}  // namespace
}  // namespace EventSystemTest
