// eventctl export, and what import makes of it.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "tests/e2e/EventctlAnywhere.h"
#include "tests/e2e/EventctlHome.h"

namespace EventSystemTest {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

using Out = Surroundings::Out;

std::string contentOf(const std::filesystem::path& file) {
  std::ostringstream text;
  text << std::ifstream(file).rdbuf();
  return text.str();
}

class Export : public EventctlAnywhere {
 protected:
  // One event of every kind, the texts as nasty as a line allows.
  void addEveryKind(unsigned int dsid) const {
    run({"import", "-", "--dsid", std::to_string(dsid)}, {.input = contentOf(DAY_EVENTS)});
    output({"import", "-", "--dsid", std::to_string(dsid)},
           {.input = activity("\x1b[2J \" ;}} \xff\xfe dsid=9 EVENT{") + "\n" +
                     serverStatus("caf\xe9", 7) + "\n"});
  }

  // What stays of an event when it is exported and imported again.
  std::vector<json> withoutIds(unsigned int dsid) const {
    auto events = jsonLines(output({"list", "--json", "--dsid", std::to_string(dsid)}));
    for (json& event : events) {
      for (const char* const key : {"id", "eventString", "eventStringHex"}) event.erase(key);
    }
    return events;
  }
};

using ExportDirectly = EventctlHome;

TEST_P(Export, IsTakenBackByImportWithTypesDatesTextsAndNewIds) {
  addDataSelection(4);
  addEveryKind(0);
  addEveryKind(4);
  const auto global = withoutIds(0);
  const auto selection = withoutIds(4);
  std::set<std::string> kinds;
  for (const json& event : global) kinds.insert(event["kind"].get<std::string>());
  ASSERT_THAT(kinds, SizeIs(9));
  ASSERT_GE(selection.size(), 100u);
  const std::string exported = output({"export", "--all-queues"});
  EXPECT_THAT(linesOf(exported), SizeIs(global.size() + selection.size()));
  output({"purge", "--yes", "--all-queues"});
  output({"import", "-", "--dsid", "4"}, {.input = exported});
  EXPECT_EQ(withoutIds(0), global);
  EXPECT_EQ(withoutIds(4), selection);
  EXPECT_EQ(ids().front(), global.size() + 1);
}

TEST_P(Export, WritesLinesThatNameTheirQueue) {
  addDataSelection(4);
  output({"import", "-", "--dsid", "4"}, {.input = serverStatus("a", 5) + "\n"});
  EXPECT_EQ(output({"export", "--dsid", "4"}),
            "dsid=4 EVENT{version:1;type:4;id:1;date:5;SERVERSTATUSEVENT{state:1;server:a;}}\n");
  EXPECT_EQ(output({"export"}), "");
  EXPECT_THAT(ids(4), ElementsAre(1));
}

TEST_P(Export, WritesWhatIsAskedFor) {
  add("a");
  output({"add", "legacy", "--payload", "x"});
  add("b");
  add("c");
  const auto lines = [&](Arguments options) {
    options.insert(options.begin(), "export");
    return linesOf(output(options));
  };
  EXPECT_THAT(lines({"--type", "legacy"}), ElementsAre(HasSubstr(";id:2;")));
  EXPECT_THAT(lines({"--after", "3"}), ElementsAre(HasSubstr(";id:4;")));
  EXPECT_THAT(lines({"--type", "4", "--limit", "2"}),
              ElementsAre(HasSubstr(";id:1;"), HasSubstr(";id:3;")));
}

TEST_P(Export, MakesAFileForItsOwnerOnly) {
  add("a");
  const auto file = write("x", "").parent_path() / "events.txt";
  EXPECT_EQ(output({"export", file.string()}), "Exported 1 event to " + file.string() + ".\n");
  EXPECT_EQ(contentOf(file), output({"export"}));
  struct stat status {};
  ASSERT_EQ(stat(file.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777u, 0600u);
  EXPECT_EQ(status.st_nlink, 1u);
}

TEST_P(Export, NeverReplacesWhatIsNoRegularFile) {
  add("a");
  const auto pipe = home() / "pipe";
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  const Outcome outcome = run({"export", "--force", pipe.string()});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("is no regular file, and is not replaced"));
  EXPECT_TRUE(std::filesystem::is_fifo(pipe));
}

TEST_P(Export, ReplacesNoFileUnasked) {
  add("a");
  const auto file = write("events.txt", "mine\n");
  const Outcome outcome = run({"export", file.string()});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("File exists; --force replaces it"));
  EXPECT_EQ(contentOf(file), "mine\n");
  output({"export", "--force", file.string()});
  EXPECT_EQ(contentOf(file), output({"export"}));
  const auto folder = file.parent_path();
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    EXPECT_TRUE(entry.path() == file || entry.path() == home()) << entry.path();
  }
}

TEST_F(ExportDirectly, NamesWhatCannotBeALine) {
  add("a");
  add("b");
  execute(database(),
          "UPDATE events SET eventstring = replace(eventstring, 'server:a', 'server:' || char(10)) "
          "WHERE id = 1");
  const Outcome outcome = run({"export"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(linesOf(outcome.out), ElementsAre(HasSubstr("server:b")));
  EXPECT_THAT(outcome.err, HasSubstr("event 1 of the global queue was left out: its text contains "
                                     "a line break"));
  execute(database(), "UPDATE events SET eventstring = 'nonsense' WHERE id = 1");
  EXPECT_THAT(run({"export"}).err, HasSubstr("its event string cannot be read"));
}

TEST_P(Export, LeavesNothingWhereItFails) {
  const auto file = home().parent_path() / "events.txt";
  EXPECT_EQ(run({"export", "--dsid", "9", file.string()}).status, 1);
  EXPECT_FALSE(std::filesystem::exists(file));
  add("a");
  EXPECT_THAT(run({"export", "/nowhere/at/all"}).err, HasSubstr("/nowhere/at/all"));
}

EVENTCTL_ANYWHERE(Export);

}  // namespace
}  // namespace EventSystemTest
