// eventctl import: good lines go in, bad lines are named.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include "tests/e2e/EventctlAnywhere.h"
#include "tests/e2e/EventctlHome.h"

namespace EventSystemTest {
namespace {

using namespace std::string_literals;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class Import : public EventctlAnywhere {
 protected:
  Outcome import(const std::string& text) const {
    return run({"import", write("events.txt", text).string()});
  }
};

using ImportDirectly = EventctlHome;

TEST_P(Import, KeepsTheOrderAndTheDatesOfAFile) {
  EXPECT_EQ(
      output({"import",
              write("e", serverStatus("a", 5) + "\n" + serverStatus("b", 3) + "\n").string()}),
      "Imported 2, refused 0.\n");
  const auto events = jsonLines(output({"list", "--json"}));
  ASSERT_THAT(events, SizeIs(2));
  EXPECT_EQ(events[0]["date"], 5);
  EXPECT_EQ(events[0]["fields"]["server"], "a");
  EXPECT_EQ(events[1]["date"], 3);
  EXPECT_EQ(events[1]["id"], 2);
}

TEST_P(Import, ReadsStandardInput) {
  EXPECT_EQ(output({"import", "-"}, {.input = serverStatus("a")}), "Imported 1, refused 0.\n");
}

TEST_P(Import, PassesOverBlankLinesAndComments) {
  EXPECT_EQ(import("# one\n\n" + serverStatus("a") + "\n\r\n \t\r\n#two\r\n").out,
            "Imported 1, refused 0.\n");
}

TEST_P(Import, ToleratesCarriageReturns) {
  EXPECT_EQ(import(serverStatus("a") + "\r\n" + serverStatus("b") + "\r\n").out,
            "Imported 2, refused 0.\n");
  EXPECT_EQ(json::parse(output({"show", "2", "--json"}))["fields"]["server"], "b");
}

TEST_P(Import, SendsLinesToTheirDataSelections) {
  addDataSelection(4);
  addDataSelection(7);
  const std::string file =
      write("e", "dsid=4 " + serverStatus("a") + "\n" + serverStatus("b") + "\ndsid=0 " +
                     serverStatus("c") + "\ndsid=2 " + serverStatus("d") + "\n")
          .string();
  output({"import", "--dsid", "7", file});
  EXPECT_THAT(ids(4), ElementsAre(1));
  EXPECT_THAT(ids(7), ElementsAre(2));
  EXPECT_THAT(ids(0), ElementsAre(1, 2));
}

TEST_P(Import, NamesEveryBadLineAndTakesTheOthers) {
  const std::string text = serverStatus("first") + "\n" +                          // 1
                           "no event\n" +                                          // 2
                           "EVENT{version:1;type:4;id:0;SERVERSTATUSEVENT{}}\n" +  // 3
                           "EVENT{version:1;type:0;id:0;date:1;\n" +               // 4
                           "EVENT{version:1;type:10;id:0;date:1;\n" +              // 5
                           "EVENT{version:1;type:5;id:0;date:1;" +
                           "SERVERSTATUSEVENT{state:1;server:a;}}\n" +   // 6
                           serverStatus(std::string(125, 'n')) + "\n" +  // 7
                           serverStatus("a") + " \n" +                   // 8
                           "dsid=x " + serverStatus("a") + "\n" +        // 9
                           "dsid=5 " + serverStatus("a") + "\n" +        // 10
                           serverStatus("nul\0byte"s) + "\n" +           // 11
                           std::string((1 << 20) + 1, 'x') + "\n" +      // 12
                           activity(std::string(1021, 'x')) + "\n" +     // 13
                           serverStatus("last");                         // 14
  const Outcome outcome = import(text);
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out, "Imported 2, refused 12.\n");
  const auto complaints = linesOf(outcome.err);
  ASSERT_THAT(complaints, SizeIs(12));
  const std::vector<const char*> expected = {
      "txt:2: it does not begin with \"EVENT{version:1;\"",
      "txt:3: its envelope does not read",
      "txt:4: its type 0 is not one of 1 to 9",
      "txt:5: its type 10 is not one of 1 to 9",
      "txt:6: an event of type 5 (capacity) needs a section CAPACITYEVENT",
      "txt:7: server is 125 bytes long; at most 124",
      "txt:8: it does not end in \";}}\"",
      "txt:9: it does not begin with \"dsid=N \"",
      "txt:10: data selection 5 does not exist; add it with: eventctl dataselection add 5",
      "txt:11: the line contains a NUL byte",
      "txt:12: the line is longer than 1,048,576 bytes",
      "txt:13: msg is 1021 bytes long; at most 1020"};
  for (std::size_t i = 0; i < expected.size(); ++i) {
    EXPECT_THAT(complaints[i], HasSubstr(expected[i]));
  }
  EXPECT_THAT(ids(), ElementsAre(1, 2));
}

TEST_P(Import, RefusesTextThatTheQueueWouldCut) {
  const std::string kelp =
      "EVENT{version:1;type:9;id:0;date:1;KELPEVENT{version:1;severity:1;issue:1;share_type:1;"
      "issue_duration:1;name:1;host:1;string:" +
      std::string(1021, 'x') + ";}}\n";
  const std::string audit =
      "EVENT{version:1;type:8;id:0;date:1;AUDITEVENT{version:1;action:1;time:1;loadSize:1;"
      "AUditMSg:" +
      std::string(2000, 'x') + ";}}\n";
  const Outcome outcome = import(kelp + audit);
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("txt:1: string is 1021 bytes long"));
  EXPECT_THAT(outcome.err, HasSubstr("txt:2: its database record would be "));
  EXPECT_THAT(ids(), IsEmpty());
}

