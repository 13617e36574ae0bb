// Reading the envelope and choosing the class: Event::fromString().

#include <string>
#include <typeinfo>

#include "EventSystem/AbilitiesEvent.h"
#include "tests/support/FakeHostTest.h"
#include "tests/unit/events/EventKinds.h"

namespace EventSystemTest {
namespace {

using namespace EventSystem;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Envelope : public FakeHostTest {};

const std::string kAbilities = ";ABILITIESEVENT{flags:0x1;server:a;}}";

LogLine foreignVersion(unsigned int version) {
  return info(0, "%s Event version (%u) is different than current version (%u)", "fromString",
              version, 1u);
}

// Refused before any class parser was asked: one line, preceded by those in `before`.
void expectInvalid(const std::string& text) {
  expectRefused(Event::fromString, text, kInvalid);
}

TEST_F(Envelope, NeedsAPlaceForTheEvent) {
  EXPECT_EQ(9, Event::fromString("EVENT{version:1;type:6;id:1;date:1", nullptr));
  EXPECT_EQ(9, Event::fromString(nullptr, nullptr));
  const LogLine line = error(9, "%s The event pointer is NULL.", "fromString");
  EXPECT_THAT(host().log(), ElementsAre(line, line));
}

TEST_F(Envelope, NeedsAText) {
  Event other(kAbilitiesEvent, kInlinePayload, 1, 1);
  Event* event = &other;
  EXPECT_EQ(9, Event::fromString(nullptr, &event));
  EXPECT_EQ(nullptr, event);
  EXPECT_THAT(host().log(),
              ElementsAre(error(9, "%s The event string buffer is NULL.", "fromString")));
}

TEST_F(Envelope, ReadsTheExampleOfACompleteString) {
  const std::string text =
      "EVENT{version:1;type:6;id:42;date:1700000000;ABILITIESEVENT{flags:0x3;server:node1;}}";
  const Parsed parsed = parse(text);
  ASSERT_EQ(0, parsed.code);
  EXPECT_EQ(text, written(*parsed.event));
}

TEST_F(Envelope, AnotherVersionIsToleratedAndAnnounced) {
  const Parsed parsed =
      parse("EVENT{version:2;type:6;id:5;date:7;ABILITIESEVENT{flags:0x1;server:a;}}");
  ASSERT_EQ(0, parsed.code);
  ASSERT_NE(nullptr, dynamic_cast<AbilitiesEvent*>(parsed.event.get()));
  EXPECT_EQ(5u, parsed.event->getId());
  EXPECT_EQ(7u, parsed.event->getDate());
  EXPECT_THAT(host().log(), ElementsAre(foreignVersion(2)));
  EXPECT_EQ("EVENT{version:1;type:6;id:5;date:7" + kAbilities, written(*parsed.event));
}

TEST_F(Envelope, VersionsAreUnsigned) {
  const std::pair<std::string, unsigned int> versions[] = {
      {"0", 0},  {"4294967295", 4294967295u}, {"-1", 4294967295u}, {"+9", 9}, {" \t10", 10},
      {"007", 7}};
  for (const auto& [text, number] : versions) {
    host().clearCalls();
    EXPECT_EQ(0, parse("EVENT{version:" + text + ";type:6;id:1;date:1" + kAbilities).code) << text;
    EXPECT_THAT(host().log(), ElementsAre(foreignVersion(number)));
  }
}

TEST_F(Envelope, TextsThatDoNotBeginAsAnEventAreInvalid) {
  for (const char* text :
       {"", "x", "EVENT", "EVENT{", "EVENT{version:", "EVENT{version:;type:6;id:1;date:1",
        "EVENT{version:x;type:6;id:1;date:1", " EVENT{version:1;type:6;id:1;date:1",
        "event{version:1;type:6;id:1;date:1", "EVENT {version:1;type:6;id:1;date:1",
        "EVENT{type:6;version:1;id:1;date:1", "EVENT{Version:1;type:6;id:1;date:1"}) {
    expectInvalid(text);
    expectInvalid(text + kAbilities);
  }
}

TEST_F(Envelope, TypeIdAndDateMustAllBeThere) {
  for (const char* text :
       {"EVENT{version:1", "EVENT{version:1;", "EVENT{version:1;type:6", "EVENT{version:1;type:6;",
        "EVENT{version:1;type:5;id:1;", "EVENT{version:1;type:5;id:1;date:",
        "EVENT{version:1;type:5;id:;date:1", "EVENT{version:1;type:;id:1;date:1",
        "EVENT{version:1;type:x;id:1;date:1", "EVENT{version:1;type:5;id:x;date:1",
        "EVENT{version:1;type:5;id:1;date:x", "EVENT{version:1;type:5;date:1;id:1",
        "EVENT{version:1 ;type:5;id:1;date:1", "EVENT{version:1;type:5 ;id:1;date:1",
        "EVENT{version:1.0;type:5;id:1;date:1", "EVENT{version:1;type:5;id:1,date:1",
        "EVENT{version:1;type:5;id:0x1;date:1", "EVENT{version:1;type:5;id:1;date:+"}) {
    expectInvalid(text);
  }
}

TEST_F(Envelope, AnInvalidStringOfAnotherVersionIsAnnouncedFirst) {
  const std::string text = "EVENT{version:3;type:5;id:1;";
  EXPECT_EQ(9, parse(text).code);
  EXPECT_THAT(host().log(), ElementsAre(foreignVersion(3), complaint(kInvalid, text)));
}

TEST_F(Envelope, TypesOutsideOneToNineAreInvalid) {
  for (const int type : {0, 10, 11, -1, -9, 2147483647, -2147483647 - 1}) {
    host().clearCalls();
    const Parsed parsed = parse(eventString(type, ""));
    EXPECT_EQ(9, parsed.code);
    EXPECT_EQ(nullptr, parsed.event);
    EXPECT_THAT(host().log(),
                ElementsAre(error(9, "%s Invalid event type: %d", "fromString", type)));
    EXPECT_EQ(9, parse(eventString(type, kAbilities)).code);
  }
}

TEST_F(Envelope, TheTypeNumberDecidesNotTheSection) {
  for (const Kind& kind : allKinds()) {
    for (int type = 1; type <= 9; ++type) {
      host().clearCalls();
      const std::string text = eventString(type, kind.section("text"));
      const Parsed parsed = parse(text);
      if (type == kind.type) {
        EXPECT_EQ(0, parsed.code);
        EXPECT_THAT(host().log(), IsEmpty());
      } else {
        EXPECT_EQ(9, parsed.code);
        EXPECT_EQ(nullptr, parsed.event);
        EXPECT_THAT(host().log(),
                    ElementsAre(complaint(kWrongType, text), complaint(kUnparsed, text)));
      }
    }
  }
}

TEST_F(Envelope, DateZeroStaysZero) {
  const Parsed parsed = parse(eventString(6, kAbilities, 0, 0));
  ASSERT_EQ(0, parsed.code);
  EXPECT_EQ(0u, parsed.event->getDate());
  EXPECT_EQ(0u, parsed.event->getId());
}

TEST_F(Envelope, NumbersMayHaveBlanksSignsAndZerosInFront) {
  const Parsed parsed = parse("EVENT{version: 1;type:\n+06;id: \t007;date:+8" + kAbilities);
  ASSERT_EQ(0, parsed.code);
  EXPECT_EQ("EVENT{version:1;type:6;id:7;date:8" + kAbilities, written(*parsed.event));
  EXPECT_THAT(host().log(), IsEmpty());
}

TEST_F(Envelope, ANegativeIdWrapsAround) {
  const Parsed parsed = parse("EVENT{version:1;type:6;id:-1;date:-2" + kAbilities);
  ASSERT_EQ(0, parsed.code);
  EXPECT_EQ(18446744073709551615ul, parsed.event->getId());
  EXPECT_EQ(18446744073709551614ul, parsed.event->getDate());
}

TEST_F(Envelope, AnIdTooLargeBecomesTheLargest) {
  const Parsed parsed =
      parse("EVENT{version:1;type:6;id:18446744073709551616;date:99999999999999999999999999" +
            kAbilities);
  ASSERT_EQ(0, parsed.code);
  EXPECT_EQ(18446744073709551615ul, parsed.event->getId());
  EXPECT_EQ(18446744073709551615ul, parsed.event->getDate());
}

TEST_F(Envelope, TextBetweenDateAndSectionIsPassedOver) {
  for (const char* junk : {"", " ", ";x:y", "}}", "; {[%n", "abc"}) {
    const Parsed parsed = parse(eventString(6, junk + kAbilities, 5, 7));
    ASSERT_EQ(0, parsed.code) << junk;
    EXPECT_EQ(eventString(6, kAbilities, 5, 7), written(*parsed.event));
  }
}

TEST_F(Envelope, FormatDirectivesInARefusedTextAreOnlyText) {
  expectInvalid("%n%s%n%d EVENT{version:1%n");
  expectInvalid("EVENT{version:1;type:%d;id:%lu;date:%lu");
}

}  // namespace
}  // namespace EventSystemTest
