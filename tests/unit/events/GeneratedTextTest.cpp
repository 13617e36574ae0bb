// Texts that nobody would think of: generated from good event strings by damage, and read by the
// library as by the plain formulation. Every text is repeatable: the seed is the kind and a count.

#include <random>
#include <string>

#include "tests/support/FakeHostTest.h"
#include "tests/unit/events/EventKinds.h"
#include "tests/unit/events/ReferenceText.h"

namespace EventSystemTest {
namespace {

using namespace EventSystem;

Reading libraryReading(const std::string& text) {
  host().clearCalls();
  const Parsed parsed = parse(text);
  Reading reading;
  reading.code = parsed.code;
  if (parsed.event != nullptr) reading.again = written(*parsed.event);
  reading.log = host().log();
  return reading;
}

class TextGenerator {
 public:
  TextGenerator(const Kind& kind, unsigned int seed)
      : m_kind(kind), m_random(seed * 16u + static_cast<unsigned int>(kind.type)) {}

  std::string next() {
    std::string text = m_kind.line(freeText());
    const std::size_t damages = below(4);
    for (std::size_t i = 0; i < damages; ++i) damage(text);
    return text;
  }

 private:
  std::size_t below(std::size_t limit) { return m_random() % limit; }

  std::string freeText() {
    switch (below(6)) {
      case 0:
        return "";
      case 1:
        return std::string(m_kind.longest - 3 + below(8), 'n');
      case 2:
        return randomBytes(1 + below(20));
      default:
        return "text";
    }
  }

  std::string randomBytes(std::size_t length) {
    std::string bytes;
    while (bytes.size() < length) bytes += static_cast<char>(1 + below(255));
    return bytes;
  }

  std::string piece() {
    static const std::string pieces[] = {";}}",
                                         ";",
                                         "}",
                                         "{",
                                         ":",
                                         " ",
                                         "\t",
                                         "\n",
                                         "-",
                                         "+",
                                         "0x",
                                         "0",
                                         "-1",
                                         "3",
                                         "4",
                                         "%n%s",
                                         "99999999999999999999",
                                         "18446744073709551615",
                                         "18446744073709551616",
                                         "4294967296",
                                         "4294967299",
                                         "2147483648",
                                         "-9223372036854775809",
                                         "(NULL)",
                                         "(null)",
                                         "lsu:",
                                         ";lsu:x;",
                                         ";server:",
                                         ";msg:",
                                         ";AUditMSg:",
                                         ";path:",
                                         ";string:",
                                         ";file_group:7;name:1;host:2",
                                         ";issue_duration:7;name:1;host:2",
                                         "EVENT{version:1;",
                                         "version:",
                                         "type:",
                                         "\xff\x80"};
    const std::size_t choice = below(std::size(pieces) + 2);
    if (choice == std::size(pieces)) return m_kind.tag;
    if (choice > std::size(pieces)) return randomBytes(1 + below(4));
    return pieces[choice];
  }

  void damage(std::string& text) {
    const std::size_t at = below(text.size() + 1);
    switch (below(6)) {
      case 0:
        text.resize(at);
        break;
      case 1:
        text.erase(at, 1 + below(8));
        break;
      case 2:
        text.insert(at, text.substr(below(text.size() + 1), below(40)));
        break;
      case 3:
        text.replace(at, 1 + below(3), piece());
        break;
      case 4:
        replaceNumber(text, at);
        break;
      default:
        text.insert(at, piece());
    }
  }

  void replaceNumber(std::string& text, std::size_t from) {
    const std::size_t first = text.find_first_of("0123456789", from);
    if (first == std::string::npos) return;
    const std::size_t last = text.find_first_not_of("0123456789", first);
    text.replace(first, last == std::string::npos ? last : last - first, piece());
  }

  const Kind& m_kind;
  std::mt19937 m_random;
};

class GeneratedText : public FakeHostTest, public ::testing::WithParamInterface<Kind> {};

INSTANTIATE_TEST_SUITE_P(Events, GeneratedText, ::testing::ValuesIn(allKinds()), nameOfKind);

TEST_P(GeneratedText, IsReadAsThePlainFormulationReadsIt) {
  TextGenerator generator(GetParam(), 1);
  int accepted = 0;
  int refused = 0;
  for (int round = 0; round < 20000; ++round) {
    const std::string text = generator.next();
    const Reading expected = referenceReading(text);
    const Reading actual = libraryReading(text);
    ASSERT_EQ(expected.log, actual.log) << "round " << round << ": " << text;
    ASSERT_EQ(expected, actual) << "round " << round << ": " << text;
    ++(expected.code == 0 ? accepted : refused);
  }
  // Both sides of the comparison must have been reached often enough to mean something.
  EXPECT_GT(accepted, 2000);
  EXPECT_GT(refused, 2000);
}

// What an event writes, it reads back, and writes the same again.
TEST_P(GeneratedText, ThatWasAcceptedIsStableFromThenOn) {
  TextGenerator generator(GetParam(), 2);
  for (int round = 0; round < 5000; ++round) {
    const std::string text = generator.next();
    const Parsed first = parse(text);
    if (first.code != 0) continue;
    const std::string again = written(*first.event);
    const Parsed second = parse(again);
    // An LSU may hold the tag of its own section, which a reader then takes for the section.
    if (GetParam().type == 2 && second.code != 0) continue;
    ASSERT_EQ(0, second.code) << "round " << round << ": " << text;
    ASSERT_EQ(again, written(*second.event)) << "round " << round << ": " << text;
  }
}

}  // namespace
}  // namespace EventSystemTest
