// eventctl token: made once, kept as a hash.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <fstream>
#include <sstream>
#include <string>

#include "tests/e2e/EventctlHome.h"

namespace EventSystemTest {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::MatchesRegex;
using ::testing::Not;
using ::testing::SizeIs;

class TokenCommand : public EventctlHome {
 protected:
  std::filesystem::path file() const { return home() / "eventd.tokens"; }

  static std::string contentOf(const std::filesystem::path& file) {
    std::ostringstream text;
    text << std::ifstream(file).rdbuf();
    return text.str();
  }
};

TEST_F(TokenCommand, PrintsATokenThatTheFileDoesNotHold) {
  const std::string token = output({"token", "add", "dashboard", "--role", "read"});
  EXPECT_THAT(token, MatchesRegex("evt_[A-Za-z0-9_-]{43}\n"));
  const std::string kept = contentOf(file());
  EXPECT_THAT(kept, HasSubstr("dashboard"));
  EXPECT_THAT(kept, Not(HasSubstr(token.substr(4, 20))));
  struct stat status {};
  ASSERT_EQ(stat(file().c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777u, 0600u);
  EXPECT_FALSE(std::filesystem::exists(database()));
}

TEST_F(TokenCommand, ListsNamesAndRoles) {
  EXPECT_EQ(output({"token", "list"}), "No tokens.\n");
  output({"token", "add", "dashboard", "--role", "read"});
  output({"token", "add", "backup", "--role", "admin"});
  const auto tokens = jsonLines(output({"token", "list", "--json"}));
  ASSERT_THAT(tokens, SizeIs(2));
  EXPECT_EQ(tokens[0]["name"], "dashboard");
  EXPECT_EQ(tokens[1]["role"], "admin");
  EXPECT_GT(tokens[1]["created"], 1700000000);
  EXPECT_THAT(output({"token", "list"}), HasSubstr("backup"));
}

TEST_F(TokenCommand, RemovesOne) {
  output({"token", "add", "dashboard", "--role", "read"});
  EXPECT_EQ(output({"token", "remove", "dashboard"}), "Token dashboard removed.\n");
  EXPECT_EQ(output({"token", "list", "--json"}), "");
  const Outcome outcome = run({"token", "remove", "dashboard"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("there is no token dashboard in " + file().string()));
}

TEST_F(TokenCommand, RefusesWhatItCannotMake) {
  output({"token", "add", "dashboard", "--role", "read"});
  EXPECT_EQ(run({"token", "add", "dashboard", "--role", "admin"}).status, 1);
  EXPECT_EQ(run({"token", "add", "a b", "--role", "admin"}).status, 1);
  EXPECT_EQ(run({"token", "add", "other", "--role", "root"}).status, 2);
  EXPECT_EQ(run({"token", "add", "other"}).status, 2);
  EXPECT_THAT(jsonLines(output({"token", "list", "--json"})), SizeIs(1));
}

TEST_F(TokenCommand, UsesTheFileThatIsNamed) {
  write("home/eventd.ini", "[access]\ntokens_file = mine\n");
  output({"token", "add", "one", "--role", "write"});
  EXPECT_THAT(contentOf(home() / "mine"), HasSubstr("one"));
  const auto other = home().parent_path() / "other";
  output({"token", "add", "two", "--role", "write", "--file", other.string()});
  EXPECT_THAT(contentOf(other), HasSubstr("two"));
  EXPECT_FALSE(std::filesystem::exists(file()));
}

TEST_F(TokenCommand, SaysThatATokenIsLostWhichCouldNotBePrinted) {
  const Outcome outcome = run({"token", "add", "dashboard", "--role", "read"},
                              {.out = Surroundings::Out::kFile, .outFile = "/dev/full"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("could not be printed, and is kept nowhere"));
}

}  // namespace
}  // namespace EventSystemTest
