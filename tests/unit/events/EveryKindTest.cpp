// What all kinds of events have in common when they are written.

#include <ctime>
#include <string>
#include <thread>
#include <typeinfo>

#include "tests/support/FakeHostTest.h"
#include "tests/unit/events/EventKinds.h"

namespace EventSystemTest {

using namespace EventSystem;
using ::testing::ElementsAre;
using ::testing::Ge;
using ::testing::IsEmpty;
using ::testing::Le;

namespace {

constexpr char kCanary = '\x5a';

class EveryKind : public FakeHostTest, public ::testing::WithParamInterface<Kind> {};

INSTANTIATE_TEST_SUITE_P(Events, EveryKind, ::testing::ValuesIn(allKinds()), nameOfKind);

TEST_P(EveryKind, KnowsItsTypeAndId) {
  const EventPtr event = GetParam().make("text", 18446744073709551615ul);
  EXPECT_EQ(GetParam().type, event->getType());
  EXPECT_EQ(18446744073709551615ul, event->getId());
}

TEST_P(EveryKind, IsStampedWithTheTimeOfItsConstruction) {
  const auto before = static_cast<unsigned long>(time(nullptr));
  const EventPtr event = GetParam().make("text", 1);
  const auto after = static_cast<unsigned long>(time(nullptr));
  EXPECT_THAT(event->getDate(), Ge(before));
  EXPECT_THAT(event->getDate(), Le(after));
}

TEST_P(EveryKind, WritesEnvelopeAndSection) {
  const EventPtr event = GetParam().make("some text", 42);
  EXPECT_EQ(eventString(GetParam().type, GetParam().section("some text"), 42, event->getDate()),
            written(*event));
  EXPECT_THAT(host().log(), IsEmpty());
}

TEST_P(EveryKind, ReturnsTheLengthOfWhatItWroteLast) {
  const EventPtr event = GetParam().make("some text", 42);
  char buffer[1024];
  EXPECT_EQ(GetParam().section("some text").size() - GetParam().halfway,
            static_cast<std::size_t>(event->toString(buffer, sizeof buffer)));
}

TEST_P(EveryKind, FillsABufferOfAnySizeAndNotAByteMore) {
  const EventPtr event = GetParam().make("some text", 42);
  const std::string whole = written(*event);
  const int expected =
      static_cast<int>(GetParam().section("some text").size() - GetParam().halfway);
  for (std::size_t size = 0; size <= whole.size() + 1; ++size) {
    SCOPED_TRACE(size);
    std::string buffer(whole.size() + 16, kCanary);
    EXPECT_EQ(expected, event->toString(buffer.data(), size));
    std::string wanted(buffer.size(), kCanary);
    if (size > 0) {
      wanted.replace(0, size - 1, whole, 0, size - 1);
      wanted[size - 1] = '\0';
    }
    ASSERT_EQ(wanted, buffer);
  }
}

TEST_P(EveryKind, RefusesToWriteIntoNothing) {
  const EventPtr event = GetParam().make("text", 1);
  const int result = event->toString(nullptr, 2048);
  if (GetParam().name == "AuditEvent") {
    EXPECT_EQ(0, result);
    EXPECT_THAT(host().log(), IsEmpty());
  } else {
    EXPECT_EQ(9, result);
    EXPECT_THAT(host().log(), ElementsAre(error(9, "%s The string buffer is NULL.", "toString")));
  }
}

TEST_P(EveryKind, ParsesBackWhatItWrote) {
  const EventPtr event = GetParam().make("some text", 42);
  const Parsed parsed = parse(written(*event));
  ASSERT_EQ(0, parsed.code);
  ASSERT_NE(nullptr, parsed.event);
  Event& before = *event;
  Event& after = *parsed.event;
  EXPECT_TRUE(typeid(before) == typeid(after));
  EXPECT_EQ(GetParam().type, parsed.event->getType());
  EXPECT_EQ(42u, parsed.event->getId());
  EXPECT_EQ(event->getDate(), parsed.event->getDate());
  EXPECT_EQ(written(*event), written(*parsed.event));
  EXPECT_THAT(host().log(), IsEmpty());
}

TEST_P(EveryKind, TakesIdAndDateFromTheEnvelope) {
  for (const unsigned long value : {0ul, 1ul, 4294967296ul, 18446744073709551615ul}) {
    const Parsed parsed =
        parse(eventString(GetParam().type, GetParam().section("x"), value, value));
    ASSERT_EQ(0, parsed.code);
    EXPECT_EQ(value, parsed.event->getId());
    EXPECT_EQ(value, parsed.event->getDate());
  }
}

TEST_P(EveryKind, ClassParserLeavesTheEnvelopeToItsCaller) {
  const auto before = static_cast<unsigned long>(time(nullptr));
  const Parsed parsed = parseWith(GetParam().parse, GetParam().line("x"));
  ASSERT_EQ(0, parsed.code);
  EXPECT_EQ(0u, parsed.event->getId());
  EXPECT_THAT(parsed.event->getDate(), Ge(before));
  EXPECT_EQ(GetParam().type, parsed.event->getType());
}

TEST_P(EveryKind, ClassParserNeedsNoEnvelopeAtAll) {
  EXPECT_EQ(GetParam().section("x"), rewritten(GetParam().parse, GetParam().section("x")));
}

TEST_P(EveryKind, ClassParserRefusesANullEventPointer) {
  EXPECT_EQ(9, GetParam().parse(GetParam().line("x").c_str(), nullptr));
  EXPECT_EQ(9, GetParam().parse(nullptr, nullptr));
  const LogLine line = error(9, "%s The event pointer is NULL.", "fromString");
  EXPECT_THAT(host().log(), ElementsAre(line, line));
}

TEST_P(EveryKind, ClassParserRefusesANullText) {
  const EventPtr other = GetParam().make("x", 1);
  Event* event = other.get();
  EXPECT_EQ(9, GetParam().parse(nullptr, &event));
  EXPECT_EQ(nullptr, event);
  EXPECT_THAT(host().log(),
              ElementsAre(error(9, "%s The event string buffer is NULL.", "fromString")));
}

TEST_P(EveryKind, ClassParserRefusesEveryOtherKindsText) {
  for (const Kind& other : allKinds()) {
    if (other.type != GetParam().type) {
      expectRefused(GetParam().parse, other.line("some text"), kWrongType);
    }
  }
}

TEST_P(EveryKind, ClassParserRefusesTextsWithoutItsTag) {
  expectRefused(GetParam().parse, "", kWrongType);
  expectRefused(GetParam().parse, eventString(GetParam().type, ""), kWrongType);
  std::string lowerCase = GetParam().line("x");
  const std::size_t at = lowerCase.find(GetParam().tag);
  lowerCase[at] = static_cast<char>(lowerCase[at] + ('a' - 'A'));
  expectRefused(GetParam().parse, lowerCase, kWrongType);
}

TEST_P(EveryKind, AFlawedSectionIsReportedByTheClassAndThenAsAWhole) {
  const std::string flawed[] = {eventString(GetParam().type, ""),
                                eventString(GetParam().type, ";" + GetParam().tag + "{}}"),
                                GetParam().line("some text") + " "};
  const char* const formats[] = {kWrongType, kBadFormat, kBadEnding};
  for (std::size_t i = 0; i < std::size(flawed); ++i) {
    host().clearCalls();
    const Parsed parsed = parse(flawed[i]);
    EXPECT_EQ(9, parsed.code);
    EXPECT_EQ(nullptr, parsed.event);
    EXPECT_THAT(host().log(),
                ElementsAre(complaint(formats[i], flawed[i]), complaint(kUnparsed, flawed[i])));
  }
}

TEST_P(EveryKind, ManyThreadsMayWriteAndParseAtOnce) {
  const Kind& kind = GetParam();
  std::vector<std::thread> threads;
  std::vector<int> good(4, 0);
  for (int& count : good) {
    threads.emplace_back([&kind, &count] {
      for (unsigned long id = 1; id <= 200; ++id) {
        const std::string text = "text " + std::to_string(id);
        const EventPtr event = kind.make(text, id);
        const Parsed parsed = parse(written(*event));
        if (parsed.event != nullptr && written(*parsed.event) == written(*event)) ++count;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_THAT(good, ElementsAre(200, 200, 200, 200));
}

}  // namespace
}  // namespace EventSystemTest
