// eventctl add: all nine kinds, and what is refused.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/e2e/EventctlAnywhere.h"
#include "tests/e2e/EventctlHome.h"

namespace EventSystemTest {
namespace {

using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class Add : public EventctlAnywhere {};

using AddDirectly = EventctlHome;

struct Kind {
  const char* name;
  Arguments fields;
  const char* section;
};

const std::vector<Kind> kKinds = {
    {"legacy", {"--payload", "job 17 done"}, ";LEGACYEVENT{payload:job 17 done;}}"},
    {"imagerep",
     {"--path", "/data/img.bin", "--size", "4096", "--lsu", "vol1"},
     ";lsu:vol1;IMAGEREPEVENT{size:4096;path:/data/img.bin;}}"},
    {"lsustatus", {"--server", "node1", "--state", "2"}, ";LSUSTATUSEVENT{state:2;server:node1;}}"},
    {"serverstatus",
     {"--server", "node1", "--state", "0"},
     ";SERVERSTATUSEVENT{state:0;server:node1;}}"},
    {"capacity",
     {"--server", "node1", "--capacity", "18446744073709551615", "--capacityphys", "800", "--used",
      "500", "--usedphys", "400"},
     ";CAPACITYEVENT{capacity:18446744073709551615;capacityphys:800;used:500;usedphys:400;"
     "server:node1;}}"},
    {"abilities",
     {"--server", "node1", "--flags", "0xFFFFFFFF"},
     ";ABILITIESEVENT{flags:0xFFFFFFFF;server:node1;}}"},
    {"activity",
     {"--action", "-3", "--time", "100", "--severity", "2", "--msg", "--disk full"},
     ";{ACTIVITYEVENT{version:1;action:-3;time:100;severity:2;msg:--disk full;}}"},
    {"audit",
     {"--action", "3", "--time", "100", "--msg", "user \"admin\" logged in"},
     ";AUDITEVENT{version:1;action:3;time:100;loadSize:0;AUditMSg:user \"admin\" logged in;}}"},
    {"kelp",
     {"--severity", "2", "--issue", "3", "--share-type", "1", "--file-group", "77", "--name", "4",
      "--host", "5", "--string", "full"},
     ";KELPEVENT{version:1;severity:2;issue:3;share_type:1;file_group:77;name:4;host:5;"
     "string:full;}}"},
};

TEST_P(Add, WritesEveryKindAsItsEventString) {
  for (std::size_t i = 0; i < kKinds.size(); ++i) {
    Arguments arguments = {"add", kKinds[i].name};
    arguments.insert(arguments.end(), kKinds[i].fields.begin(), kKinds[i].fields.end());
    EXPECT_EQ(output(arguments), std::to_string(i + 1) + "\n");
  }
  const auto events = jsonLines(output({"list", "--json"}));
  ASSERT_EQ(events.size(), kKinds.size());
  for (std::size_t i = 0; i < kKinds.size(); ++i) {
    EXPECT_EQ(events[i]["type"], i + 1);
    EXPECT_EQ(events[i]["kind"], kKinds[i].name);
    EXPECT_THAT(events[i]["eventString"].get<std::string>(), EndsWith(kKinds[i].section));
  }
}

TEST_P(Add, GivesTheWholeEventAsJson) {
  const json event = json::parse(output(
      {"--json", "add", "kelp", "--severity", "-2", "--issue", "5", "--share-type", "1",
       "--issue-duration", "60", "--name", "4", "--host", "5", "--string", "share; offline;}}"}));
  EXPECT_EQ(event["id"], 1);
  EXPECT_EQ(event["dsid"], 0);
  EXPECT_EQ(event["type"], 9);
  EXPECT_EQ(event["fields"]["severity"], -2);
  EXPECT_EQ(event["fields"]["issue_duration"], 60);
  EXPECT_FALSE(event["fields"].contains("file_group"));
  EXPECT_EQ(event["fields"]["string"], "share; offline;}}");
}

TEST_P(Add, GoesToTheQueueOfADataSelection) {
  addDataSelection(4);
  EXPECT_EQ(add("node1", 4), 1u);
  EXPECT_THAT(ids(4), ElementsAre(1));
  EXPECT_THAT(ids(), IsEmpty());
}

TEST_P(Add, TreatsTwoAsTheGlobalQueue) {
  add("node1", 2);
  EXPECT_THAT(ids(0), ElementsAre(1));
}

TEST_P(Add, SaysHowToAddADataSelectionThatDoesNotExist) {
  const Outcome outcome = run({"add", "legacy", "--payload", "x", "--dsid", "9"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err,
            "eventctl: data selection 9 does not exist in the dataselection table; add it with: "
            "eventctl dataselection add 9\n");
}

struct Refusal {
  Arguments arguments;
  const char* reason;
};

TEST_F(AddDirectly, RefusesValuesThatAreNone) {
  const std::vector<Refusal> refusals = {
      {{"lsustatus", "--server", "a", "--state", "3"}, "--state: '3' is not 0, 1 or 2"},
      {{"lsustatus", "--server", "a", "--state", "1x"}, "--state: '1x' is not 0, 1 or 2"},
      {{"abilities", "--server", "a", "--flags", "0xG"}, "--flags: '0xG' is neither"},
      {{"imagerep", "--path", "/p", "--size", "4294967296"}, "--size: '4294967296' is not a whole"},
      {{"activity", "--action", "", "--severity", "1", "--msg", "x"},
       "--action: '' is not a whole"},
      {{"legacy", "--payload", "two\nlines"}, "--payload: the text contains a line break"},
      {{"legacy", "--payload", std::string(1021, 'x')}, "1021 bytes long; at most 1020"},
      {{"serverstatus", "--server", std::string(125, 'n'), "--state", "1"}, "at most 124"},
  };
  for (const Refusal& refusal : refusals) {
    Arguments arguments = {"add"};
    arguments.insert(arguments.end(), refusal.arguments.begin(), refusal.arguments.end());
    const Outcome outcome = run(arguments);
    EXPECT_EQ(outcome.status, 2) << outcome.err;
    EXPECT_THAT(outcome.err, HasSubstr(refusal.reason));
  }
  EXPECT_FALSE(std::filesystem::exists(home()));
}

TEST_P(Add, TakesTheLongestTextsThatCanBeReadBack) {
  output({"add", "legacy", "--payload", std::string(1020, 'x')});
  output({"add", "serverstatus", "--server", std::string(124, 'n'), "--state", "1"});
  const auto events = jsonLines(output({"list", "--json"}));
  ASSERT_EQ(events.size(), 2u);
  EXPECT_EQ(events[0]["fields"]["payload"], std::string(1020, 'x'));
  EXPECT_EQ(events[1]["fields"]["server"], std::string(124, 'n'));
}

TEST_P(Add, RefusesAnEventThatDoesNotFitItsRecord) {
  const Outcome outcome = run({"add", "audit", "--action", "1", "--msg", std::string(2000, 'x')});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("the event was refused: its database record would be "));
  EXPECT_THAT(outcome.err, HasSubstr("at most 2047 fit; shorten the text by "));
}

// By how much an event is too long, as its refusal says.
std::size_t excessIn(const Outcome& refusal) {
  const std::string marker = "shorten the text by ";
  return std::stoul(refusal.err.substr(refusal.err.find(marker) + marker.size()));
}

TEST_P(Add, StoresTheLongestRecordsAndRefusesOneByteMore) {
  addDataSelection(4);
  for (const char* const dsid : {"0", "4"}) {
    const auto attempt = [&](std::size_t bytes) {
      return run({"add", "audit", "--time", "1", "--action", "1", "--dsid", dsid, "--msg",
                  std::string(bytes, 'x')});
    };
    const Outcome tooLong = attempt(1990);
    ASSERT_EQ(tooLong.status, 1) << dsid;
    const std::size_t excess = excessIn(tooLong);
    EXPECT_EQ(attempt(1990 - excess + 1).status, 1) << dsid;
    const Outcome fitting = attempt(1990 - excess);
    EXPECT_EQ(fitting.status, 0) << fitting.err;
    const json event = json::parse(
        output({"show", fitting.out.substr(0, fitting.out.size() - 1), "--json", "--dsid", dsid}));
    EXPECT_EQ(event["fields"]["AUditMSg"], std::string(1990 - excess, 'x'));
  }
}

TEST_F(AddDirectly, CountsWithTheIdThatAnEventOfADataSelectionGets) {
  addDataSelection(4);
  add("node1", 4);
  execute(database(),
          "INSERT INTO eventproperties (propname, propvalue) VALUES ('maxid_5', 123456788)");
  const auto attempt = [this](std::size_t bytes) {
    return run({"add", "audit", "--action", "1", "--dsid", "4", "--msg", std::string(bytes, 'x')});
  };
  const Outcome fitting = attempt(1990 - excessIn(attempt(1990)));
  EXPECT_EQ(fitting.out, "123456789\n") << fitting.err;
}

TEST_P(Add, RefusesWhatWouldReadBackAsAnotherEvent) {
  const std::vector<Refusal> refusals = {
      {{"capacity", "--server", "(NULL)", "--capacity", "1", "--capacityphys", "1", "--used", "1",
        "--usedphys", "1"},
       ""},
      {{"abilities", "--server", "(NULL)node", "--flags", "1"}, "it would read back as another"},
      {{"imagerep", "--path", "/p", "--size", "1", "--lsu", "a;b"},
       "it would read back as another"},
      {{"imagerep", "--path", "/p", "--size", "1", "--lsu", "IMAGEREPEVENT"}, "could not be read"},
      {{"audit", "--action", "1", "--msg", ""}, "could not be read back"},
  };
  for (const Refusal& refusal : refusals) {
    Arguments arguments = {"add"};
    arguments.insert(arguments.end(), refusal.arguments.begin(), refusal.arguments.end());
    const Outcome outcome = run(arguments);
    EXPECT_EQ(outcome.status, *refusal.reason == '\0' ? 0 : 1) << outcome.err;
    EXPECT_THAT(outcome.err, HasSubstr(refusal.reason));
  }
}

TEST_P(Add, AsksForTheFieldThatTheIssueNeeds) {
  const Arguments common = {"add",    "kelp", "--severity", "1", "--share-type", "1",
                            "--name", "1",    "--host",     "1", "--string",     "x"};
  const auto with = [&](const Arguments& more) {
    Arguments arguments = common;
    arguments.insert(arguments.end(), more.begin(), more.end());
    return run(arguments);
  };
  const Outcome noGroup = with({"--issue", "3"});
  EXPECT_EQ(noGroup.status, 2);
  EXPECT_THAT(noGroup.err, HasSubstr("--file-group: is required with --issue 3"));
  const Outcome wrongField = with({"--issue", "3", "--file-group", "1", "--issue-duration", "1"});
  EXPECT_EQ(wrongField.status, 2);
  EXPECT_THAT(wrongField.err, HasSubstr("--issue-duration: is not carried"));
  EXPECT_EQ(with({"--issue", "4"}).status, 2);
  EXPECT_EQ(with({"--issue", "4", "--issue-duration", "9"}).status, 0);
}

TEST_P(Add, TakesTheKeysOfTheEventStringForFieldsToo) {
  output({"add", "audit", "--action", "3", "--time", "1", "--loadSize", "7", "--AUditMSg", "x"});
  output({"add", "audit", "--action", "3", "--time", "1", "--load-size", "7", "--msg", "x"});
  const auto events = jsonLines(output({"list", "--json"}));
  ASSERT_EQ(events.size(), 2u);
  EXPECT_EQ(events[0]["fields"], events[1]["fields"]);
  EXPECT_EQ(events[0]["fields"]["loadSize"], 7);
}

TEST_F(AddDirectly, ListsTheFieldsOfEveryKind) {
  const std::string help = output({"add", "--help"});
  EXPECT_THAT(help, HasSubstr("  activity      --action N [--time N] --severity N --msg TEXT\n"));
  EXPECT_THAT(help, HasSubstr("  serverstatus  --state N --server TEXT\n"));
  for (const std::string& line : linesOf(help)) EXPECT_LE(line.size(), 80u) << line;
}

TEST_P(Add, SaysThatTheQueueIsFull) {
  write("home/OrbCentral.ini", "[events]\ncount_limit=2\n");
  add("node1");
  add("node2");
  const Outcome outcome = run({"add", "legacy", "--payload", "x"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("the global queue is full"));
  EXPECT_THAT(outcome.err, HasSubstr("OrbCentral.ini"));
  EXPECT_THAT(ids(), ElementsAre(1, 2));
}

TEST_P(Add, SaysThatTheEventIsStoredWhereItsIdCannotBePrinted) {
  addDataSelection(4);
  const auto attempt = [&](Surroundings::Out out) {
    return run({"add", "legacy", "--payload", "x", "--dsid", "4"},
               {.out = out, .outFile = "/dev/full"});
  };
  const Outcome full = attempt(Surroundings::Out::kFile);
  EXPECT_EQ(full.status, 1);
  EXPECT_THAT(full.err, HasSubstr("event 1 was stored in the queue of data selection 4, but "));
  EXPECT_THAT(full.err, HasSubstr("No space left on device"));
  const Outcome broken = attempt(Surroundings::Out::kBrokenPipe);
  EXPECT_EQ(broken.status, 1);
  EXPECT_THAT(broken.err, HasSubstr("event 2 was stored"));
  EXPECT_THAT(ids(4), ElementsAre(1, 2));
}

EVENTCTL_ANYWHERE(Add);

}  // namespace
}  // namespace EventSystemTest
