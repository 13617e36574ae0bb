// eventctl dataselection.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "tests/e2e/EventctlAnywhere.h"
#include "tests/e2e/EventctlHome.h"

namespace EventSystemTest {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::SizeIs;

class DataSelection : public EventctlAnywhere {};

using DataSelectionDirectly = EventctlHome;

TEST_P(DataSelection, IsAddedListedAndRemoved) {
  EXPECT_EQ(output({"dataselection", "add", "4", "--name", "mail, \"fast\" servers"}),
            "Data selection 4 added.\n");
  output({"dataselection", "add", "7", "--type", "3"});
  const auto selections = jsonLines(output({"dataselection", "list", "--json"}));
  ASSERT_THAT(selections, SizeIs(2));
  EXPECT_EQ(selections[0],
            (json{{"id", 4}, {"type", 9}, {"events", 0}, {"name", "mail, \"fast\" servers"}}));
  EXPECT_EQ(selections[1]["type"], 3);
  EXPECT_THAT(output({"dataselection", "list"}), HasSubstr("mail, \"fast\" servers\n"));
  EXPECT_EQ(output({"dataselection", "remove", "4"}), "Data selection 4 removed.\n");
  EXPECT_THAT(jsonLines(output({"dataselection", "list", "--json"})), SizeIs(1));
}

TEST_P(DataSelection, IsAddedOnlyOnce) {
  addDataSelection(4);
  const Outcome again = run({"dataselection", "add", "4"});
  EXPECT_EQ(again.status, 1);
  EXPECT_EQ(again.err, "eventctl: data selection 4 exists already\n");
  const Outcome missing = run({"dataselection", "remove", "5"});
  EXPECT_EQ(missing.status, 1);
  EXPECT_EQ(missing.err, "eventctl: data selection 5 does not exist\n");
}

TEST_P(DataSelection, IsNeverTheGlobalQueue) {
  for (const char* const id : {"0", "2"}) {
    const Outcome outcome = run({"dataselection", "add", id});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("is the global queue"));
  }
  EXPECT_EQ(run({"dataselection", "add", "2147483648"}).status, 2);
  EXPECT_EQ(run({"dataselection", "add", "x"}).status, 2);
}

TEST_P(DataSelection, IsNotRemovedWhileItHoldsEvents) {
  addDataSelection(4);
  add("node1", 4);
  EXPECT_EQ(run({"dataselection", "remove", "4"}).err,
            "eventctl: data selection 4 still holds 1 event; consume or delete it first\n");
  add("node2", 4);
  const Outcome refused = run({"dataselection", "remove", "4"});
  EXPECT_EQ(refused.status, 1);
  EXPECT_EQ(refused.err,
            "eventctl: data selection 4 still holds 2 events; consume or delete them first\n");
  EXPECT_THAT(ids(4), ElementsAre(1, 2));
  output({"consume", "--dsid", "4"});
  EXPECT_EQ(output({"dataselection", "remove", "4"}), "Data selection 4 removed.\n");
}

TEST_F(DataSelectionDirectly, FindsEventsAgainWhoseSelectionWasMissing) {
  addDataSelection(4);
  add("node1", 4);
  execute(database(), "DELETE FROM dataselection WHERE id = 4");
  EXPECT_EQ(run({"list", "--dsid", "4"}).status, 1);
  EXPECT_THAT(output({"stats"}), HasSubstr("Data selection 4 does not exist"));
  EXPECT_EQ(json::parse(output({"stats", "--json"}))["queues"][1]["known"], false);
  addDataSelection(4);
  EXPECT_THAT(ids(4), ElementsAre(1));
}

EVENTCTL_ANYWHERE(DataSelection);

}  // namespace
}  // namespace EventSystemTest
