// The rules of the house that a compiler does not know, each as a test that names every breach.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <regex>
#include <string>
#include <vector>

#include "tests/tidy/SourceTree.h"

namespace EventSystemTest {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

using Breaches = std::vector<std::string>;

std::string place(const SourceFile& file, std::size_t line, const std::string& what) {
  return "\n" + file.path + ":" + std::to_string(line) + ": " + what;
}

// The lines of a text that match, as breaches.
void findLines(const SourceFile& file, const std::string& text, const std::regex& pattern,
               Breaches& breaches) {
  const std::vector<std::string> lines = linesOf(text);
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (std::regex_search(lines[i], pattern)) breaches.push_back(place(file, i + 1, lines[i]));
  }
}

// What a file includes in quotes, and what in angle brackets, that `allowed` does not match.
Breaches foreignIncludes(const std::vector<SourceFile>& files, const std::regex& quoted,
                         const std::regex& bracketed) {
  static const std::regex include("^\\s*#\\s*include\\s*([\"<])([^\">]*)[\">].*");
  Breaches breaches;
  for (const SourceFile& file : files) {
    const std::vector<std::string> lines = linesOf(file.text);
    for (std::size_t i = 0; i < lines.size(); ++i) {
      std::smatch match;
      if (!std::regex_match(lines[i], match, include)) continue;
      const std::regex& allowed = match[1] == "\"" ? quoted : bracketed;
      if (!std::regex_match(match[2].str(), allowed)) {
        breaches.push_back(place(file, i + 1, lines[i]));
      }
    }
  }
  return breaches;
}

const std::regex kAnything(".*");

TEST(Tree, IsThere) {
  EXPECT_GT(allFiles().size(), 50u);
  EXPECT_GT(cppFiles({"include"}).size(), 20u);
  EXPECT_GT(cppFiles({"src"}).size(), 20u);
}

TEST(IncludeDirections, PublicHeadersUsePublicHeadersAndTheStandardLibrary) {
  EXPECT_THAT(foreignIncludes(cppFiles({"include"}), std::regex("EventSystem/.*"),
                              std::regex("[a-z]+|pthread\\.h")),
              IsEmpty());
}

TEST(IncludeDirections, TheLibraryKnowsItsPublicHeadersAndItsOwnFolder) {
  EXPECT_THAT(foreignIncludes(cppFiles({"src"}), std::regex("EventSystem/.*|[A-Za-z]+\\.h"),
                              std::regex("[a-z0-9_]+|(pthread|sqlite3)\\.h|boost/filesystem.*|"
                                         "boost/system.*")),
              IsEmpty());
}

TEST(IncludeDirections, TheHostNeverKnowsTheInsideOfTheLibrary) {
  EXPECT_THAT(foreignIncludes(cppFiles({"host"}), std::regex("(?!src/|tests/|apps/|\\.\\.).*"),
                              std::regex("(?!src/|tests/|apps/).*")),
              IsEmpty());
}

TEST(IncludeDirections, ProgramsKnowPublicHeadersAndTheHost) {
  const std::regex quoted("(EventSystem|host|apps)/.*|[A-Za-z_]+\\.h");
  EXPECT_THAT(
      foreignIncludes(cppFiles({"apps", "examples"}), quoted, std::regex("(?!src/|tests/).*")),
      IsEmpty());
}

TEST(IncludeDirections, NoPathLeadsUpwards) {
  EXPECT_THAT(foreignIncludes(cppFiles(), std::regex("(?!.*\\.\\./).*"), kAnything), IsEmpty());
}

TEST(Headers, OpenWithTheirPurpose) {
  Breaches breaches;
  for (const SourceFile& file : cppFiles()) {
    if (file.isHeader() && !file.text.starts_with("// ")) {
      breaches.push_back(place(file, 1, linesOf(file.text).front()));
    }
  }
  EXPECT_THAT(breaches, IsEmpty());
}

TEST(Headers, SayWhatThreadsMayDo) {
  Breaches breaches;
  for (const SourceFile& file : cppFiles()) {
    const bool exempt = file.path == "include/EventSystem/Export.h" ||
                        file.path == "include/EventSystem/ResultCode.h";
    if (file.isHeader() && !exempt && file.text.find("Thread safety:") == std::string::npos) {
      breaches.push_back(place(file, 1, "no word on thread safety"));
    }
  }
  EXPECT_THAT(breaches, IsEmpty());
}

TEST(CppFiles, HaveLinesOfAHundredColumnsAtMost) {
  Breaches breaches;
  for (const SourceFile& file : cppFiles()) {
    const std::vector<std::string> lines = linesOf(file.text);
    for (std::size_t i = 0; i < lines.size(); ++i) {
      const auto columns = std::count_if(lines[i].begin(), lines[i].end(),
                                         [](char c) { return (c & '\xc0') != '\x80'; });
      if (columns > 100) breaches.push_back(place(file, i + 1, lines[i]));
    }
  }
  EXPECT_THAT(breaches, IsEmpty());
}

