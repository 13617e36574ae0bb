// eventctl consume and delete: what leaves the queue, and what must not.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>

#include "tests/e2e/EventctlAnywhere.h"
#include "tests/e2e/EventctlHome.h"

namespace EventSystemTest {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

using Out = Surroundings::Out;

class Consume : public EventctlAnywhere {
 protected:
  void addThree() const {
    for (const char* const server : {"node1", "node2", "node3"}) add(server);
  }
};

class Delete : public Consume {};

TEST_P(Consume, PrintsInOrderAndDeletes) {
  addThree();
  const auto events = jsonLines(output({"consume", "--json"}));
  ASSERT_THAT(events, SizeIs(3));
  EXPECT_EQ(events[0]["fields"]["server"], "node1");
  EXPECT_EQ(events[2]["fields"]["server"], "node3");
  EXPECT_THAT(ids(), IsEmpty());
  EXPECT_EQ(output({"consume"}), "No events in the global queue.\n");
  EXPECT_EQ(output({"consume", "--json"}), "");
}

TEST_P(Consume, StopsAtItsLimit) {
  addThree();
  EXPECT_THAT(jsonLines(output({"consume", "--json", "--limit", "2"})), SizeIs(2));
  EXPECT_THAT(ids(), ElementsAre(3));
}

TEST_P(Consume, KeepsWhenAskedTo) {
  addThree();
  EXPECT_THAT(jsonLines(output({"consume", "--json", "--keep"})), SizeIs(3));
  EXPECT_THAT(ids(), ElementsAre(1, 2, 3));
}

TEST_P(Consume, TakesFromADataSelection) {
  addDataSelection(4);
  add("node1", 4);
  add("node2");
  const auto events = jsonLines(output({"consume", "--json", "--dsid", "4"}));
  ASSERT_THAT(events, SizeIs(1));
  EXPECT_EQ(events[0]["dsid"], 4);
  EXPECT_THAT(ids(4), IsEmpty());
  EXPECT_THAT(ids(), ElementsAre(1));
}

TEST_P(Consume, PrintsEveryByteOfAnEventAlsoInATable) {
  std::string words;
  for (int i = 0; i < 90; ++i) words += "word" + std::to_string(i) + " ";
  output({"add", "activity", "--action", "1", "--severity", "1", "--msg", words + "end"});
  const std::string text = output({"consume"});
  for (int i = 0; i < 90; ++i) EXPECT_THAT(text, HasSubstr("word" + std::to_string(i)));
  EXPECT_THAT(text, HasSubstr("severity=1"));
}

TEST_P(Consume, TakesInAuditRecordsFirst) {
  add("node1");
  leaveAuditRecords({"one", "two"});
  const auto events = jsonLines(output({"consume", "--json"}));
  ASSERT_THAT(events, SizeIs(3));
  EXPECT_EQ(events[2]["fields"]["AUditMSg"], "two");
}

TEST_P(Consume, KeepsWhatNobodyReads) {
  addThree();
  EXPECT_EQ(run({"consume", "--json"}, {.out = Out::kBrokenPipe}).status, 1);
  EXPECT_EQ(run({"consume"}, {.out = Out::kBrokenPipe}).status, 1);
  EXPECT_THAT(ids(), ElementsAre(1, 2, 3));
}

TEST_P(Consume, KeepsWhatAFullOutputDoesNotTake) {
  addThree();
  const Outcome outcome = run({"consume", "--json"}, {.out = Out::kFile, .outFile = "/dev/full"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "eventctl: cannot write to standard output: No space left on device\n");
  EXPECT_THAT(ids(), ElementsAre(1, 2, 3));
}

TEST_P(Consume, KeepsEverythingWithoutAStandardOutput) {
  addThree();
  EXPECT_EQ(run({"consume", "--json"}, {.out = Out::kClosed}).status, 1);
  EXPECT_THAT(ids(), ElementsAre(1, 2, 3));
}

TEST_P(Consume, WritesToAFile) {
  addThree();
  const auto file = write("out", "");
  EXPECT_EQ(run({"consume", "--json"}, {.out = Out::kFile, .outFile = file}).status, 0);
  std::ostringstream text;
  text << std::ifstream(file).rdbuf();
  EXPECT_THAT(jsonLines(text.str()), SizeIs(3));
}

TEST_P(Consume, NeverLetsAnIdBeGivenAgain) {
  output({"import", "-"}, {.input = serverStatus("a") + "\n" + serverStatus("b") + "\n"});
  output({"consume"});
  EXPECT_EQ(add("node1"), 3u);
  output({"delete", "3"});
  EXPECT_EQ(add("node1"), 4u);
}

TEST_P(Delete, RemovesTheNamedEvents) {
  addThree();
  EXPECT_EQ(output({"delete", "1", "3"}), "Deleted event 1.\nDeleted event 3.\n");
  EXPECT_THAT(ids(), ElementsAre(2));
  EXPECT_EQ(json::parse(output({"delete", "2", "--json"})), (json{{"deleted", 2}, {"dsid", 0}}));
}

TEST_P(Delete, NamesTheEventsThatAreNotThere) {
  addThree();
  const Outcome outcome = run({"delete", "9", "2"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out, "Deleted event 2.\n");
  EXPECT_EQ(outcome.err, "eventctl: there is no event 9 in the global queue\n");
}

TEST_P(Delete, DoesNotReachIntoAnotherQueue) {
  addDataSelection(4);
  addDataSelection(7);
  add("node1", 4);
  EXPECT_EQ(run({"delete", "1", "--dsid", "7"}).status, 1);
  EXPECT_THAT(ids(4), ElementsAre(1));
}

EVENTCTL_ANYWHERE(Consume);
EVENTCTL_ANYWHERE(Delete);

}  // namespace
}  // namespace EventSystemTest
