// What eventctl says to a command line that is wrong, and to one that asks.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/e2e/EventctlHome.h"

namespace EventSystemTest {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::MatchesRegex;
using ::testing::StartsWith;

using Usage = EventctlHome;

const std::vector<Arguments> kCommands = {
    {},
    {"add"},
    {"add", "legacy"},
    {"add", "imagerep"},
    {"add", "lsustatus"},
    {"add", "serverstatus"},
    {"add", "capacity"},
    {"add", "abilities"},
    {"add", "activity"},
    {"add", "audit"},
    {"add", "kelp"},
    {"import"},
    {"export"},
    {"list"},
    {"show"},
    {"stats"},
    {"next"},
    {"consume"},
    {"delete"},
    {"purge"},
    {"check"},
    {"backup"},
    {"restore"},
    {"dataselection"},
    {"dataselection", "add"},
    {"dataselection", "list"},
    {"dataselection", "remove"},
    {"token"},
    {"token", "add"},
    {"token", "list"},
    {"token", "remove"},
    {"demo"},
};

std::string joined(const Arguments& arguments) {
  std::string text = "eventctl";
  for (const std::string& argument : arguments) text += " " + argument;
  return text;
}

TEST_F(Usage, EveryCommandHelpsWithAnExample) {
  for (Arguments command : kCommands) {
    const std::string name = joined(command);
    command.emplace_back("--help");
    const Outcome outcome = runProgram(command);
    EXPECT_EQ(outcome.status, 0) << name;
    EXPECT_THAT(outcome.out, HasSubstr("Example:\n  " + name)) << name;
    EXPECT_THAT(outcome.err, IsEmpty()) << name;
    for (const std::string& line : linesOf(outcome.out)) EXPECT_LE(line.size(), 80u) << line;
  }
}

TEST_F(Usage, TellsItsVersion) {
  const Outcome outcome = runProgram({"--version"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.out, MatchesRegex("eventctl [0-9]+\\.[0-9]+\\.[0-9]+\n"));
}

TEST_F(Usage, IsRefusedWithStatusTwoWhenWrong) {
  const std::vector<Arguments> wrong = {
      {},
      {"unknown"},
      {"add"},
      {"add", "unknown"},
      {"add", "legacy"},
      {"add", "legacy", "--payload"},
      {"add", "legacy", "--payload", "x", "--unknown", "1"},
      {"import"},
      {"import", "a", "b"},
      {"list", "--unknown"},
      {"list", "--limit", "0"},
      {"list", "--limit", "-1"},
      {"list", "--after", "1x"},
      {"list", "--after", "18446744073709551616"},
      {"list", "--type", "nothing"},
      {"list", "--type", "10"},
      {"list", "extra"},
      {"show"},
      {"show", "0"},
      {"show", "abc"},
      {"delete"},
      {"delete", "1", "x"},
      {"consume", "--limit", "many"},
      {"purge", "--upto", "0"},
      {"export", "--type", "nothing"},
      {"backup"},
      {"restore"},
      {"dataselection"},
      {"dataselection", "remove"},
      {"stats", "--dsid", "-1"},
      {"stats", "--dsid", "4294967296"},
      {"stats", "--wait", "-1"},
      {"stats", "--wait", "soon"},
      {"stats", "--log-level", "loud"},
      {"stats", "--wait", "nan"},
      {"stats", "--wait", "-nan"},
      {"stats", "--wait", "inf"},
      {"--home"},
      {"stats", "--home", ""},
      {"stats", "--home="},
  };
  for (const Arguments& arguments : wrong) {
    const Outcome outcome = run(arguments);
    EXPECT_EQ(outcome.status, 2) << joined(arguments) << "\n" << outcome.err;
    EXPECT_THAT(outcome.out, IsEmpty()) << joined(arguments);
    EXPECT_THAT(outcome.err, StartsWith("eventctl: ")) << joined(arguments);
    EXPECT_THAT(outcome.err, HasSubstr("--help\n")) << joined(arguments);
    EXPECT_FALSE(std::filesystem::exists(home()));
  }
}

TEST_F(Usage, NamesTheCommandThatDoesNotExist) {
  EXPECT_EQ(run({"lst"}).err,
            "eventctl: there is no command or option 'lst'\neventctl: see eventctl --help\n");
  EXPECT_EQ(run({}).err, "eventctl: a command is required\neventctl: see eventctl --help\n");
}

TEST_F(Usage, TakesGlobalOptionsBeforeAndAfterTheCommand) {
  const std::string directory = home().string();
  EXPECT_EQ(runProgram({"--home", directory, "add", "legacy", "--payload", "x"}).status, 0);
  EXPECT_EQ(runProgram({"add", "legacy", "--payload", "x", "--home", directory}).status, 0);
  EXPECT_EQ(runProgram({"add", "--home", directory, "legacy", "--payload", "x"}).status, 0);
  const Outcome after = runProgram({"list", "--json", "--home", directory});
  const Outcome before = runProgram({"--home", directory, "--json", "list"});
  EXPECT_EQ(jsonLines(after.out).size(), 3u);
  EXPECT_EQ(after.out, before.out);
}

TEST_F(Usage, FindsItsHomeInTheEnvironment) {
  const std::string state = home().parent_path().string();
  const Outcome outcome =
      runProgram({"add", "legacy", "--payload", "x"}, {.environment = {"XDG_STATE_HOME=" + state}});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_TRUE(std::filesystem::exists(home().parent_path() / "eventsystem" / "events.db"));
}

TEST_F(Usage, LogsToStandardErrorWhenVerbose) {
  const Outcome outcome = run({"add", "legacy", "--payload", "x", "--verbose"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, "1\n");
  EXPECT_THAT(outcome.err, HasSubstr("newEvent Adding new event. type:1, dsid:0"));
  EXPECT_THAT(run({"next", "--verbose", "--log-level", "error"}).err, IsEmpty());
}

TEST_F(Usage, SaysWhatIsWrongWithTheConfiguration) {
  write("home/host.ini", "[database]\ndurability=maybe\n");
  const Outcome outcome = run({"next"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, StartsWith("eventctl: "));
  EXPECT_THAT(outcome.err, HasSubstr("host.ini"));
}

}  // namespace
}  // namespace EventSystemTest