TEST(CppFiles, EndTheirLinesCleanly) {
  Breaches breaches;
  for (const SourceFile& file : cppFiles()) {
    findLines(file, file.text, std::regex("[ \t\r]$|\t"), breaches);
    if (!file.text.ends_with("\n") || file.text.ends_with("\n\n")) {
      breaches.push_back(place(file, linesOf(file.text).size(), "end of file"));
    }
  }
  EXPECT_THAT(breaches, IsEmpty());
}

// Whether a build description names the file, as a word of its own.
bool lists(const SourceFile& build, const SourceFile& file) {
  if (build.name() != "CMakeLists.txt" || !file.path.starts_with(build.folder())) return false;
  const std::string below = file.path.substr(build.folder().size());
  const auto isBoundary = [&](std::size_t at) {
    return at >= build.text.size() ||
           std::string(" \n\t()\"").find(build.text[at]) != std::string::npos;
  };
  for (std::size_t at = build.text.find(below); at != std::string::npos;
       at = build.text.find(below, at + 1)) {
    if ((at == 0 || isBoundary(at - 1)) && isBoundary(at + below.size())) return true;
  }
  return false;
}

TEST(CppFiles, AreListedInABuild) {
  Breaches breaches;
  for (const SourceFile& file : cppFiles()) {
    const bool listed =
        !file.isCpp() || std::any_of(allFiles().begin(), allFiles().end(),
                                     [&](const SourceFile& build) { return lists(build, file); });
    if (!listed) breaches.push_back("\n" + file.path);
  }
  EXPECT_THAT(breaches, IsEmpty());
}

TEST(Lists, KnowsWholeNamesOnly) {
  const SourceFile build{"a/CMakeLists.txt", "SOURCES\n  DSEvent.cpp\n  b/Event.cpp)"};
  EXPECT_TRUE(lists(build, {"a/DSEvent.cpp", ""}));
  EXPECT_TRUE(lists(build, {"a/b/Event.cpp", ""}));
  EXPECT_FALSE(lists(build, {"a/b/vent.cpp", ""}));
  EXPECT_FALSE(lists(build, {"a/Event.cpp", ""}));
  EXPECT_FALSE(lists(build, {"a/SEvent.cpp", ""}));
  EXPECT_FALSE(lists(build, {"b/DSEvent.cpp", ""}));
}

TEST(CppFiles, HaveFunctionsOfSeventyLinesAtMost) {
  Breaches breaches;
  for (const SourceFile& file : cppFiles({"src", "host", "apps"})) {
    for (const Function& function : functionsOf(file.text)) {
      if (function.length > 70) {
        breaches.push_back(place(file, function.line,
                                 std::to_string(function.length) + " lines: " + function.head));
      }
    }
  }
  EXPECT_THAT(breaches, IsEmpty());
}

TEST(CppFiles, UseNoCallThatCannotBeBounded) {
  const std::regex banned("\\b(sprintf|vsprintf|strcpy|strcat|system|gets)\\s*\\(");
  Breaches breaches;
  for (const SourceFile& file : cppFiles()) {
    findLines(file, codeOnly(file.text), banned, breaches);
  }
  EXPECT_THAT(breaches, IsEmpty());
}

// Lines where the object's owner stands elsewhere: the interface hands it out, a handle's
// destructor deletes it, or it lives as long as the process.
struct AllowedNew {
  const char* path;
  const char* code;
};
constexpr AllowedNew kAllowedNews[] = {
    {"host/database/OrbDB.cpp", "m_impl(new Impl(*other.m_impl))"},
    {"tests/support/FakeDatabase.cpp", "m_impl = new Impl(other.m_impl->name)"},
    {"tests/support/TestStores.h", "*event = "},
    {"tests/unit/storage/HashEventStorageTest.cpp", "*event = "},
    {"tests/unit/storage/QueueLimitsTest.cpp", "*event = "},
};

bool isAllowed(const SourceFile& file, const std::string& statement) {
  return std::any_of(std::begin(kAllowedNews), std::end(kAllowedNews), [&](const AllowedNew& one) {
    return file.path == one.path && statement.find(one.code) != std::string::npos;
  });
}

// The statement around a place in code.
std::string statementAt(const std::string& code, std::size_t at) {
  const std::size_t before = code.find_last_of(";{}", at);
  const std::size_t start = before == std::string::npos ? 0 : before + 1;
  return code.substr(start, code.find(';', at) - start);
}

