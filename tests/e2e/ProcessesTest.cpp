// Several eventctl processes on one database.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "tests/e2e/EventctlHome.h"

namespace EventSystemTest {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

// An import from a pipe writes for as long as the pipe is open.
class Processes : public EventctlHome {
 protected:
  void SetUp() override {
    m_writer = std::make_unique<Program>(at({"import", "-"}), Surroundings{.keepInputOpen = true});
    m_writer->write(serverStatus("held") + "\n");
    while (run({"list", "--json"}).out.find("held") == std::string::npos) {
    }
  }

  void finishWriter() {
    m_writer->closeInput();
    EXPECT_EQ(m_writer->wait().out, "Imported 1, refused 0.\n");
  }

  std::unique_ptr<Program> m_writer;
};

TEST_F(Processes, ReadBesideAWriter) {
  EXPECT_THAT(ids(), ElementsAre(1));
  EXPECT_EQ(json::parse(output({"stats", "--json"}))["count"], 1);
  EXPECT_EQ(json::parse(output({"show", "1", "--json"}))["fields"]["server"], "held");
  finishWriter();
}

TEST_F(Processes, FailAfterTheWaitWithTheOwnerOfTheDatabase) {
  const Outcome outcome = run({"add", "legacy", "--payload", "x", "--wait", "0.1"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr(database().string()));
  EXPECT_THAT(outcome.err, HasSubstr(std::to_string(m_writer->pid())));
  finishWriter();
  EXPECT_THAT(ids(), ElementsAre(1));
}

TEST_F(Processes, WaitForTheirTurn) {
  Program second(at({"add", "legacy", "--payload", "x", "--wait", "60"}));
  Program third(at({"add", "legacy", "--payload", "y", "--wait", "60"}));
  finishWriter();
  EXPECT_EQ(second.wait().status, 0);
  EXPECT_EQ(third.wait().status, 0);
  EXPECT_THAT(ids(), ElementsAre(1, 2, 3));
}

TEST_F(Processes, LoseNothingOfAWriterThatIsKilled) {
  m_writer.reset();
  EXPECT_THAT(ids(), ElementsAre(1));
  EXPECT_EQ(add("next"), 2u);
}

}  // namespace
}  // namespace EventSystemTest
