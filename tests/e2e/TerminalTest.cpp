// What eventctl writes to a terminal, and not elsewhere.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "tests/e2e/EventctlHome.h"

namespace EventSystemTest {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

using Terminal = EventctlHome;
using Out = Surroundings::Out;

TEST_F(Terminal, GetsColours) {
  add("node1");
  EXPECT_THAT(output({"list"}, {.out = Out::kTerminal}), HasSubstr("\x1b[1m"));
  EXPECT_THAT(output({"list"}), Not(HasSubstr("\x1b")));
}

TEST_F(Terminal, GetsNoColoursWithNoColor) {
  add("node1");
  const std::string text = output({"list"}, {.out = Out::kTerminal, .environment = {"NO_COLOR=1"}});
  EXPECT_THAT(text, HasSubstr("node1"));
  EXPECT_THAT(text, Not(HasSubstr("\x1b")));
}

TEST_F(Terminal, GetsJsonAsItIs) {
  add("node1");
  EXPECT_EQ(output({"list", "--json"}, {.out = Out::kTerminal}), output({"list", "--json"}));
}

// A control sequence introducer, DEL, a turn of direction, and a letter that only programs see.
TEST_F(Terminal, IsNotCommandedByTheTextsOfEvents) {
  const std::string text = "a\u009b31m\u007f\u202eb\U000E0041c";
  output({"add", "legacy", "--payload", text});
  EXPECT_THAT(output({"export"}), HasSubstr(text));
  EXPECT_THAT(output({"export"}, {.out = Out::kTerminal}),
              HasSubstr(R"(a\u{9b}31m\x7f\u{202e}b\u{e0041}c)"));
  EXPECT_THAT(output({"list"}, {.environment = {"COLUMNS=200"}}),
              HasSubstr(R"(a\u{9b}31m\x7f\u{202e}b\u{e0041}c)"));
  const std::string listed = output({"list", "--json"});
  EXPECT_THAT(listed, HasSubstr(R"(a\u009b31m\u007f\u202eb\udb40\udc41c)"));
  EXPECT_THAT(jsonLines(listed).at(0)["eventString"].get<std::string>(), HasSubstr(text));
}

TEST_F(Terminal, DecidesHowLongARowIs) {
  output({"add", "legacy", "--payload", std::string(200, 'x')});
  const auto row = [&](const char* columns) {
    return linesOf(output({"list"}, {.environment = {std::string("COLUMNS=") + columns}})).back();
  };
  EXPECT_THAT(row("80"), HasSubstr("x\xe2\x80\xa6"));
  EXPECT_EQ(row("80").size(), 80u + 2);  // the ellipsis has three bytes
  EXPECT_EQ(row("120").size(), 120u + 2);
  EXPECT_THAT(row("400"), HasSubstr(std::string(200, 'x')));
  EXPECT_EQ(row("nonsense").size(), 80u + 2);
}

}  // namespace
}  // namespace EventSystemTest
