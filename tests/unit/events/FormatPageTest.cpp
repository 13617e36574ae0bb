// The examples of docs/event-format.md are real: the library reads and writes exactly them.

#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <vector>

#include "tests/support/FakeHostTest.h"
#include "tests/unit/events/EventKinds.h"

namespace EventSystemTest {
namespace {

using namespace EventSystem;
using ::testing::ElementsAre;
using ::testing::Not;
using ::testing::StartsWith;

class FormatPage : public FakeHostTest {
 protected:
  // The lines of all blocks fenced as ```<language>.
  static std::vector<std::string> block(const std::string& language) {
    std::ifstream page(std::filesystem::path(EVENTSYSTEM_SOURCE_DIR) / "docs" / "event-format.md");
    EXPECT_TRUE(page.is_open());
    std::vector<std::string> lines;
    bool inside = false;
    for (std::string line; std::getline(page, line);) {
      if (line.starts_with("```")) {
        inside = !inside && line == "```" + language;
      } else if (inside) {
        lines.push_back(line);
      }
    }
    return lines;
  }
};

TEST_F(FormatPage, EveryExampleIsReadAndWrittenBackByteForByte) {
  const std::vector<std::string> examples = block("event");
  std::set<int> types;
  for (const std::string& example : examples) {
    const Parsed parsed = parse(example);
    ASSERT_EQ(0, parsed.code) << example;
    EXPECT_EQ(example, written(*parsed.event));
    types.insert(parsed.event->getType());
  }
  EXPECT_THAT(types, ElementsAre(1, 2, 3, 4, 5, 6, 7, 8, 9));
  EXPECT_THAT(host().log(), ::testing::IsEmpty());
}

// Pairs of lines: what a reader accepts, and what it then writes.
TEST_F(FormatPage, EveryToleratedExampleIsReadAndWrittenAsThePageSays) {
  const std::vector<std::string> lines = block("tolerated");
  ASSERT_FALSE(lines.empty());
  ASSERT_EQ(0u, lines.size() % 2);
  for (std::size_t i = 0; i < lines.size(); i += 2) {
    const Parsed parsed = parse(lines[i]);
    ASSERT_EQ(0, parsed.code) << lines[i];
    EXPECT_EQ(lines[i + 1], written(*parsed.event));
    EXPECT_THAT(lines[i], Not(lines[i + 1]));
  }
}

// Pairs of lines: what a reader refuses, and the first complaint in the log.
TEST_F(FormatPage, EveryRefusedExampleIsRefusedForTheStatedReason) {
  const std::vector<std::string> lines = block("refused");
  ASSERT_FALSE(lines.empty());
  ASSERT_EQ(0u, lines.size() % 2);
  for (std::size_t i = 0; i < lines.size(); i += 2) {
    host().clearCalls();
    EXPECT_EQ(9, parse(lines[i]).code) << lines[i];
    ASSERT_FALSE(host().log().empty());
    EXPECT_THAT(host().log().front().text, StartsWith("fromString " + lines[i + 1]));
  }
}

}  // namespace
}  // namespace EventSystemTest
