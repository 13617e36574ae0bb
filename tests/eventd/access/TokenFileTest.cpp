#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "apps/common/Failure.h"
#include "apps/common/TokenFile.h"
#include "tests/support/TempDir.h"

namespace EventSystemTest {
namespace {

using EventApps::Failure;
using EventApps::Role;
using EventApps::TokenFile;
using ::testing::HasSubstr;
using ::testing::MatchesRegex;
using ::testing::Not;

class Tokens : public ::testing::Test {
 protected:
  std::filesystem::path file() const { return m_directory.path() / "home" / "eventd.tokens"; }

  std::string add(const std::string& name, Role role) const {
    std::string token;
    TokenFile::change(file(), [&](TokenFile& tokens) { token = tokens.add(name, role); });
    return token;
  }

  void write(const std::string& text, mode_t mode = 0600) const {
    std::filesystem::create_directories(file().parent_path());
    std::ofstream(file(), std::ios::binary) << text;
    ::chmod(file().c_str(), mode);
  }

  std::string content() const {
    std::ostringstream text;
    text << std::ifstream(file(), std::ios::binary).rdbuf();
    return text.str();
  }

  std::string refusal(const std::string& text, mode_t mode = 0600) const {
    write(text, mode);
    try {
      TokenFile::load(file());
    } catch (const Failure& problem) {
      return problem.what();
    }
    return "(loaded)";
  }

