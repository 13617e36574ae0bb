// eventctl list, show, stats and next.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <string>

#include "tests/e2e/EventctlAnywhere.h"
#include "tests/e2e/EventctlHome.h"

namespace EventSystemTest {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::SizeIs;

template <class Home>
class ReadingOf : public Home {
 protected:
  void addThree() const {
    this->add("node1");
    this->output({"add", "activity", "--action", "3", "--severity", "2", "--msg", "disk full"});
    this->add("node3");
  }
};

class Reading : public ReadingOf<EventctlAnywhere> {};
using ReadingDirectly = ReadingOf<EventctlHome>;

// A database that a host has opened, in which no queue was ever used.
class ReadingWithoutTables : public EventctlAnywhere {
 protected:
  void SetUp() override { addDataSelection(4); }
};

TEST_P(Reading, ShowsATableForPeople) {
  addThree();
  const auto lines = linesOf(output({"list"}));
  ASSERT_THAT(lines, SizeIs(4));
  EXPECT_EQ(lines[0], "    id  time (UTC)           type          dsid  event");
  EXPECT_THAT(lines[1], HasSubstr("serverstatus     0  node1 state=1"));
  EXPECT_THAT(lines[2], HasSubstr("     2  20"));
  EXPECT_THAT(lines[2], HasSubstr("activity         0  disk full action=3"));
}

TEST_P(Reading, ListsBetweenAnIdAndALimit) {
  addThree();
  EXPECT_THAT(jsonLines(output({"list", "--json", "--after", "1"})), SizeIs(2));
  const auto one = jsonLines(output({"list", "--json", "--after", "1", "--limit", "1"}));
  ASSERT_THAT(one, SizeIs(1));
  EXPECT_EQ(one[0]["id"], 2);
  EXPECT_THAT(output({"list", "--limit", "2"}), HasSubstr("--after 2 continues"));
  EXPECT_THAT(output({"list", "--limit", "3"}), Not(HasSubstr("continues")));
}

TEST_P(Reading, ListsOneTypeByNameOrNumber) {
  addThree();
  for (const char* const type : {"activity", "7"}) {
    const auto events = jsonLines(output({"list", "--json", "--type", type}));
    ASSERT_THAT(events, SizeIs(1));
    EXPECT_EQ(events[0]["kind"], "activity");
  }
  EXPECT_EQ(output({"list", "--type", "audit"}), "No events in the global queue.\n");
}

TEST_P(Reading, NeverBreaksTheTable) {
  const std::string nasty =
      "\x1b[2J\x07\ttab \xff\xfe \xc3\xbcml\xc3\xa4ut \xe5\xae\xb9\xe9\x87\x8f \xe2\x80\xae" +
      std::string(300, 'w');
  output({"import", "-"}, {.input = activity(nasty) + "\n"});
  for (const Arguments& command : {Arguments{"list"}, Arguments{"consume", "--keep"},
                                   Arguments{"show", "1"}, Arguments{"next"}}) {
    const std::string text = output(command);
    EXPECT_THAT(
        text, AllOf(HasSubstr("\\x1b[2J\\x07\\ttab \\xff\\xfe"), HasSubstr("\xc3\xbcml\xc3\xa4")));
    for (const std::string& line : linesOf(text)) {
      EXPECT_EQ(line.find_first_of("\x1b\x07\t\xff"), std::string::npos) << line;
      EXPECT_LE(line.size(), 100u) << line;  // 80 columns of which some take three bytes
    }
  }
  const json event = json::parse(output({"show", "1", "--json"}));
  EXPECT_THAT(event["fields"]["msg"].get<std::string>(),
              HasSubstr("\x1b[2J\x07\ttab \xef\xbf\xbd"));
}

TEST_P(Reading, GivesTheExactBytesOfWhatIsNoUtf8) {
  const std::string line = serverStatus("caf\xe9");
  output({"import", "-"}, {.input = line + "\n" + serverStatus("caf\xc3\xa9") + "\n"});
  std::string bytes = line;
  bytes.replace(bytes.find("id:0"), 4, "id:1");
  std::string hex;
  for (const char byte : bytes) {
    std::array<char, 3> digits{};
    std::snprintf(digits.data(), digits.size(), "%02x", static_cast<unsigned char>(byte));
    hex += digits.data();
  }
  EXPECT_EQ(json::parse(output({"show", "1", "--json"}))["eventStringHex"], hex);
  EXPECT_EQ(json::parse(output({"next", "--json"}))["eventStringHex"], hex);
  for (const Arguments& command : {Arguments{"list", "--json"}, Arguments{"consume", "--json"}}) {
    const auto events = jsonLines(output(command));
    ASSERT_THAT(events, SizeIs(2));
    EXPECT_EQ(events[0]["eventStringHex"], hex);
    EXPECT_FALSE(events[1].contains("eventStringHex"));
  }
}

TEST_P(Reading, ShowsOneEventCompletely) {
  addThree();
  const std::string text = output({"show", "2"});
  EXPECT_THAT(text, HasSubstr("type:           activity (7)\n"));
  EXPECT_THAT(text, HasSubstr("msg:            disk full\n"));
  const Outcome missing = run({"show", "9"});
  EXPECT_EQ(missing.status, 1);
  EXPECT_THAT(missing.err, HasSubstr("there is no event 9 in the global queue"));
}

TEST_P(Reading, DoesNotMixTheQueues) {
  addDataSelection(4);
  addDataSelection(7);
  add("node1", 4);
  EXPECT_EQ(run({"show", "1", "--dsid", "4"}).status, 0);
  EXPECT_EQ(run({"show", "1", "--dsid", "7"}).status, 1);
  EXPECT_EQ(run({"show", "1"}).status, 1);
}

TEST_F(ReadingDirectly, ChangesNothing) {
  addThree();
  leaveAuditRecords({"waiting"});
  const auto before = std::filesystem::last_write_time(database());
  for (const Arguments& command : {Arguments{"list"}, Arguments{"show", "1"}, Arguments{"stats"}}) {
    output(command);
  }
  EXPECT_EQ(std::filesystem::last_write_time(database()), before);
  EXPECT_THAT(ids(), ElementsAre(1, 2, 3));
}

TEST_P(Reading, CountsWhatIsThere) {
  write("home/OrbCentral.ini", "[events]\ncount_limit=70\nage_limit_days=9\n");
  addThree();
  addDataSelection(4);
  add("node4", 4);
  output({"delete", "3"});
  const json stats = json::parse(output({"stats", "--json"}));
  EXPECT_EQ(stats["count"], 3);
  EXPECT_EQ(stats["countLimit"], 70);
  EXPECT_EQ(stats["ageLimitDays"], 9);
  ASSERT_EQ(stats["queues"].size(), 2u);
  const json& global = stats["queues"][0];
  EXPECT_EQ(global["dsid"], 0);
  EXPECT_EQ(global["count"], 2);
  EXPECT_EQ(global["highestId"], 3);
  EXPECT_EQ(global["types"], (json{{"serverstatus", 1}, {"activity", 1}}));
  EXPECT_LE(global["oldest"], global["newest"]);
  EXPECT_EQ(stats["queues"][1]["dsid"], 4);
  EXPECT_EQ(stats["queues"][1]["count"], 1);
  const std::string text = output({"stats"});
  EXPECT_THAT(text, HasSubstr("Limits of the global queue: 70 events; age 9 days."));
  for (const std::string& line : linesOf(text)) EXPECT_LE(line.size(), 80u) << line;
}

TEST_P(Reading, NextLeavesTheEventWhereItIs) {
  addThree();
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(json::parse(output({"next", "--json"}))["id"], 1);
  }
  EXPECT_EQ(json::parse(output({"next", "--json", "--after", "1"}))["id"], 2);
  EXPECT_EQ(output({"next", "--json", "--after", "3"}), "");
  EXPECT_EQ(output({"next", "--after", "3"}), "No event after 3 in the global queue.\n");
}

TEST_F(ReadingDirectly, FailsWhereThereIsNoDatabase) {
  for (const Arguments& command : {Arguments{"list"}, Arguments{"stats"}, Arguments{"show", "1"}}) {
    const Outcome outcome = run(command);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr(database().string()));
    EXPECT_FALSE(std::filesystem::exists(home()));
  }
}

TEST_P(ReadingWithoutTables, FindsEmptyQueues) {
  EXPECT_EQ(output({"list"}), "No events in the global queue.\n");
  EXPECT_EQ(output({"list", "--dsid", "4"}), "No events in the queue of data selection 4.\n");
  EXPECT_EQ(output({"list", "--json"}), "");
  EXPECT_EQ(json::parse(output({"stats", "--json"}))["count"], 0);
}

EVENTCTL_ANYWHERE(Reading);
EVENTCTL_ANYWHERE(ReadingWithoutTables);

}  // namespace
}  // namespace EventSystemTest
