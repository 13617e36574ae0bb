// eventctl purge: what goes, what stays, and who is asked.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "tests/e2e/EventctlAnywhere.h"
#include "tests/e2e/EventctlHome.h"

namespace EventSystemTest {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

using Out = Surroundings::Out;

class Purge : public EventctlAnywhere {
 protected:
  void addThree(unsigned int dsid = 0) const {
    for (const char* const server : {"node1", "node2", "node3"}) add(server, dsid);
  }
};

using PurgeDirectly = EventctlHome;

TEST_P(Purge, DeletesAllEventsOfTheQueueAndTellsWhich) {
  addThree();
  output({"add", "legacy", "--payload", "x"});
  EXPECT_EQ(output({"purge", "--yes"}),
            "Deleted 4 events of the global queue, ids 1 to 4: 1 legacy, 3 serverstatus.\n");
  EXPECT_THAT(ids(), IsEmpty());
  EXPECT_EQ(add("next"), 5u);
}

TEST_P(Purge, KeepsWhatIsAboveTheId) {
  addThree();
  EXPECT_EQ(output({"purge", "--yes", "--upto", "2"}),
            "Deleted 2 events of the global queue, ids 1 to 2: 2 serverstatus.\n");
  EXPECT_THAT(ids(), ElementsAre(3));
  EXPECT_EQ(output({"purge", "--yes", "--upto", "2"}), "Deleted 0 events of the global queue.\n");
}

TEST_P(Purge, LeavesTheOtherQueuesAlone) {
  addDataSelection(4);
  addDataSelection(7);
  add("global");
  addThree(4);
  add("other", 7);
  EXPECT_EQ(output({"purge", "--yes", "--dsid", "4", "--upto", "2"}),
            "Deleted 2 events of the queue of data selection 4, ids 1 to 2: 2 serverstatus.\n");
  EXPECT_THAT(ids(), ElementsAre(1));
  EXPECT_THAT(ids(4), ElementsAre(3));
  EXPECT_THAT(ids(7), ElementsAre(4));
}

TEST_P(Purge, DeletesFromAllQueues) {
  addDataSelection(4);
  addDataSelection(7);
  add("global");
  addThree(4);
  const auto told = jsonLines(output({"purge", "--yes", "--all-queues", "--json"}));
  ASSERT_EQ(told.size(), 3u);
  EXPECT_EQ(told[0], (json{{"dsid", 0},
                           {"dryRun", false},
                           {"count", 1},
                           {"first", 1},
                           {"last", 1},
                           {"types", {{"serverstatus", 1}}},
                           {"deleted", 1}}));
  EXPECT_EQ(told[1]["deleted"], 3);
  EXPECT_EQ(told[2]["deleted"], 0);
  EXPECT_THAT(ids(), IsEmpty());
  EXPECT_THAT(ids(4), IsEmpty());
}

TEST_P(Purge, TellsWhatWouldGoAndChangesNothing) {
  addThree();
  EXPECT_EQ(output({"purge", "--dry-run", "--upto", "2"}),
            "Would delete 2 events of the global queue, ids 1 to 2: 2 serverstatus.\n");
  EXPECT_EQ(json::parse(output({"purge", "--dry-run", "--json"}))["last"], 3);
  EXPECT_THAT(ids(), ElementsAre(1, 2, 3));
}

TEST_P(Purge, IsRefusedWhereNobodyCanBeAsked) {
  addThree();
  const Outcome outcome = run({"purge"});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_THAT(outcome.err, HasSubstr("--yes deletes without asking"));
  EXPECT_THAT(ids(), ElementsAre(1, 2, 3));
}

TEST_P(Purge, AsksOnATerminal) {
  addThree();
  Program refusing(at({"purge"}), {.terminalInput = true});
  ASSERT_TRUE(refusing.waitForError("Delete 3 events? [y/N] "));
  refusing.write("n\n");
  EXPECT_EQ(refusing.wait().status, 1);
  EXPECT_THAT(ids(), ElementsAre(1, 2, 3));

  Program agreeing(at({"purge"}), {.terminalInput = true});
  ASSERT_TRUE(agreeing.waitForError("Delete 3 events? [y/N] "));
  EXPECT_EQ(add("while it asks"), 4u);
  agreeing.write("y\n");
  EXPECT_EQ(agreeing.wait().status, 0);
  EXPECT_THAT(ids(), ElementsAre(4));
}

TEST_F(PurgeDirectly, RemovesWhatCannotBeRead) {
  for (const char* const server : {"node1", "node2", "node3"}) add(server);
  execute(database(), "UPDATE events SET eventstring = 'nonsense' WHERE id = 2");
  EXPECT_EQ(run({"purge", "--yes"}).status, 0);
  EXPECT_EQ(number(database(), "SELECT count(*) FROM events"), 0);
}

TEST_P(Purge, RefusesADataSelectionThatDoesNotExist) {
  addThree();
  const Outcome outcome = run({"purge", "--yes", "--dsid", "9"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("data selection 9 does not exist"));
}

EVENTCTL_ANYWHERE(Purge);

}  // namespace
}  // namespace EventSystemTest