 private:
  TempDir m_directory;
};

const std::string kHash(64, 'a');

TEST_F(Tokens, AreNoneWithoutAFile) {
  EXPECT_TRUE(TokenFile::load(file()).tokens().empty());
  EXPECT_EQ(TokenFile::load(file()).find("evt_x"), nullptr);
}

TEST_F(Tokens, AreFoundByWhatTheyAreAndByNothingElse) {
  const std::string reader = add("dashboard", Role::kRead);
  const std::string writer = add("ingest-1", Role::kWrite);
  const TokenFile tokens = TokenFile::load(file());
  ASSERT_NE(tokens.find(reader), nullptr);
  EXPECT_EQ(tokens.find(reader)->name, "dashboard");
  EXPECT_EQ(tokens.find(reader)->role, Role::kRead);
  ASSERT_NE(tokens.find(writer), nullptr);
  EXPECT_EQ(tokens.find(writer)->name, "ingest-1");
  EXPECT_EQ(tokens.find(writer)->role, Role::kWrite);
  EXPECT_GT(tokens.find(writer)->created, 1700000000UL);
  for (const std::string& other :
       {reader + "x", reader.substr(1), std::string(), tokens.tokens()[0].sha256,
        std::string("dashboard"), reader + '\0'}) {
    EXPECT_EQ(tokens.find(other), nullptr) << other;
  }
}

TEST_F(Tokens, AreRandomAndUrlSafe) {
  std::set<std::string> seen;
  for (int i = 0; i < 50; ++i) {
    std::string name = "t";
    const std::string token = add(name.append(std::to_string(i)), Role::kRead);
    EXPECT_THAT(token, MatchesRegex("evt_[A-Za-z0-9_-]+"));
    EXPECT_EQ(token.size(), 4U + 43U);
    EXPECT_TRUE(seen.insert(token).second);
  }
}

TEST_F(Tokens, AreNotInTheFile) {
  const std::string token = add("one", Role::kAdmin);
  EXPECT_THAT(content(), Not(HasSubstr(token)));
  EXPECT_THAT(content(), Not(HasSubstr(token.substr(4))));
  EXPECT_THAT(content(), HasSubstr("[one]\nrole = admin\nsha256 = "));
}

TEST_F(Tokens, AreInAFileOfTheOwnerAlone) {
  const mode_t before = ::umask(0);
  add("one", Role::kRead);
  ::umask(before);
  struct stat status {};
  ASSERT_EQ(::stat(file().c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777, 0600U);
}

TEST_F(Tokens, HaveNamesOfTheirOwn) {
  add("one", Role::kRead);
  const std::string before = content();
  EXPECT_THROW(add("one", Role::kAdmin), Failure);
  for (const std::string& name :
       {std::string(), std::string("a b"), std::string("a]"), std::string("a\nb"),
        std::string("[x"), std::string("\xc3\xa4"), std::string(65, 'x')}) {
    EXPECT_THROW(add(name, Role::kRead), Failure) << name;
  }
  EXPECT_EQ(content(), before);
  EXPECT_NO_THROW(add(std::string(64, 'x'), Role::kRead));
}

TEST_F(Tokens, AreRemovedByName) {
  const std::string one = add("one", Role::kRead);
  const std::string two = add("two", Role::kRead);
  bool removed = false;
  TokenFile::change(file(), [&](TokenFile& tokens) {
    removed = tokens.remove("one");
    EXPECT_FALSE(tokens.remove("three"));
  });
  EXPECT_TRUE(removed);
  EXPECT_EQ(TokenFile::load(file()).find(one), nullptr);
  EXPECT_NE(TokenFile::load(file()).find(two), nullptr);
}

TEST_F(Tokens, StayAsTheyAreWhenAChangeFails) {
  add("one", Role::kRead);
  const std::string before = content();
  EXPECT_THROW(TokenFile::change(file(),
                                 [](TokenFile& tokens) {
                                   tokens.remove("one");
                                   throw Failure("changed my mind");
                                 }),
               Failure);
  EXPECT_EQ(content(), before);
}

TEST_F(Tokens, OfManyWritersAtOnceAreAllKept) {
  std::vector<std::thread> writers;
  for (int i = 0; i < 8; ++i) {
    writers.emplace_back([this, i] {
      for (int k = 0; k < 5; ++k) {
        std::string name = "w";
        add(name.append(std::to_string(i)).append("-").append(std::to_string(k)), Role::kRead);
      }
    });
  }
  for (std::thread& writer : writers) writer.join();
  EXPECT_EQ(TokenFile::load(file()).tokens().size(), 40U);
}

TEST_F(Tokens, AreRefusedWithFileSectionAndEntry) {
  const std::string place = file().string() + ": [one] ";
  EXPECT_EQ(refusal("[one]\nrole = root\nsha256 = " + kHash + "\n"),
            place + "role = \"root\": allowed is one of read write admin");
  EXPECT_THAT(refusal("[one]\nrole = read\nsha256 = " + kHash + "a\n"),
              HasSubstr(place + "sha256 = "));
  EXPECT_THAT(refusal("[one]\nrole = read\nsha256 = " + std::string(64, 'A') + "\n"),
              HasSubstr("lower-case"));
  EXPECT_THAT(refusal("[one]\nrole = read\n"), HasSubstr("[one] has no entry sha256"));
  EXPECT_THAT(refusal("[one]\nsha256 = " + kHash + "\n"), HasSubstr("[one] has no entry role"));
  EXPECT_THAT(refusal("[one]\nrole = read\nsha256 = " + kHash + "\ncreated = -1\n"),
              HasSubstr(place + "created = "));
  EXPECT_THAT(refusal("[one]\nrole = read\nsha256 = " + kHash + "\ntoken = x\n"),
              HasSubstr("role, sha256 and created"));
  EXPECT_THAT(refusal("[a b]\nrole = read\n"), HasSubstr("[a b]"));
  EXPECT_THAT(refusal("role = read\n"), HasSubstr("allowed is a section"));
  EXPECT_EQ(refusal("[one]\nrole = read\nsha256 = " + kHash + "\n"), "(loaded)");
}

TEST_F(Tokens, ThatOthersMayWriteAreRefused) {
  const std::string text = "[one]\nrole = read\nsha256 = " + kHash + "\n";
  EXPECT_THAT(refusal(text, 0620), HasSubstr("chmod 600 " + file().string()));
  EXPECT_THAT(refusal(text, 0602), HasSubstr("chmod 600"));
  EXPECT_EQ(refusal(text, 0644), "(loaded)");
}

}  // namespace
}  // namespace EventSystemTest
