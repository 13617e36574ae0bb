// The events with a free message: activity, audit, legacy.

#include <algorithm>
#include <string>

#include "EventSystem/ActivityEvent.h"
#include "EventSystem/AuditEvent.h"
#include "EventSystem/LegacyEvent.h"
#include "tests/support/FakeHostTest.h"
#include "tests/unit/events/EventKinds.h"

namespace EventSystemTest {
namespace {

using namespace EventSystem;

constexpr int kLowest = -2147483647 - 1;

class MessageEvents : public FakeHostTest {};

std::string activity(const std::string& content) {
  return ";{ACTIVITYEVENT{" + content + ";}}";
}

std::string audit(const std::string& content) {
  return ";AUDITEVENT{" + content + ";}}";
}

std::string payloadOf(const std::string& text) {
  const Parsed parsed = parseWith(AuditEvent::fromString, text);
  EXPECT_EQ(0, parsed.code);
  auto* const event = dynamic_cast<AuditEvent*>(parsed.event.get());
  return event == nullptr ? "no audit event" : event->getPayload();
}

TEST_F(MessageEvents, ActivityWritesItsExample) {
  ActivityEvent event(3, 100, 2, "disk full", 1);
  const std::string section =
      ";{ACTIVITYEVENT{version:1;action:3;time:100;severity:2;msg:disk full;}}";
  EXPECT_EQ(section, writtenSection(event));
  EXPECT_EQ(section, rewritten(ActivityEvent::fromString, section));
}

TEST_F(MessageEvents, ActivityKeepsExtremes) {
  ActivityEvent event(kLowest, 18446744073709551615ul, 2147483647, "m", 1);
  const std::string section =
      activity("version:1;action:-2147483648;time:18446744073709551615;severity:2147483647;msg:m");
  EXPECT_EQ(section, writtenSection(event));
  EXPECT_EQ(section, rewritten(ActivityEvent::fromString, section));
}

TEST_F(MessageEvents, ActivityAlwaysWritesItsOwnVersion) {
  EXPECT_EQ(activity("version:1;action:3;time:100;severity:2;msg:m"),
            rewritten(ActivityEvent::fromString,
                      activity("version:5;action:3;time:100;severity:2;msg:m")));
}

TEST_F(MessageEvents, ActivityWritesANullMessageAsTheEmptyText) {
  ActivityEvent event(3, 100, 2, nullptr, 1);
  const std::string section = activity("version:1;action:3;time:100;severity:2;msg:");
  EXPECT_EQ(section, writtenSection(event));
  EXPECT_EQ(section, rewritten(ActivityEvent::fromString, section));
}

TEST_F(MessageEvents, ActivityCopiesItsMessage) {
  std::string message = "before";
  ActivityEvent event(3, 100, 2, message.c_str(), 1);
  message = "after!";
  EXPECT_EQ(activity("version:1;action:3;time:100;severity:2;msg:before"), writtenSection(event));
}

TEST_F(MessageEvents, ActivityTimeIsNotTheDate) {
  ActivityEvent event(3, 100, 2, "m", 1);
  EXPECT_NE(100u, event.getDate());
}

TEST_F(MessageEvents, ActivityReadsItselfWithAndWithoutTheExtraBrace) {
  const std::string section = activity("version:1;action:3;time:100;severity:2;msg:m");
  EXPECT_EQ(section, rewritten(ActivityEvent::fromString, ";" + section.substr(2)));
}

TEST_F(MessageEvents, ActivityNeedsAllFourNumbersInOrder) {
  for (const char* content :
       {"action:3;time:100;severity:2;msg:m", "version:1;time:100;severity:2;msg:m",
        "version:1;action:3;severity:2;msg:m", "version:1;action:3;time:100;msg:m",
        "version:1;action:3;time:100;severity:x;msg:m",
        "version:;action:3;time:100;severity:2;msg:m",
        "version:1;time:100;action:3;severity:2;msg:m", "msg:m"}) {
    expectRefused(ActivityEvent::fromString, activity(content), kBadFormat);
  }
}

TEST_F(MessageEvents, ActivityPassesOverWhatStandsBeforeTheMessage) {
  EXPECT_EQ(activity("version:1;action:3;time:100;severity:2;msg:m"),
            rewritten(ActivityEvent::fromString,
                      activity("version:1;action:3;time:100;severity:2 x;y:z;msg:m")));
}

TEST_F(MessageEvents, ShortEndingsOfAnActivityAreBad) {
  for (const char* rest : {"", "}", ";}", "abc"}) {
    expectRefused(ActivityEvent::fromString,
                  std::string("ACTIVITYEVENT{version:1;action:3;time:100;severity:2;msg:") + rest,
                  kBadEnding);
  }
}

TEST_F(MessageEvents, AuditKeepsExtremes) {
  char message[] = "m";
  AuditEvent event(message, kLowest, 2147483647, 18446744073709551615ul, kLowest, 1);
  const std::string section = audit(
      "version:-2147483648;action:2147483647;time:18446744073709551615;loadSize:-2147483648;"
      "AUditMSg:m");
  EXPECT_EQ(section, writtenSection(event));
  EXPECT_EQ(section, rewritten(AuditEvent::fromString, section));
}

TEST_F(MessageEvents, AuditMessageMustNotBeEmpty) {
  const std::string head = ";AUDITEVENT{version:1;action:1;time:1;loadSize:1;AUditMSg:";
  for (const char* rest : {";}}", "", "}", ";}", "abc", "x;}"}) {
    expectRefused(AuditEvent::fromString, head + rest, kEmptyMessage);
  }
  expectRefused(AuditEvent::fromString, head + "abcd", kBadEnding);
  EXPECT_EQ(head + "a;}}", rewritten(AuditEvent::fromString, head + "a;}}"));
}

TEST_F(MessageEvents, AuditKeyIsSpeltInItsOwnWay) {
  for (const char* key : {"AuditMsg", "AuditMSg", "AUDITMSG", "auditmsg"}) {
    expectRefused(AuditEvent::fromString,
                  audit(std::string("version:1;action:1;time:1;loadSize:1;") + key + ":m"),
                  kBadFormat);
  }
}

TEST_F(MessageEvents, AuditNeedsAllFourNumbersInOrder) {
  for (const char* content :
       {"action:1;time:1;loadSize:1;AUditMSg:m", "version:1;time:1;loadSize:1;AUditMSg:m",
        "version:1;action:1;loadSize:1;AUditMSg:m", "version:1;action:1;time:1;AUditMSg:m",
        "version:1;action:1;time:1;loadsize:1;AUditMSg:m",
        "version:1;action:1;time:1;loadSize:;AUditMSg:m"}) {
    expectRefused(AuditEvent::fromString, audit(content), kBadFormat);
  }
}

TEST_F(MessageEvents, AuditMessageBeginsAtTheFirstKeyOfTheWholeText) {
  const std::string section = audit("version:1;action:1;time:1;loadSize:1;AUditMSg:second");
  EXPECT_EQ("first" + section.substr(0, section.size() - 3),
            payloadOf(";AUditMSg:first" + section));
}

TEST_F(MessageEvents, AuditKeyInFrontOfTheTagIsEnough) {
  EXPECT_EQ("x;AUDITEVENT{version:1;action:2;time:3;loadSize:4",
            payloadOf(";AUditMSg:x;AUDITEVENT{version:1;action:2;time:3;loadSize:4;}}"));
}

TEST_F(MessageEvents, AuditOfAnImportedRowParses) {
  const std::string content =
      "version:1;action:2;time:1600000000;loadSize:3;AUditMSg:user logged in";
  const std::string text =
      "EVENT{version:1;type:8;id:0;date:1600000001;AUDITEVENT{" + content + ";}}";
  const Parsed parsed = parse(text);
  ASSERT_EQ(0, parsed.code);
  EXPECT_EQ(text, written(*parsed.event));
}

TEST_F(MessageEvents, AuditConstructorCutsAtItsArray) {
  for (const std::size_t length : {10238u, 10239u, 10240u, 20000u}) {
    std::string message(length, 'm');
    AuditEvent event(message.data(), 1, 1, 1, 1, 1);
    EXPECT_EQ(std::string(std::min<std::size_t>(length, 10239), 'm'), event.getPayload());
  }
}

TEST_F(MessageEvents, LegacyConstructorCutsAtItsArray) {
  for (const std::size_t length : {2046u, 2047u, 2048u, 20000u}) {
    std::string payload(length, 'p');
    LegacyEvent event(payload.data(), 1);
    EXPECT_EQ(std::string(std::min<std::size_t>(length, 2047), 'p'), event.getPayload());
  }
}

TEST_F(MessageEvents, ANullTextIsTheEmptyText) {
  AuditEvent audited(nullptr, 1, 2, 3, 4, 5);
  EXPECT_STREQ("", audited.getPayload());
  EXPECT_EQ(audit("version:1;action:2;time:3;loadSize:4;AUditMSg:"), writtenSection(audited));
  LegacyEvent legacy(nullptr, 5);
  EXPECT_STREQ("", legacy.getPayload());
  EXPECT_EQ(";LEGACYEVENT{payload:;}}", writtenSection(legacy));
}

TEST_F(MessageEvents, TheLongestAuditMessageIsWrittenWholeButReadsBackOnlyUpToItsLimit) {
  std::string message(10236, 'm');
  AuditEvent good(message.data(), 1, 1, 1, 1, 1);
  EXPECT_EQ(message, payloadOf(written(good)));
  message += 'm';
  AuditEvent tooLong(message.data(), 1, 1, 1, 1, 1);
  expectRefused(AuditEvent::fromString, written(tooLong), kBadEnding);
}

TEST_F(MessageEvents, ALongLegacyPayloadIsWrittenButNotReadBack) {
  std::string payload(2047, 'p');
  LegacyEvent event(payload.data(), 1);
  EXPECT_EQ(";LEGACYEVENT{payload:" + payload + ";}}", writtenSection(event));
  expectRefused(LegacyEvent::fromString, written(event), kBadEnding);
}

TEST_F(MessageEvents, AStoreSizedBufferCutsALongMessageAndTheCutTextIsRefused) {
  std::string message(3000, 'm');
  AuditEvent event(message.data(), 1, 1, 1, 1, 1);
  char buffer[2048];
  EXPECT_EQ(static_cast<int>(writtenSection(event).size()), event.toString(buffer, sizeof buffer));
  EXPECT_EQ(2047u, std::string(buffer).size());
  expectRefused(AuditEvent::fromString, buffer, kBadEnding);
}

TEST_F(MessageEvents, LegacyPayloadMustFollowTheTagAtOnce) {
  for (const char* section :
       {"LEGACYEVENT {payload:x;}}", "LEGACYEVENT{ payload:x;}}", "LEGACYEVENT{payload :x;}}",
        "LEGACYEVENT{Payload:x;}}", "LEGACYEVENT", "LEGACYEVENT{", "LEGACYEVENT{payload"}) {
    expectRefused(LegacyEvent::fromString, section, kBadFormat);
  }
}

TEST_F(MessageEvents, LegacyPayloadMayBeEmpty) {
  EXPECT_EQ(";LEGACYEVENT{payload:;}}",
            rewritten(LegacyEvent::fromString, ";LEGACYEVENT{payload:;}}"));
  expectRefused(LegacyEvent::fromString, "LEGACYEVENT{payload:", kBadEnding);
  expectRefused(LegacyEvent::fromString, "LEGACYEVENT{payload:}}", kBadEnding);
}

// Subclasses may supply another text: writing goes through getPayload().
class ForeignLegacy : public LegacyEvent {
 public:
  using LegacyEvent::LegacyEvent;
  char* getPayload() override { return m_foreign; }

 private:
  char m_foreign[8] = "foreign";
};

class ForeignAudit : public AuditEvent {
 public:
  using AuditEvent::AuditEvent;
  char* getPayload() override { return m_foreign; }

 private:
  char m_foreign[8] = "foreign";
};

TEST_F(MessageEvents, WritingAsksTheEventForItsPayload) {
  ForeignLegacy legacy(nullptr, 1);
  EXPECT_EQ(";LEGACYEVENT{payload:foreign;}}", writtenSection(legacy));
  ForeignAudit audited(nullptr, 1, 2, 3, 4, 5);
  EXPECT_EQ(audit("version:1;action:2;time:3;loadSize:4;AUditMSg:foreign"),
            writtenSection(audited));
}

}  // namespace
}  // namespace EventSystemTest