TEST_P(Import, ShowsControlCharactersOfBadLinesAsEscapes) {
  const Outcome outcome = import("dsid=\x1b[2J4 x\n" + serverStatus("a\x1b[31m"));
  EXPECT_EQ(outcome.out, "Imported 1, refused 1.\n");
  EXPECT_EQ(outcome.err.find('\x1b'), std::string::npos);
}

TEST_P(Import, SumsUpAsJson) {
  const Outcome outcome = run({"import", "-", "--json"}, {.input = serverStatus("a") + "\nbad\n"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(json::parse(outcome.out), (json{{"imported", 1}, {"refused", 1}}));
}

TEST_P(Import, FailsForAFileThatCannotBeRead) {
  const Outcome missing = run({"import", "/nonexistent/file"});
  EXPECT_EQ(missing.status, 1);
  EXPECT_EQ(missing.err, "eventctl: cannot open /nonexistent/file: No such file or directory\n");
  const Outcome directory = run({"import", "/"});
  EXPECT_EQ(directory.status, 1);
  EXPECT_EQ(directory.err, "eventctl: cannot read /: Is a directory\n");
}

TEST_P(Import, SaysOnceThatTheQueueIsFull) {
  write("home/OrbCentral.ini", "[events]\ncount_limit=2\n");
  std::string text;
  for (int i = 0; i < 5; ++i) text += serverStatus("a") + "\n";
  const Outcome outcome = import(text);
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out, "Imported 2, refused 3.\n");
  const auto complaints = linesOf(outcome.err);
  ASSERT_THAT(complaints, SizeIs(2));
  EXPECT_THAT(complaints[0], HasSubstr("txt:3: the global queue is full"));
  EXPECT_THAT(complaints[1], HasSubstr("in all 3 events found the queue full"));
}

TEST_P(Import, TakesTheDayOfTheExamples) {
  addDataSelection(4);
  addDataSelection(7);
  std::ifstream file(DAY_EVENTS);
  unsigned long damaged = 0;
  unsigned long events = 0;
  for (std::string line; std::getline(file, line);) {
    if (line.starts_with("# Damaged")) ++damaged;
    if (!line.empty() && line[0] != '#') ++events;
  }
  ASSERT_GE(damaged, 8u);
  ASSERT_GE(events - damaged, 300u);
  const Outcome outcome = run({"import", DAY_EVENTS, "--json"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(json::parse(outcome.out), (json{{"imported", events - damaged}, {"refused", damaged}}));
  const json stats = json::parse(output({"stats", "--json"}));
  EXPECT_EQ(stats["count"], events - damaged);
  EXPECT_EQ(stats["queues"][0]["types"].size(), 9u);
}

TEST_P(Import, RefusesADateThatTheTablesDoNotHold) {
  std::string text = serverStatus("last", 9223372036854775807UL) + "\n";
  for (int i = 0; i < 4; ++i) text += serverStatus("late", 9223372036854775808UL) + "\n";
  const Outcome outcome = import(text + serverStatus("first", 1) + "\n");
  EXPECT_EQ(outcome.out, "Imported 2, refused 4.\n");
  EXPECT_THAT(outcome.err, HasSubstr("txt:5: its date 9223372036854775808 is above "
                                     "9223372036854775807"));
}

TEST_P(Import, RefusesWhatWouldBeStoredChanged) {
  const auto event = [](int type, const std::string& rest) {
    return "EVENT{version:1;type:" + std::to_string(type) + ";id:0;date:1;" + rest + "\n";
  };
  const std::vector<std::pair<std::string, const char*>> lines = {
      {event(6, "ABILITIESEVENT{flags:0x1FFFFFFFF;server:n;}}"), "\"flags:0xFFFFFFFF\", not as "},
      {event(5, "CAPACITYEVENT{capacity:-1;capacityphys:1;used:1;usedphys:2;server:n;}}"),
       "\"capacity:18446744073709551615\", not as \"capacity:-1\""},
      {event(5, "CAPACITYEVENT{capacity:1;capacityphys:1;used:1;usedphys:2;more:3;server:n;}}"),
       "\"server:n\", not as \"more:3\""},
      {event(4, "SERVERSTATUSEVENT{state:77;server:n;}}"), "\"state:1\", not as \"state:77\""},
      {event(4, "extra:5;SERVERSTATUSEVENT{state:1;server:n;}}"), "not as \"extra:5\""},
      {event(7, "{ACTIVITYEVENT{version:9;action:1;time:2;severity:3;msg:m;}}"),
       "\"version:1\", not as \"version:9\""},
      {event(7, "{ACTIVITYEVENT{version:1;action:99999999999;time:2;severity:3;msg:m;}}"),
       "not as \"action:99999999999\""},
      {event(6, "ABILITIESEVENT{flags:0x1;server:(NULL)node;}}"), "\"server:(NULL)\", not as "},
      {event(2, "IMAGEREPEVENT{size:1;path:/a/lsu:b;c;}}"), "\"lsu:b\", not as \"lsu:Tarnwell"},
  };
  std::string text;
  for (const auto& line : lines) text += line.first;
  const Outcome outcome = import(text);
  EXPECT_EQ(outcome.status, 1);
  const auto complaints = linesOf(outcome.err);
  ASSERT_THAT(complaints, SizeIs(lines.size()));
  for (std::size_t i = 0; i < lines.size(); ++i) {
    EXPECT_THAT(complaints[i], HasSubstr("would be stored as \""));
    EXPECT_THAT(complaints[i], HasSubstr(lines[i].second));
  }
  EXPECT_THAT(ids(), IsEmpty());
}

TEST_P(Import, TakesWhatOnlyLooksDifferent) {
  const Outcome outcome = import(
      "EVENT{version:2;type:4;id:77;date:007;SERVERSTATUSEVENT{state: 01;server:(NULL);}}\n"
      "EVENT{version:1;type:3;id:0;date:1;LSUSTATUSEVENT{state:+2;server:;}}\n"
      "EVENT{version:1;type:2;id:0;date:1;IMAGEREPEVENT{size:5;path:/a;b:c;}}\n"
      "EVENT{version:1;type:2;id:0;date:1;lsu:v:1;IMAGEREPEVENT{size:5;path:/a;}}\n"
      "EVENT{version:1;type:6;id:0;date:1;ABILITIESEVENT{flags:0x00ff;server:(NULL);}}\n"
      "EVENT{version:1;type:6;id:0;date:1;ABILITIESEVENT{flags:0x0;server:n;}}\n"
      "EVENT{version:1;type:7;id:0;date:1;ACTIVITYEVENT{version:1;action:-3;time:0;severity:00;"
      "msg:a {b;id:4;};c;}}\n"
      "EVENT{version:1;type:9;id:0;date:1;KELPEVENT{version:3;severity:1;issue:3;share_type:1;"
      "file_group:18446744073709551615;name:1;host:1;string:name:007;}}\n"
      "EVENT{version:1;type:1;id:0;date:1;LEGACYEVENT{payload:007;payload:x;}}\n");
  EXPECT_EQ(outcome.out, "Imported 9, refused 0.\n") << outcome.err;
}

TEST_F(ImportDirectly, AcknowledgesEachEventBeforeItAwaitsTheNextLine) {
  addDataSelection(4);
  for (const char* const durability : {"strict", "group", "relaxed"}) {
    std::ofstream(home() / "host.ini") << "[database]\ndurability = " << durability << '\n';
    const std::string first = std::to_string(ids().size() + 1);
    Program import(at({"import", "-", "--acknowledge"}), {.keepInputOpen = true});
    import.write("# a comment\n" + serverStatus("a") + "\n");
    ASSERT_TRUE(import.waitForOutput("2 0 " + first + "\n"));
    EXPECT_THAT(output({"list"}), HasSubstr("a state=1"));
    import.write("no event\n\ndsid=4 " + serverStatus("b") + "\n");
    ASSERT_TRUE(import.waitForOutput("5 4 "));
    import.closeInput();
    const Outcome outcome = import.wait();
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.out, ::testing::EndsWith("Imported 2, refused 1.\n"));
    EXPECT_THAT(linesOf(outcome.out), SizeIs(3));
  }
  EXPECT_THAT(ids(4), ElementsAre(1, 2, 3));
}

TEST_P(Import, AcknowledgesInJson) {
  addDataSelection(4);
  const auto lines =
      jsonLines(output({"import", "-", "--acknowledge", "--json"},
                       {.input = serverStatus("a") + "\ndsid=4 " + serverStatus("b") + "\n"}));
  EXPECT_THAT(lines, ElementsAre(json{{"line", 1}, {"dsid", 0}, {"id", 1}},
                                 json{{"line", 2}, {"dsid", 4}, {"id", 1}},
                                 json{{"imported", 2}, {"refused", 0}}));
}

TEST_P(Import, StopsWhenNobodyTakesItsAcknowledgements) {
  const Outcome outcome = run({"import", "-", "--acknowledge"},
                              {.out = Surroundings::Out::kBrokenPipe,
                               .input = serverStatus("a") + "\n" + serverStatus("b") + "\n"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(ids(), ElementsAre(1));
}

EVENTCTL_ANYWHERE(Import);

}  // namespace
}  // namespace EventSystemTest