TEST(CppFiles, GiveEveryNewObjectAnOwnerInTheSameStatement) {
  const std::regex made("\\bnew\\b");
  const std::regex owned(
      "operator new|# "
      "*include|_ptr<|_ptr\\(|make_unique<|AddGlobalTestEnvironment|reset\\(|EventPtr\\(");
  Breaches breaches;
  for (const SourceFile& file : cppFiles()) {
    const std::string code = codeOnly(file.text);
    for (std::sregex_iterator hit(code.begin(), code.end(), made), end; hit != end; ++hit) {
      const auto at = static_cast<std::size_t>(hit->position());
      const std::string statement = statementAt(code, at);
      if (!std::regex_search(statement, owned) && !isAllowed(file, statement)) {
        const auto line = 1 + std::count(code.begin(), code.begin() + hit->position(), '\n');
        breaches.push_back(place(file, static_cast<std::size_t>(line), statement));
      }
    }
  }
  EXPECT_THAT(breaches, IsEmpty());
}

TEST(Texts, LeaveNothingToBeDoneLater) {
  const std::regex pattern(std::string("\\b(FIX") + "ME|TO" + "DO|X" + "XX)\\b");
  Breaches breaches;
  for (const SourceFile& file : allFiles()) findLines(file, file.text, pattern, breaches);
  EXPECT_THAT(breaches, IsEmpty());
}

// The sources speak for themselves: they do not refer to papers that their reader does not have.
TEST(Texts, ReferToNothingOutsideTheRepository) {
  const std::regex pattern(std::string("\\b[Ss]pecific") + "ations?\\b|\\bspec" + "\\.md|\\b[Pp]" +
                           "arts? [0-9]+\\.[0-9]|\\bP" + "arts? [0-9]|\\bdes" + "ign\\.md|\\bst" +
                           "yle\\.md|\\bsha" + "red/|\\b(issue|GH|PR) ?#[0-9]|\\bthe sp" + "ec\\b");
  Breaches breaches;
  for (const SourceFile& file : allFiles()) {
    findLines(file, file.text, pattern, breaches);
    if (std::regex_search(file.path, pattern)) breaches.push_back("\n" + file.path);
  }
  EXPECT_THAT(breaches, IsEmpty());
}

// The text of the one file; empty when there is none.
std::string textOf(const std::string& path) {
  const auto file = std::find_if(allFiles().begin(), allFiles().end(),
                                 [&](const SourceFile& one) { return one.path == path; });
  return file == allFiles().end() ? "" : file->text;
}

TEST(Changelog, TellsOfTheVersionThatIsBuilt) {
  const std::string build = textOf("CMakeLists.txt");
  std::smatch version;
  ASSERT_TRUE(std::regex_search(build, version, std::regex("EventSystem VERSION ([0-9.]+)")));
  EXPECT_THAT(textOf("CHANGELOG.md"), HasSubstr("\n## " + version[1].str() + " "));
}

TEST(Changelog, HasOneSectionForEachVersion) {
  const std::regex section(
      "## \\[?(Unreleased|[0-9]+\\.[0-9]+\\.[0-9]+)\\]?( \\(?(- "
      ")?[0-9]{4}-[0-9]{2}-[0-9]{2}\\)?)?");
  std::size_t sections = 0;
  for (const std::string& line : linesOf(textOf("CHANGELOG.md"))) {
    if (!line.starts_with("## ")) continue;
    ++sections;
    EXPECT_TRUE(std::regex_match(line, section)) << line;
  }
  EXPECT_GT(sections, 0u);
}

// The means of the tests above see what they are meant to see.

TEST(CodeOnly, BlanksCommentsAndLiterals) {
  EXPECT_EQ("a();       \nb(\"   \", ' ');", codeOnly("a(); // c()\nb(\"c()\", '}');"));
  EXPECT_EQ("a    \n    b", codeOnly("a /*x\nx*/ b"));
  EXPECT_EQ("x = \"    \";", codeOnly("x = \"\\\"){\";"));
  EXPECT_EQ(std::string("x = ") + std::string(8, ' ') + ";", codeOnly("x = R\"(a\"b)\";"));
  EXPECT_EQ("1'000 + f(' ')", codeOnly("1'000 + f('{')"));
}

TEST(FunctionsOf, MeasuresFromHeadToClosingBrace) {
  const std::vector<Function> found = functionsOf(
      "namespace n {\nint kTable[] = {1, 2};\nstruct S {\n  int inside() { return 1; }\n};\n"
      "void\nlonger(int a)\n{\n  if (a) {\n    a = 2;\n  }\n}\n}\n");
  ASSERT_THAT(found, SizeIs(2));
  EXPECT_EQ(4u, found[0].line);
  EXPECT_EQ(1u, found[0].length);
  EXPECT_EQ(6u, found[1].line);
  EXPECT_EQ(7u, found[1].length);
}

TEST(LinesOf, SplitsAtLineEnds) {
  EXPECT_THAT(linesOf("a\n\nb"), ElementsAre("a", "", "b"));
}

}  // namespace
}  // namespace EventSystemTest
