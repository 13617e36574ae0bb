// eventctl add, import, delete, dataselection and check in cluster mode.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/cluster/ClusterHome.h"
#include "tests/cluster/Proxy.h"

namespace EventSystemTest {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

class ClusterWriting : public ClusterHome {
 protected:
  ClusterWriting() { joinCluster(m_etcd); }

  const EtcdCluster m_etcd{1};
};

using ClusterAdd = ClusterWriting;
using ClusterImport = ClusterWriting;
using ClusterDelete = ClusterWriting;
using ClusterDataSelection = ClusterWriting;
using ClusterCheck = ClusterWriting;

TEST_F(ClusterAdd, PrintsTheIdThatTheServiceGave) {
  addDataSelection(4);
  EXPECT_EQ(output({"add", "legacy", "--payload", "x"}), "1\n");
  const json added = json::parse(output({"add", "legacy", "--payload", "y", "--json"}));
  EXPECT_EQ(added["id"], 2);
  EXPECT_EQ(added, json::parse(output({"show", "2", "--json"})));
  EXPECT_EQ(add("selected", 4), 1U);
}

TEST_F(ClusterAdd, TakesWhatOnlyARowOfTheDatabaseHasNoRoomFor) {
  addDataSelection(4);
  const std::string text(1000, 'x');
  const Arguments event = {"add", "activity", "--action", "1",      "--severity",
                           "1",   "--msg",    text,       "--dsid", "4"};
  EXPECT_EQ(output(event), "1\n");
  EXPECT_EQ(json::parse(output({"show", "1", "--dsid", "4", "--json"}))["fields"]["msg"], text);
  leaveCluster();
  EXPECT_THAT(run(event).err, HasSubstr("its database record in a data selection would be"));
}

TEST_F(ClusterAdd, RefusesAnEventStringThatTheStoresWouldCut) {
  const auto audit = [this](std::size_t bytes) {
    return run({"add", "audit", "--action", "1", "--msg", std::string(bytes, 'x')});
  };
  const Outcome refused = audit(2000);
  EXPECT_EQ(refused.status, 1);
  EXPECT_THAT(refused.err, HasSubstr("its event string would be "));
  EXPECT_THAT(refused.err, HasSubstr("at most 2047 fit"));
  // Exactly what fits goes in, whole.
  const std::size_t excess = std::stoul(refused.err.substr(refused.err.rfind(' ') + 1));
  EXPECT_EQ(audit(2000 - excess + 1).status, 1);
  EXPECT_EQ(audit(2000 - excess).out, "1\n");
  EXPECT_EQ(json::parse(output({"show", "1", "--json"}))["fields"]["AUditMSg"],
            std::string(2000 - excess, 'x'));
}

TEST_F(ClusterImport, TakesADateThatTheTablesDoNotHold) {
  output({"import", "-"}, {.input = serverStatus("late", 9223372036854775808UL)});
  EXPECT_EQ(json::parse(output({"show", "1", "--json"}))["date"], 9223372036854775808UL);
}

TEST_F(ClusterImport, AcknowledgesEachLineBeforeItAwaitsTheNext) {
  addDataSelection(4);
  Program import(at({"import", "-", "--acknowledge"}), {.keepInputOpen = true});
  import.write("# a comment\n" + serverStatus("a") + "\n");
  ASSERT_TRUE(import.waitForOutput("2 0 1\n"));
  import.write("no event\ndsid=4 " + serverStatus("b") + "\n");
  ASSERT_TRUE(import.waitForOutput("4 4 1\n"));
  EXPECT_THAT(ids(4), ElementsAre(1));
  import.write(serverStatus("c") + "\n");
  ASSERT_TRUE(import.waitForOutput("5 0 2\n"));
  import.closeInput();
  const Outcome outcome = import.wait();
  EXPECT_EQ(outcome.out, "2 0 1\n4 4 1\n5 0 2\nImported 3, refused 1.\n");
  EXPECT_EQ(outcome.status, 1);
}

TEST_F(ClusterImport, SaysThatItIsNotKnownWhetherAnEventIsStoredWhoseAnswerWasLost) {
  Proxy proxy(m_etcd.endpoint(0));
  joinCluster(proxy.endpoint(), "deadline_ms = 1000\n");
  Program import(at({"import", "-", "--acknowledge"}), {.keepInputOpen = true});
  import.write(serverStatus("a") + "\n");
  ASSERT_TRUE(import.waitForOutput("1 0 1\n"));
  proxy.setMute(true);
  import.write(serverStatus("b") + "\n");
  import.closeInput();
  const Outcome outcome = import.wait();
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr(":2: whether the event was stored is not known: "));
  EXPECT_THAT(outcome.err, HasSubstr("no majority"));
}

TEST_F(ClusterDelete, LooksAtTheServiceAndSaysWhenThereIsNothing) {
  add("a");
  add("b");
  const Outcome outcome = run({"delete", "1", "7"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out, "Deleted event 1.\n");
  EXPECT_EQ(outcome.err, "eventctl: there is no event 7 in the global queue\n");
  EXPECT_THAT(ids(), ElementsAre(2));
  EXPECT_EQ(run({"delete", "1"}).status, 1);
}

TEST_F(ClusterDataSelection, IsNotRemovedWhileTheServiceHoldsItsEvents) {
  addDataSelection(4);
  add("a", 4);
  const Outcome outcome = run({"dataselection", "remove", "4"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("data selection 4 still holds 1 event; consume"));
  output({"consume", "--dsid", "4"});
  output({"dataselection", "remove", "4"});
}

TEST_F(ClusterDataSelection, IsNotRemovedWhileTheDatabaseHoldsItsEvents) {
  leaveCluster();
  addDataSelection(4);
  add("a", 4);
  joinCluster(m_etcd);
  const Outcome outcome = run({"dataselection", "remove", "4"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("still holds 1 event in the database"));
  EXPECT_THAT(outcome.err, HasSubstr("cluster_mode = 0"));
}

TEST_F(ClusterCheck, SaysWhatItIsAbout) {
  const std::string text = output({"check"});
  EXPECT_THAT(text, HasSubstr("The queues are at the cluster service and need no check."));
  EXPECT_THAT(text, HasSubstr("No problems found."));
  EXPECT_EQ(json::parse(output({"check", "--json"}))["checked"], "database");
}

TEST_F(ClusterCheck, CountsTheRowsOfTheDatabaseThatItLeavesUnreadable) {
  leaveCluster();
  addDataSelection(4);
  add("a", 4);
  execute(database(), "UPDATE dsevents SET eventstring = 'no event'");
  joinCluster(m_etcd);
  for (const Arguments& command : {Arguments{"check"}, Arguments{"check", "--fix"}}) {
    const Outcome outcome = run(command);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.out, HasSubstr("1 found and not repaired; with cluster_mode = 0"));
  }
  const json found = json::parse(run({"check", "--json"}).out);
  EXPECT_EQ(found["remaining"], 1);
  EXPECT_EQ(found["findings"].back()["message"],
            "event 1 in the database's rows of the queue of data selection 4: unreadable event "
            "string");
}

TEST_F(ClusterAdd, SaysWhyAndWhereItFailed) {
  joinCluster("127.0.0.1:1", "deadline_ms = 1000\n");
  const Outcome outcome = run({"add", "legacy", "--payload", "x"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("127.0.0.1:1"));
}

}  // namespace
}  // namespace EventSystemTest
