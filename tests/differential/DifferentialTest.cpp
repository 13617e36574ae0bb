// A bounded run over generated cases, and the corners that are known by name.
// prove_text runs as many more as one likes.

#include <gtest/gtest.h>

#include <string>

#include "tests/differential/Differential.h"

namespace EventSystemTest {
namespace {

#ifdef EVENTSYSTEM_SANITIZED
constexpr std::uint64_t kCases = 200000;
#else
constexpr std::uint64_t kCases = 1000000;
#endif

struct Example {
  int type;
  const char* text;
};

constexpr Example kExamples[] = {
    {1, "EVENT{version:1;type:1;id:12;date:1700000000;LEGACYEVENT{payload:old text;}}"},
    {2,
     "EVENT{version:1;type:2;id:9;date:1700000000;lsu:vol1;IMAGEREPEVENT{size:4096;path:/data/"
     "img.bin;}}"},
    {3, "EVENT{version:1;type:3;id:12;date:1700000000;LSUSTATUSEVENT{state:2;server:node1;}}"},
    {4, "EVENT{version:1;type:4;id:12;date:1700000000;SERVERSTATUSEVENT{state:0;server:node1;}}"},
    {5,
     "EVENT{version:1;type:5;id:12;date:1700000000;CAPACITYEVENT{capacity:1000;capacityphys:800;"
     "used:500;usedphys:400;server:node1;}}"},
    {6, "EVENT{version:1;type:6;id:42;date:1700000000;ABILITIESEVENT{flags:0x1F;server:(NULL);}}"},
    {7,
     "EVENT{version:1;type:7;id:12;date:1700000000;{ACTIVITYEVENT{version:1;action:3;time:100;"
     "severity:2;msg:disk full;}}"},
    {8,
     "EVENT{version:1;type:8;id:12;date:1700000000;AUDITEVENT{version:4;action:-5;time:200;"
     "loadSize:6;AUditMSg:login;}}"},
    {9,
     "EVENT{version:1;type:9;id:12;date:1700000000;KELPEVENT{version:1;severity:2;issue:3;share_"
     "type:1;file_group:77;name:4;host:5;string:quota exceeded;}}"},
    {9,
     "EVENT{version:1;type:9;id:12;date:1700000000;KELPEVENT{version:1;severity:2;issue:5;share_"
     "type:1;issue_duration:60;name:4;host:5;string:share offline;}}"}};

class EventTextDifferential : public ::testing::Test {
 protected:
  // By Event::fromString() and by the parser of the class.
  void expectSame(const Example& example, const std::string& text) {
    ASSERT_TRUE(m_differential.reads(text)) << text << '\n' << m_differential.difference();
    ASSERT_TRUE(m_differential.readsSection(example.type, text)) << text << '\n'
                                                                 << m_differential.difference();
  }

  Differential m_differential{1};
};

TEST_F(EventTextDifferential, GeneratedCasesAreReadAndWrittenAsThePlainFormulationDoes) {
  for (std::uint64_t number = 0; number < kCases; ++number) {
    ASSERT_TRUE(m_differential.run(number))
        << "case " << number << ": " << m_differential.difference();
  }
  // Every side of the comparison must have been reached often enough to mean something.
  EXPECT_EQ(kCases, m_differential.tally().cases());
  EXPECT_GT(m_differential.tally().accepted, kCases / 10);
  EXPECT_GT(m_differential.tally().refused, kCases / 10);
  EXPECT_GT(m_differential.tally().events, kCases / 10);
  EXPECT_GT(m_differential.tally().writings, kCases / 2);
}

TEST_F(EventTextDifferential, EveryBeginningOfAnEventStringIsReadAlike) {
  for (const Example& example : kExamples) {
    const std::string text = example.text;
    for (std::size_t length = 0; length <= text.size(); ++length) {
      expectSame(example, text.substr(0, length));
      expectSame(example, text.substr(length));
    }
  }
}

TEST_F(EventTextDifferential, EveryPlaceTakesEveryTellingCharacterAlike) {
  for (const Example& example : kExamples) {
    const std::string text = example.text;
    for (std::size_t at = 0; at < text.size(); ++at) {
      for (const char c : {' ', '\t', '\r', '\x0e', '0', '9', ':', '/', '-', '+', ';', '}', 'x'}) {
        expectSame(example, text.substr(0, at) + c + text.substr(at + 1));
        expectSame(example, text.substr(0, at) + c + text.substr(at));
      }
    }
  }
}

TEST_F(EventTextDifferential, EveryNumberTakesEveryEdgeOfItsRangeAlike) {
  for (const Example& example : kExamples) {
    const std::string text = example.text;
    for (std::size_t at = text.find(':'); at != std::string::npos; at = text.find(':', at + 1)) {
      const std::size_t end = text.find_first_not_of("-0123456789xF", at + 1);
      for (const char* number : {"2147483647",
                                 "2147483648",
                                 "-2147483648",
                                 "-2147483649",
                                 "4294967295",
                                 "4294967296",
                                 "9223372036854775807",
                                 "9223372036854775808",
                                 "-9223372036854775808",
                                 "-9223372036854775809",
                                 "18446744073709551615",
                                 "18446744073709551616",
                                 "-18446744073709551615",
                                 "-18446744073709551616",
                                 "12345678",
                                 "123456789",
                                 "123456789012345",
                                 "1234567890123456",
                                 "00000000000000000000000000000007",
                                 "99999999999999999999999999",
                                 "0x0x1f",
                                 "0xg",
                                 "0X1f",
                                 "0xffffffffffffffff",
                                 "0x10000000000000000",
                                 "0x-1",
                                 "",
                                 "+",
                                 "-",
                                 " 1",
                                 "1 ",
                                 "- 1",
                                 "+-1"}) {
        expectSame(example, text.substr(0, at + 1) + number + text.substr(end));
      }
    }
  }
}

}  // namespace
}  // namespace EventSystemTest
