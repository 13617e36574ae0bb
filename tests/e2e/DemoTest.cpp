// eventctl demo: the tour runs, and is fit for a plain terminal.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <string>

#include "tests/e2e/EventctlHome.h"

namespace EventSystemTest {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

class Demo : public EventctlHome {
 protected:
  // With a temporary directory of its own, to see what is left in it.
  Outcome runDemo(const Arguments& more = {}) const {
    std::filesystem::create_directories(home());
    Arguments arguments = {"demo"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return runProgram(arguments, {.environment = {"TMPDIR=" + home().string()}});
  }
};

std::ptrdiff_t columnsOf(const std::string& line) {
  return std::count_if(line.begin(), line.end(),
                       [](char c) { return (static_cast<unsigned char>(c) & 0xC0u) != 0x80u; });
}

TEST_F(Demo, ShowsEverythingAndLeavesNothing) {
  const Outcome outcome = runDemo();
  EXPECT_EQ(outcome.status, 0) << outcome.out << outcome.err;
  EXPECT_THAT(outcome.err, IsEmpty());
  EXPECT_THAT(outcome.out, Not(HasSubstr("[FAILED]")));
  EXPECT_THAT(outcome.out, HasSubstr("$ eventctl --home demo import day.events"));
  EXPECT_THAT(outcome.out, HasSubstr("$ eventctl --home demo check --fix"));
  EXPECT_THAT(outcome.out, HasSubstr("11 of 11 checks passed"));
  EXPECT_TRUE(std::filesystem::is_empty(home()));
}

TEST_F(Demo, FitsATerminalOfEightyColumns) {
  for (const std::string& line : linesOf(runDemo().out)) {
    EXPECT_LE(columnsOf(line), 80) << line;
    EXPECT_EQ(line.find('\x1b'), std::string::npos) << line;
  }
}

TEST_F(Demo, TakesAnotherFileOfEvents) {
  std::string events;
  for (int i = 0; i < 12; ++i) events += serverStatus("node" + std::to_string(i)) + "\n";
  events += "dsid=4 " + serverStatus("mail") + "\n";
  const Outcome outcome = runDemo({"--events", write("my.events", events).string()});
  EXPECT_EQ(outcome.status, 0) << outcome.out << outcome.err;
  EXPECT_THAT(outcome.out, HasSubstr("13 event lines: 13 imported, 0 refused"));
}

TEST_F(Demo, FailsWhereACheckFails) {
  const Outcome outcome = runDemo({"--events", write("two.events", serverStatus("a")).string()});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.out, HasSubstr("[FAILED]"));
  EXPECT_TRUE(std::filesystem::is_empty(home()));
}

TEST_F(Demo, RemovesItsDirectoryWhenItIsInterrupted) {
  std::filesystem::create_directories(home());
  Program demo({"demo"}, {.environment = {"TMPDIR=" + home().string()}});
  ASSERT_TRUE(demo.waitForOutput("Data selection 4 added."));
  demo.signal(SIGTERM);
  const Outcome outcome = demo.wait();
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "eventctl: the tour was interrupted\n");
  EXPECT_TRUE(std::filesystem::is_empty(home()));
}

TEST_F(Demo, FailsForAMissingFileAndAForeignHome) {
  const Outcome missing = runDemo({"--events", "/nonexistent"});
  EXPECT_EQ(missing.status, 1);
  EXPECT_THAT(missing.err, HasSubstr("cannot read /nonexistent"));
  EXPECT_EQ(runDemo({"--json"}).status, 1);
}

}  // namespace
}  // namespace EventSystemTest
