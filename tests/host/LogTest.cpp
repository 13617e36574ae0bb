#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <new>
#include <regex>
#include <string>
#include <string_view>
#include <vector>

#include "EventSystem/platform/HostLog.h"
#include "host/logging/Log.h"
#include "host/logging/LogObserver.h"
#include "tests/host/HostFixture.h"

namespace EventSystemTest {
namespace {

using EventSystemHost::LogLevel;
using EventSystemHost::LogObserver;

class Log : public HostTest {
 protected:
  void startWith(const std::string& section) {
    writeFile("host.ini", "[log]\n" + section);
    start();
  }
  std::filesystem::path file() const { return home() / "log" / "eventsystem.log"; }
};

TEST_F(Log, LineHasTimeLevelCodeAndText) {
  startWith("level = info\n");
  EXPECT_EQ(ErrorA(4, "%s read event %lu", "here", 7UL), 4);
  EXPECT_EQ(WarningA(50, "limit"), 50);
  EXPECT_EQ(InfoA(-1, "missing"), -1);
  stop();
  const std::string time = "[0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9:]{8}\\.[0-9]{3}[+-][0-9]{2}:[0-9]{2} ";
  const std::regex lines(time + "error 4 here read event 7\n" + time + "warning 50 limit\n" + time +
                         "info -1 missing\n");
  EXPECT_TRUE(std::regex_match(log(), lines)) << log();
}

TEST_F(Log, OneCallIsOneLineWhateverTheTextHolds) {
  startWith("level = info\n");
  ErrorA(4, "a\nb\rc\td\x1b[31m\x7f");
  EXPECT_NE(log().find("error 4 a\\nb\\rc\\td\\x1b[31m\\x7f\n"), std::string::npos) << log();
}

TEST_F(Log, KeepsALongLineWhole) {
  startWith("level = info\n");
  const std::string text(5000, 'x');
  ErrorA(4, "%s!", text.c_str());
  EXPECT_NE(log().find(text + "!\n"), std::string::npos);
}

TEST_F(Log, WritesWhatTheLevelLetsThrough) {
  startWith("level = warning\n");
  InfoA(0, "quiet");
  __Trace("quieter");
  WarningA(2, "loud");
  EXPECT_EQ(TraceOn(), 0);
  stop();
  EXPECT_EQ(log().find("quiet"), std::string::npos) << log();
  EXPECT_NE(log().find("warning 2 loud"), std::string::npos) << log();
}

TEST_F(Log, TracesWhenAsked) {
  startWith("level = trace\n");
  EXPECT_NE(TraceOn(), 0);
  __Trace("%s detail", "fine");
  stop();
  EXPECT_NE(log().find("trace 0 fine detail"), std::string::npos) << log();
  EXPECT_EQ(TraceOn(), 0);
}

TEST_F(Log, TellsObserversOfWarningsAndErrorsWhateverItsLevel) {
  for (const char* const level : {"off", "error", "trace"}) {
    startWith(std::string("level = ") + level + "\n");
    std::vector<std::string> told;
    const auto take = [&told](LogLevel of, int code, std::string_view message) {
      told.push_back((of == LogLevel::kError ? "error " : "warning ") + std::to_string(code) + " " +
                     std::string(message));
      ErrorA(5, "of the observer itself");
    };
    {
      const LogObserver observer(take);
      ErrorA(4, "read event %d\nfailed", 7);
      WarningA(50, "limit");
      InfoA(0, "nobody asks for this");
      __Trace("nor for this");
    }
    ErrorA(4, "too late");
    EXPECT_EQ(told, (std::vector<std::string>{"error 4 read event 7\nfailed", "warning 50 limit"}))
        << level;
  }
}

TEST_F(Log, WritesTheLineAndTellsTheNextOfAnObserverThatThrows) {
  startWith("level = error\n");
  int told = 0;
  const LogObserver thrower([](LogLevel, int, std::string_view) { throw std::bad_alloc(); });
  const LogObserver other([&told](LogLevel, int, std::string_view) { ++told; });
  ErrorA(4, "first");
  ErrorA(4, "second");
  EXPECT_EQ(told, 2);
  stop();
  EXPECT_NE(log().find("first"), std::string::npos) << log();
  EXPECT_NE(log().find("second"), std::string::npos) << log();
}

TEST_F(Log, IsSilentWhenOff) {
  startWith("level = off\n");
  ErrorA(4, "nothing");
  stop();
  EXPECT_EQ(log(), "");
}

// A level that is off must cost no formatting: the argument would crash it.
TEST_F(Log, DoesNotLookAtTheArgumentsOfALevelThatIsOff) {
  startWith("level = error\n");
  const char* const notText = reinterpret_cast<const char*>(8);
  EXPECT_EQ(InfoA(3, "%s", notText), 3);
  EXPECT_EQ(WarningA(3, "%s", notText), 3);
  __Trace("%s", notText);
}

TEST_F(Log, FlushesWarningsAtOnce) {
  startWith("level = info\n");
  InfoA(0, "first");
  WarningA(2, "second");
  EXPECT_NE(log().find("info 0 first"), std::string::npos) << log();
  EXPECT_NE(log().find("warning 2 second"), std::string::npos) << log();
}

TEST_F(Log, RotatesAndKeepsTheNumberOfFilesAskedFor) {
  startWith("level = info\nmax_bytes = 1024\nmax_files = 3\n");
  for (int i = 0; i < 100; ++i) WarningA(2, "line %d %s", i, std::string(80, '-').c_str());
  stop();
  int files = 0;
  for (const auto& entry : std::filesystem::directory_iterator(file().parent_path())) {
    ++files;
    EXPECT_LE(entry.file_size(), 1024U) << entry.path();
  }
  EXPECT_EQ(files, 3);
  EXPECT_NE(log().find("line 99"), std::string::npos);
}

TEST_F(Log, IsJsonWhenAsked) {
  startWith("level = info\nformat = json\n");
  EXPECT_EQ(ErrorA(4, "%s \"read\" event %lu", "here", 7UL), 4);
  InfoA(-1, "a\\b\n\tc\x01\x7f \xc3\xa4 \xf0\x9f\x98\x80");
  stop();
  const std::string time =
      "\\{\"time\":\"[0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9:]{8}\\.[0-9]{3}[+-][0-9]{2}:[0-9]{2}\",";
  const std::regex lines(
      time + R"("level":"error","code":4,"message":"here \\"read\\" event 7"\}\n)" + time +
      R"("level":"info","code":-1,"message":"a\\\\b\\n\\tc\\u0001\\u007f )" +
      "\xc3\xa4 \xf0\x9f\x98\x80\"\\}\n");
  EXPECT_TRUE(std::regex_match(log(), lines)) << log();
}

// What is no UTF-8 would make the line unreadable for those who read it as JSON.
TEST_F(Log, AsJsonIsUtf8WhateverTheTextHolds) {
  startWith("level = info\nformat = json\n");
  const std::string replacement = "\xef\xbf\xbd";
  for (const char* text : {"<\xff>", "<\x80>", "<\xc0>", "<\xf5>"}) InfoA(0, "%s", text);
  for (const char* text : {"<\xc3>", "<\xe2\x82>", "<\xed\xa0\x80>"}) InfoA(0, "%s", text);
  stop();
  std::string lines = log();
  std::size_t count = 0;
  for (std::size_t at = lines.find("<" + replacement); at != std::string::npos;
       at = lines.find("<" + replacement, at + 1)) {
    ++count;
  }
  EXPECT_EQ(count, 7U) << lines;
  EXPECT_EQ(lines.find('\xff'), std::string::npos);
  EXPECT_EQ(lines.find('\xed'), std::string::npos);
}

TEST_F(Log, AsJsonDoesNotOutliveItsHost) {
  startWith("level = info\nformat = json\n");
  stop();
  testing::internal::CaptureStderr();
  WarningA(2, "after");
  EXPECT_NE(testing::internal::GetCapturedStderr().find("warning 2 after"), std::string::npos);
}

TEST_F(Log, IsThereForOthersOnceFlushed) {
  startWith("level = info\n");
  InfoA(0, "patience");
  EXPECT_EQ(log().find("patience"), std::string::npos);
  EventSystemHost::flushLog();
  EXPECT_NE(log().find("patience"), std::string::npos);
}

TEST_F(Log, IsPrivateWhateverTheUmaskIs) {
  const mode_t before = umask(0);
  startWith("level = info\nmax_bytes = 1024\nmax_files = 3\n");
  for (int i = 0; i < 50; ++i) WarningA(2, "line %d %s", i, std::string(80, '-').c_str());
  stop();
  umask(before);
  struct stat status {};
  ASSERT_EQ(stat(file().parent_path().c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777, 0700U);
  for (const auto& entry : std::filesystem::directory_iterator(file().parent_path())) {
    ASSERT_EQ(stat(entry.path().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600U) << entry.path();
  }
}

TEST_F(Log, GoesToStandardErrorWhenTheFileIsADash) {
  testing::internal::CaptureStderr();
  startWith("level = info\nfile = -\n");
  InfoA(0, "to standard error");
  stop();
  const std::string output = testing::internal::GetCapturedStderr();
  EXPECT_NE(output.find("info 0 to standard error"), std::string::npos) << output;
  EXPECT_FALSE(std::filesystem::exists(file()));
}

TEST_F(Log, WithoutAHostSaysErrorsAndWarningsOnStandardError) {
  const auto speak = [] {
    testing::internal::CaptureStderr();
    ErrorA(4, "an error");
    WarningA(2, "a warning");
    InfoA(0, "information");
    __Trace("detail");
    return testing::internal::GetCapturedStderr();
  };
  const std::string before = speak();
  startWith("level = trace\n");
  stop();
  for (const std::string& output : {before, speak()}) {
    EXPECT_NE(output.find("error 4 an error"), std::string::npos) << output;
    EXPECT_NE(output.find("warning 2 a warning"), std::string::npos) << output;
    EXPECT_EQ(output.find("information"), std::string::npos) << output;
    EXPECT_EQ(output.find("detail"), std::string::npos) << output;
  }
}

TEST_F(Log, ThatCannotBeWrittenStopsTheHost) {
  writeFile("occupied", "a file");
  writeFile("host.ini", "[log]\nfile = occupied/eventsystem.log\n");
  try {
    start();
    FAIL() << "started";
  } catch (const EventSystemHost::HostError& problem) {
    EXPECT_NE(std::string(problem.what()).find("occupied"), std::string::npos) << problem.what();
  }
}

}  // namespace
}  // namespace EventSystemTest
