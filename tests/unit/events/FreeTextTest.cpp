// The free text that ends the section of every kind: what comes back, what is cut, what is refused.

#include <string>

#include "tests/support/FakeHostTest.h"
#include "tests/unit/events/EventKinds.h"

namespace EventSystemTest {
namespace {

using namespace EventSystem;
using ::testing::ElementsAre;

class FreeText : public FakeHostTest, public ::testing::WithParamInterface<Kind> {
 protected:
  // Both ways: the constructor's copy is written unchanged, and reads back as it was written.
  void expectRoundTrip(const std::string& text) {
    const EventPtr event = GetParam().make(text, 7);
    ASSERT_EQ(GetParam().section(text), writtenSection(*event));
    EXPECT_EQ(GetParam().section(text), rewritten(Event::fromString, written(*event)));
  }
};

INSTANTIATE_TEST_SUITE_P(Events, FreeText, ::testing::ValuesIn(allKinds()), nameOfKind);

// Digits that tell every position from its neighbours.
std::string textOf(std::size_t length) {
  std::string text;
  for (std::size_t i = 0; i < length; ++i) text += static_cast<char>('0' + (i * 7 + i / 10) % 10);
  return text;
}

TEST_P(FreeText, SurvivesUpToItsLimit) {
  expectRoundTrip(textOf(1));
  expectRoundTrip(textOf(GetParam().longest - 1));
  expectRoundTrip(textOf(GetParam().longest));
}

TEST_P(FreeText, BeyondItsLimitIsRefusedOrCut) {
  for (const std::size_t extra : {1u, 2u, 3u, 4u, 100u, 1u << 20}) {
    const std::string text = textOf(GetParam().longest + extra);
    if (GetParam().cuts) {
      EXPECT_EQ(GetParam().section(text.substr(0, GetParam().longest)),
                rewritten(GetParam().parse, GetParam().line(text)));
    } else {
      expectRefused(GetParam().parse, GetParam().line(text), kBadEnding);
    }
  }
}

TEST_P(FreeText, AMegabyteInFrontOfTheSectionDoesNotMatter) {
  const std::string junk(1 << 20, 'x');
  EXPECT_EQ(
      GetParam().section("end"),
      rewritten(Event::fromString, eventString(GetParam().type, junk + GetParam().section("end"))));
}

TEST_P(FreeText, KeepsEveryByteButTheTerminator) {
  std::string chunk;
  for (int byte = 1; byte < 256; ++byte) {
    chunk += static_cast<char>(byte);
    if (chunk.size() == 100 || byte == 255) {
      expectRoundTrip(chunk);
      chunk.clear();
    }
  }
}

TEST_P(FreeText, IsNeverAFormat) {
  expectRoundTrip("%n%s%d%1$s%%%hhn%.9999f%*d");
}

TEST_P(FreeText, IsNotAFormatInTheLogEither) {
  const std::string flawed = GetParam().line("%n%s%d%1$s%%%hhn") + "%n%s%d%n";
  expectRefused(GetParam().parse, flawed, kBadEnding);
  host().clearCalls();
  EXPECT_EQ(9, parse(flawed).code);
  EXPECT_THAT(host().log(),
              ElementsAre(complaint(kBadEnding, flawed), complaint(kUnparsed, flawed)));
}

TEST_P(FreeText, EndsAtTheLastThreeCharactersOnly) {
  expectRoundTrip("a;}}b");
  expectRoundTrip("a;}}");
  expectRoundTrip(";}};}};}}");
  expectRoundTrip("}}}");
  expectRoundTrip("a;b:c{d}e");
}

TEST_P(FreeText, MayHoldItsOwnKey) {
  const std::string& head = GetParam().head;
  expectRoundTrip("x;" + head.substr(head.find_last_of(";{") + 1) + "y");
}

TEST_P(FreeText, MayHoldItsOwnTag) {
  expectRoundTrip(GetParam().tag + "{" + GetParam().tag);
}

TEST_P(FreeText, WithoutItsEndingIsRefused) {
  for (const std::string ending : {"", ";", ";}", "}}", ";}} ", ";}}\n", ";};}", ":}}", ";}}}"}) {
    expectRefused(GetParam().parse, eventString(GetParam().type, GetParam().head + "text" + ending),
                  kBadEnding);
  }
}

TEST_P(FreeText, NoProperPrefixOfAnEventStringParses) {
  const std::string whole = GetParam().line("text");
  for (std::size_t length = 0; length < whole.size(); ++length) {
    SCOPED_TRACE(whole.substr(0, length));
    const Parsed parsed = parse(whole.substr(0, length));
    ASSERT_EQ(9, parsed.code);
    ASSERT_EQ(nullptr, parsed.event);
  }
}

TEST_P(FreeText, OnlyTheFirstTagIsLookedAt) {
  expectRefused(GetParam().parse, GetParam().tag + GetParam().line("text"), kBadFormat);
  expectRefused(GetParam().parse, GetParam().tag + "{" + GetParam().section("text"), kBadFormat);
}

TEST_P(FreeText, NothingMayStandBetweenTagAndBrace) {
  std::string line = GetParam().line("text");
  line.insert(line.find(GetParam().tag) + GetParam().tag.size(), " ");
  expectRefused(GetParam().parse, line, kBadFormat);
}

TEST_P(FreeText, WithoutItsKeyIsRefused) {
  const std::string& head = GetParam().head;
  const std::size_t key = head.find_last_of(";{") + 1;
  const std::string line = eventString(GetParam().type, head.substr(0, key) + "other:text;}}");
  expectRefused(GetParam().parse, line, GetParam().type == 9 ? kNoString : kBadFormat);
}

}  // namespace
}  // namespace EventSystemTest
