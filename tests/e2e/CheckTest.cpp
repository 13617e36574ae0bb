// eventctl check, on queues that were damaged behind the host's back.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "tests/e2e/EventctlAnywhere.h"
#include "tests/e2e/EventctlHome.h"

namespace EventSystemTest {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

template <class Home>
class CheckOf : public Home {
 protected:
  void SetUp() override {
    this->addDataSelection(4);
    for (const char* const server : {"node1", "node2", "node3"}) this->add(server);
    this->add("node4", 4);
  }
};

using Check = CheckOf<EventctlHome>;

class CheckAnywhere : public CheckOf<EventctlAnywhere> {};
EVENTCTL_ANYWHERE(CheckAnywhere);

TEST_P(CheckAnywhere, FindsNothingWrongWithSoundQueues) {
  EXPECT_EQ(output({"check"}), "No problems found.\n");
  EXPECT_EQ(output({"check", "--fix"}), "No problems found.\n");
  EXPECT_EQ(json::parse(output({"check", "--json"})),
            (json{{"fix", false}, {"findings", json::array()}, {"remaining", 0}}));
  EXPECT_THAT(ids(), ElementsAre(1, 2, 3));
}

TEST_F(Check, FilesAMisfiledEventAgain) {
  execute(database(), "UPDATE events SET eventid = 1 WHERE id = 2");
  EXPECT_THAT(output({"list"}), HasSubstr("[misfiled: its event id is 1]"));
  const std::string text = output({"check"});
  EXPECT_THAT(text, HasSubstr("warning 105\n"));
  EXPECT_THAT(text, HasSubstr("The event filename (2) does not match the event ID (1)"));
  EXPECT_THAT(text, HasSubstr("Repaired; no problems remain.\n"));
  EXPECT_THAT(ids(), ElementsAre(1, 3, 4));
  EXPECT_EQ(json::parse(output({"show", "4", "--json"}))["fields"]["server"], "node2");
}

TEST_F(Check, RemovesUnreadableRowsOnlyWhenToldTo) {
  execute(database(), "UPDATE events SET eventstring = 'EVENT{version:1;broken' WHERE id = 2");
  const Surroundings wide = {.environment = {"COLUMNS=200"}};
  EXPECT_THAT(output({"list"}, wide), HasSubstr("[unreadable event string] EVENT{version"));
  const Outcome found = run({"check"}, wide);
  EXPECT_EQ(found.status, 1);
  EXPECT_THAT(found.out, HasSubstr("invalid event string: EVENT{version:1;broken"));
  EXPECT_THAT(found.out, HasSubstr("1 found and not repaired; eventctl check --fix"));
  EXPECT_THAT(ids(), ElementsAre(1, 2, 3));
  EXPECT_THAT(output({"check", "--fix"}), HasSubstr("Repaired; no problems remain.\n"));
  EXPECT_THAT(ids(), ElementsAre(1, 3));
  EXPECT_EQ(output({"check"}), "No problems found.\n");
}

TEST_F(Check, RepairsTheQueuesOfDataSelections) {
  execute(database(), "UPDATE dsevents SET eventstring = 'EVENT{' WHERE id = 1");
  EXPECT_EQ(run({"check"}).status, 1);
  EXPECT_EQ(run({"check", "--fix"}).status, 0);
  EXPECT_THAT(ids(4), IsEmpty());
  EXPECT_THAT(ids(), ElementsAre(1, 2, 3));
}

TEST_F(Check, ReportsWhatCannotBeRepaired) {
  execute(database(), "UPDATE eventproperties SET propvalue = 1 WHERE propname = 'maxid'");
  const Outcome outcome = run({"check", "--fix", "--json"});
  EXPECT_EQ(outcome.status, 1);
  const json result = json::parse(outcome.out);
  EXPECT_EQ(result["remaining"], 1);
  ASSERT_EQ(result["findings"].size(), 1u);
  EXPECT_EQ(result["findings"][0]["level"], "error");
  EXPECT_EQ(result["findings"][0]["code"], 9);
  EXPECT_THAT(result["findings"][0]["message"].get<std::string>(),
              HasSubstr("The max ID in the database (1) is smaller"));
  EXPECT_EQ(add("next"), 4u);
  EXPECT_EQ(run({"check"}).status, 0);
}

TEST_F(Check, ConsumePassesOverAnUnreadableRow) {
  execute(database(), "UPDATE events SET eventstring = '' WHERE id = 1");
  const std::string text = output({"consume"});
  EXPECT_THAT(text, Not(HasSubstr("node1")));
  EXPECT_THAT(text, HasSubstr("node2"));
  EXPECT_THAT(ids(), IsEmpty());
}

// A database in which the first page of a table was written over.
class DamagedDatabase : public EventctlHome {
 protected:
  static constexpr std::streamoff kPage = 4096;

  void SetUp() override {
    addDataSelection(4);
    add("node4", 4);
    std::string lines;
    for (int i = 0; i < 300; ++i) lines += serverStatus("node" + std::to_string(i)) + "\n";
    output({"import", "-"}, {.input = lines});
  }

  void damageRoot(const std::string& table) const {
    execute(database(), "PRAGMA wal_checkpoint(TRUNCATE)");
    const long page =
        number(database(), "SELECT rootpage FROM sqlite_master WHERE name = '" + table + "'");
    ASSERT_GT(page, 1);
    std::fstream file(database(), std::ios::in | std::ios::out | std::ios::binary);
    file.seekp((page - 1) * kPage).write(std::string(kPage, '\xff').data(), kPage);
    ASSERT_TRUE(file.good());
  }

  void expectFailure(const Arguments& arguments) const {
    const Outcome outcome = run(arguments);
    const std::string all = outcome.out + outcome.err;
    EXPECT_EQ(outcome.status, 1) << arguments[0] << ": " << all;
    EXPECT_THAT(outcome.err, HasSubstr("is damaged")) << arguments[0];
    for (const char* const claim : {"No event", "No problems", "Repaired"}) {
      EXPECT_THAT(outcome.out, Not(HasSubstr(claim))) << arguments[0];
    }
  }
};

TEST_F(DamagedDatabase, FailsEveryCommandThatMeetsTheDamage) {
  damageRoot("events");
  for (const Arguments& arguments :
       {Arguments{"list"}, Arguments{"list", "--json"}, Arguments{"show", "7"}, Arguments{"stats"},
        Arguments{"check"}, Arguments{"check", "--fix"}, Arguments{"check", "--json"},
        Arguments{"next"}, Arguments{"consume"}, Arguments{"consume", "--json"},
        Arguments{"consume", "--follow"}, Arguments{"delete", "7"},
        Arguments{"add", "legacy", "--payload", "x"}}) {
    expectFailure(arguments);
  }
}

TEST_F(DamagedDatabase, IsFoundByACheckWhereverItIs) {
  for (const char* const table : {"dsevents", "eventproperties", "dataselection"}) {
    const std::filesystem::path copy = home() / "copy.db";
    std::filesystem::copy_file(database(), copy, std::filesystem::copy_options::overwrite_existing);
    damageRoot(table);
    expectFailure({"check"});
    expectFailure({"check", "--fix"});
    std::filesystem::copy_file(copy, database(), std::filesystem::copy_options::overwrite_existing);
  }
}

}  // namespace
}  // namespace EventSystemTest
