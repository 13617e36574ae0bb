// Issues of the file-share service, in both forms of their section.

#include <string>

#include "EventSystem/KelpEvent.h"
#include "tests/support/FakeHostTest.h"
#include "tests/unit/events/EventKinds.h"

namespace EventSystemTest {
namespace {

using namespace EventSystem;

constexpr int kLowest = -2147483647 - 1;

class KelpEvents : public FakeHostTest {};

std::string kelp(const std::string& content) {
  return ";KELPEVENT{" + content + ";}}";
}

void expectSame(const std::string& section) {
  EXPECT_EQ(section, rewritten(KelpEvent::fromString, section));
}

void expectFlaw(const std::string& content, const char* format) {
  expectRefused(KelpEvent::fromString, kelp(content), format);
}

TEST_F(KelpEvents, WriteTheirExamples) {
  KelpEvent group(1, 2, 3, 1, 60, 77, 4, 5, "quota exceeded", 1);
  EXPECT_EQ(
      ";KELPEVENT{version:1;severity:2;issue:3;share_type:1;file_group:77;name:4;host:5;"
      "string:quota exceeded;}}",
      writtenSection(group));
  KelpEvent duration(1, 2, 5, 1, 60, 77, 4, 5, "share offline", 1);
  EXPECT_EQ(
      ";KELPEVENT{version:1;severity:2;issue:5;share_type:1;issue_duration:60;name:4;host:5;"
      "string:share offline;}}",
      writtenSection(duration));
  expectSame(writtenSection(group));
  expectSame(writtenSection(duration));
}

TEST_F(KelpEvents, OnlyIssueThreeHasAFileGroup) {
  for (const int issue : {kLowest, -3, -1, 0, 1, 2, 3, 4, 30, 2147483647}) {
    KelpEvent event(1, 2, issue, 1, 60, 77, 4, 5, "s", 1);
    const std::string section = writtenSection(event);
    EXPECT_EQ(issue == 3, section.find("file_group:77;") != std::string::npos) << section;
    EXPECT_EQ(issue != 3, section.find("issue_duration:60;") != std::string::npos) << section;
    expectSame(section);
  }
}

TEST_F(KelpEvents, KeepExtremes) {
  KelpEvent group(kLowest, 2147483647, 3, kLowest, 0, 18446744073709551615ul, 2147483647, kLowest,
                  "s", 1);
  const std::string section = kelp(
      "version:-2147483648;severity:2147483647;issue:3;share_type:-2147483648;"
      "file_group:18446744073709551615;name:2147483647;host:-2147483648;string:s");
  EXPECT_EQ(section, writtenSection(group));
  expectSame(section);
  expectSame(kelp(
      "version:1;severity:1;issue:3;share_type:1;file_group:4294967296;name:1;host:1;string:s"));
  expectSame(
      kelp("version:1;severity:1;issue:4;share_type:1;issue_duration:-2147483648;name:1;host:1;"
           "string:s"));
}

TEST_F(KelpEvents, ANullStringReadsBackAsText) {
  KelpEvent event(1, 2, 5, 1, 60, 77, 4, 5, nullptr, 1);
  const std::string section = kelp(
      "version:1;severity:2;issue:5;share_type:1;issue_duration:60;name:4;host:5;string:(null)");
  EXPECT_EQ(section, writtenSection(event));
  expectSame(section);
}

TEST_F(KelpEvents, StringIsACopyAndMayBeEmpty) {
  std::string text = "before";
  KelpEvent event(1, 2, 5, 1, 60, 77, 4, 5, text.c_str(), 1);
  text = "after!";
  EXPECT_EQ(kelp("version:1;severity:2;issue:5;share_type:1;issue_duration:60;name:4;host:5;"
                 "string:before"),
            writtenSection(event));
  expectSame(
      kelp("version:1;severity:2;issue:5;share_type:1;issue_duration:60;name:4;host:5;string:"));
}

TEST_F(KelpEvents, LongStringsAreWrittenWholeAndReadBackCut) {
  const std::string text(5000, 's');
  KelpEvent event(1, 2, 5, 1, 60, 77, 4, 5, text.c_str(), 1);
  const std::string head =
      ";KELPEVENT{version:1;severity:2;issue:5;share_type:1;issue_duration:60;name:4;host:5;"
      "string:";
  EXPECT_EQ(head + text + ";}}", writtenSection(event));
  EXPECT_EQ(head + std::string(1020, 's') + ";}}",
            rewritten(KelpEvent::fromString, written(event)));
}

TEST_F(KelpEvents, NeedTheirFirstFourNumbers) {
  for (const char* content :
       {"severity:2;issue:3;share_type:1;file_group:7;name:4;host:5;string:s",
        "version:1;severity:2;issue:3;file_group:7;name:4;host:5;string:s",
        "version:1;severity:2;issue:x;share_type:1;file_group:7;name:4;host:5;string:s",
        "version:1;severity:2;issue:3;share_type:;file_group:7;name:4;host:5;string:s",
        "version:1;issue:3;severity:2;share_type:1;file_group:7;name:4;host:5;string:s", ""}) {
    expectFlaw(content, kBadFormat);
  }
}

TEST_F(KelpEvents, NeedTheNumberOfTheirForm) {
  expectFlaw("version:1;severity:2;issue:3;share_type:1;issue_duration:6;name:4;host:5;string:s",
             kNoFileGroup);
  expectFlaw("version:1;severity:2;issue:3;share_type:1;name:4;host:5;string:s", kNoFileGroup);
  expectFlaw("version:1;severity:2;issue:4;share_type:1;file_group:7;name:4;host:5;string:s",
             kNoDuration);
  expectFlaw("version:1;severity:2;issue:-3;share_type:1;name:4;host:5;string:s", kNoDuration);
}

TEST_F(KelpEvents, NeedTheThreeNumbersAfterIt) {
  for (const char* rest :
       {"file_group:;name:4;host:5", "file_group:x;name:4;host:5", "file_group:7;host:5;name:4",
        "file_group:7;name:4;host:", "file_group:7;name:;host:5", "file_group:7 ;name:4;host:5"}) {
    expectFlaw(std::string("version:1;severity:2;issue:3;share_type:1;") + rest + ";string:s",
               kBadFormat);
  }
  for (const char* rest : {"issue_duration:;name:4;host:5", "issue_duration:7;name:4;hosts:5",
                           "issue_duration:7;name:x;host:5"}) {
    expectFlaw(std::string("version:1;severity:2;issue:4;share_type:1;") + rest + ";string:s",
               kBadFormat);
  }
}

TEST_F(KelpEvents, NeedTheirString) {
  expectFlaw("version:1;severity:2;issue:3;share_type:1;file_group:7;name:4;host:5", kNoString);
  expectFlaw("version:1;severity:2;issue:4;share_type:1;issue_duration:7;name:4;host:5;String:s",
             kNoString);
  // A string in front of the form's number does not count.
  expectFlaw("version:1;severity:2;issue:3;share_type:1;string:s;file_group:7;name:4;host:5",
             kNoString);
}

TEST_F(KelpEvents, TheWholeTextMustEnd) {
  const std::string good =
      "KELPEVENT{version:1;severity:2;issue:4;share_type:1;issue_duration:7;name:4;host:5;string:";
  for (const char* rest : {"", "s", ";}", "s;}}x", "s;}} ", "}}"}) {
    expectRefused(KelpEvent::fromString, good + rest, kBadEnding);
  }
}

TEST_F(KelpEvents, ALongStringWithoutAnEndingIsRefusedAllTheSame) {
  const std::string head =
      "KELPEVENT{version:1;severity:2;issue:4;share_type:1;issue_duration:7;name:4;host:5;string:";
  expectRefused(KelpEvent::fromString, head + std::string(5000, 's'), kBadEnding);
}

TEST_F(KelpEvents, TheNumberOfTheFormIsFoundAnywhereInTheText) {
  EXPECT_EQ(kelp("version:1;severity:2;issue:3;share_type:1;file_group:8;name:9;host:10;string:t"
                 ";KELPEVENT{version:1;severity:2;issue:3;share_type:1"),
            rewritten(KelpEvent::fromString,
                      ";file_group:8;name:9;host:10;string:t"
                      ";KELPEVENT{version:1;severity:2;issue:3;share_type:1;}}"));
}

TEST_F(KelpEvents, WhatStandsBetweenTheNumbersAndTheStringIsPassedOver) {
  EXPECT_EQ(
      kelp("version:1;severity:2;issue:4;share_type:1;issue_duration:7;name:4;host:5;string:s"),
      rewritten(KelpEvent::fromString,
                kelp("version:1;severity:2;issue:4;share_type:1;x;issue_duration:7;name:4;"
                     "host:5 y;z:1;string:s")));
}

TEST_F(KelpEvents, NumbersAreReadAsTheCLibraryReadsThem) {
  EXPECT_EQ(kelp("version:1;severity:-2;issue:3;share_type:0;file_group:18446744073709551615;"
                 "name:7;host:-1;string:s"),
            rewritten(KelpEvent::fromString,
                      kelp("version: +1;severity:-2;issue:4294967299;share_type:4294967296;"
                           "file_group:-1;name:\t07;host:18446744073709551616;string:s")));
}

}  // namespace
}  // namespace EventSystemTest
