// The events with a server name: states, capacity figures and ability flags.

#include <string>

#include "EventSystem/AbilitiesEvent.h"
#include "EventSystem/CapacityEvent.h"
#include "EventSystem/LSUStatusEvent.h"
#include "EventSystem/ServerStatusEvent.h"
#include "tests/support/FakeHostTest.h"
#include "tests/unit/events/EventKinds.h"

namespace EventSystemTest {
namespace {

using namespace EventSystem;

constexpr unsigned long kLargest = 18446744073709551615ul;

class StatusEvents : public FakeHostTest {};

// The two classes with a state, for tests that treat them alike.
template <typename Class>
struct StateOf;
template <>
struct StateOf<LSUStatusEvent> {
  using Type = LSUStatusEvent::lsuState;
  static constexpr char kTag[] = "LSUSTATUSEVENT";
};
template <>
struct StateOf<ServerStatusEvent> {
  using Type = ServerStatusEvent::serverState;
  static constexpr char kTag[] = "SERVERSTATUSEVENT";
};

template <typename Class>
class StateEvents : public FakeHostTest {
 protected:
  static Class make(char* server, unsigned int state) {
    return Class(server, static_cast<typename StateOf<Class>::Type>(state), 1);
  }
  static std::string section(const std::string& content) {
    return std::string(";") + StateOf<Class>::kTag + "{" + content + ";}}";
  }
  static unsigned int parsedState(const std::string& text) {
    const Parsed parsed = parseWith(Class::fromString, text);
    EXPECT_EQ(0, parsed.code) << text;
    auto* const event = dynamic_cast<Class*>(parsed.event.get());
    return event == nullptr ? 99 : event->getState();
  }
};

using StateClasses = ::testing::Types<LSUStatusEvent, ServerStatusEvent>;
TYPED_TEST_SUITE(StateEvents, StateClasses);

TYPED_TEST(StateEvents, StatesAboveTwoBecomeOne) {
  const std::pair<unsigned int, unsigned int> states[] = {{0, 0}, {1, 1}, {2, 2},
                                                          {3, 1}, {7, 1}, {4294967295u, 1}};
  char server[] = "node1";
  for (const auto& [given, stored] : states) {
    EXPECT_EQ(stored, this->make(server, given).getState());
    const std::string text = this->section("state:" + std::to_string(given) + ";server:node1");
    EXPECT_EQ(stored, this->parsedState(text));
    EXPECT_EQ(this->section("state:" + std::to_string(stored) + ";server:node1"),
              rewritten(TypeParam::fromString, text));
  }
}

TYPED_TEST(StateEvents, StatesAreReadAsTheCLibraryReadsUnsignedNumbers) {
  EXPECT_EQ(1u, this->parsedState(this->section("state:-1;server:a")));
  EXPECT_EQ(2u, this->parsedState(this->section("state: \t+02;server:a")));
  EXPECT_EQ(2u, this->parsedState(this->section("state:4294967298;server:a")));
  EXPECT_EQ(1u, this->parsedState(this->section("state:99999999999999999999;server:a")));
}

TYPED_TEST(StateEvents, ANullServerIsWrittenAsThePlatformWritesNull) {
  auto event = this->make(nullptr, 2);
  EXPECT_EQ(this->section("state:2;server:(null)"), writtenSection(event));
}

TYPED_TEST(StateEvents, NamesInBracketsAreNames) {
  for (const char* name : {"(null)", "(NULL)", "(NULL)x"}) {
    const std::string text = this->section(std::string("state:0;server:") + name);
    EXPECT_EQ(text, rewritten(TypeParam::fromString, text));
  }
}

TYPED_TEST(StateEvents, TheServerIsACopy) {
  char server[] = "node1";
  auto event = this->make(server, 1);
  server[0] = 'X';
  EXPECT_EQ(this->section("state:1;server:node1"), writtenSection(event));
}

TYPED_TEST(StateEvents, OnlyTheStateIsScanned) {
  EXPECT_EQ(this->section("state:1;server:x"),
            rewritten(TypeParam::fromString, this->section("state:1 and more;server:x")));
  EXPECT_EQ(this->section("state:1;server:x"),
            rewritten(TypeParam::fromString, this->section("state:1;junk;server:x")));
}

TYPED_TEST(StateEvents, WithoutAStateTheFormatIsBad) {
  for (const char* content : {"", "state:;server:a", "state:x;server:a", "server:a;state:1",
                              "State:1;server:a", "state:+;server:a", "state=1;server:a"}) {
    expectRefused(TypeParam::fromString, this->section(content), kBadFormat);
  }
}

TYPED_TEST(StateEvents, WithoutAServerTheFormatIsBad) {
  for (const char* content : {"state:1", "state:1;Server:a", "state:1server:a"}) {
    expectRefused(TypeParam::fromString, this->section(content), kBadFormat);
  }
}

// What all four classes do with the server name.
struct Server {
  const char* name;
  Parser parse;
  const char* head;
};

class ServerName : public FakeHostTest, public ::testing::WithParamInterface<Server> {
 protected:
  std::string line(const std::string& rest) const { return GetParam().head + rest; }
};

constexpr char kCapacity[] = ";CAPACITYEVENT{capacity:1;capacityphys:2;used:3;usedphys:4;server:";

INSTANTIATE_TEST_SUITE_P(Events, ServerName,
                         ::testing::Values(Server{"LSU", LSUStatusEvent::fromString,
                                                  ";LSUSTATUSEVENT{state:1;server:"},
                                           Server{"Server", ServerStatusEvent::fromString,
                                                  ";SERVERSTATUSEVENT{state:1;server:"},
                                           Server{"Capacity", CapacityEvent::fromString, kCapacity},
                                           Server{"Abilities", AbilitiesEvent::fromString,
                                                  ";ABILITIESEVENT{flags:0xAB;server:"}),
                         [](const auto& tested) { return tested.param.name; });

TEST_P(ServerName, ShorterThanTheEndingIsABadEnding) {
  for (const char* rest : {"", "}", "}}", ";}", "x", "xy", "xyz"}) {
    expectRefused(GetParam().parse, line(rest), kBadEnding);
  }
}

TEST_P(ServerName, MayBeEmpty) {
  EXPECT_EQ(line(";}}"), rewritten(GetParam().parse, line(";}}")));
}

TEST_P(ServerName, OfHundredAndTwentyFourBytesIsTheLongest) {
  const std::string longest = line(std::string(124, 'n') + ";}}");
  EXPECT_EQ(longest, rewritten(GetParam().parse, longest));
  expectRefused(GetParam().parse, line(std::string(125, 'n') + ";}}"), kBadEnding);
  // The name is cut where its own bytes look like an ending.
  EXPECT_EQ(line(std::string(124, 'n') + ";}}"),
            rewritten(GetParam().parse, line(std::string(124, 'n') + ";}}and more")));
}

// CapacityEvent and AbilitiesEvent.
class NullName : public ServerName {};

INSTANTIATE_TEST_SUITE_P(Events, NullName,
                         ::testing::Values(Server{"Capacity", CapacityEvent::fromString, kCapacity},
                                           Server{"Abilities", AbilitiesEvent::fromString,
                                                  ";ABILITIESEVENT{flags:0xAB;server:"}),
                         [](const auto& tested) { return tested.param.name; });

TEST_P(NullName, IsWrittenAsNullAndReadsBackAsNull) {
  EXPECT_EQ(line("(NULL);}}"), rewritten(GetParam().parse, line("(NULL);}}")));
}

TEST_P(NullName, IsRecognisedByItsFirstSixCharacters) {
  EXPECT_EQ(line("(NULL);}}"), rewritten(GetParam().parse, line("(NULL) and more;}}")));
  for (const char* name : {"(null)", "(NULL", " (NULL)", "x(NULL)", "(Null)"}) {
    EXPECT_EQ(line(std::string(name) + ";}}"),
              rewritten(GetParam().parse, line(std::string(name) + ";}}")));
  }
}

TEST_F(StatusEvents, CapacityWritesNullForNoServer) {
  CapacityEvent event(nullptr, 1, 2, 3, 4, 1);
  EXPECT_EQ(std::string(kCapacity) + "(NULL);}}", writtenSection(event));
}

TEST_F(StatusEvents, AbilitiesWritesNullForNoServer) {
  AbilitiesEvent event(31, nullptr, 1);
  EXPECT_EQ(";ABILITIESEVENT{flags:0x1F;server:(NULL);}}", writtenSection(event));
}

TEST_F(StatusEvents, AbilitiesReadsItsNullExample) {
  const std::string text =
      "EVENT{version:1;type:6;id:1;date:2;ABILITIESEVENT{flags:0x1F;server:(NULL);}}";
  const Parsed parsed = parse(text);
  ASSERT_EQ(0, parsed.code);
  EXPECT_EQ(text, written(*parsed.event));
}

TEST_F(StatusEvents, CapacityKeepsItsFiguresApart) {
  char server[] = "node1";
  CapacityEvent event(server, kLargest, 0, 4294967296, kLargest - 1, 1);
  const std::string section =
      ";CAPACITYEVENT{capacity:18446744073709551615;capacityphys:0;used:4294967296;"
      "usedphys:18446744073709551614;server:node1;}}";
  EXPECT_EQ(section, writtenSection(event));
  EXPECT_EQ(section, rewritten(CapacityEvent::fromString, section));
}

TEST_F(StatusEvents, CapacityReadsFiguresAsTheCLibraryDoes) {
  EXPECT_EQ(
      ";CAPACITYEVENT{capacity:18446744073709551615;capacityphys:18446744073709551615;used:5;"
      "usedphys:6;server:a;}}",
      rewritten(CapacityEvent::fromString,
                ";CAPACITYEVENT{capacity:-1;capacityphys:18446744073709551616;used: +5;"
                "usedphys:0006zzz;server:a;}}"));
}

TEST_F(StatusEvents, CapacityNeedsAllFourFiguresInOrder) {
  for (const char* content :
       {"capacity:1;capacityphys:2;used:3;server:a", "capacity:1;used:3;usedphys:4;server:a",
        "capacityphys:2;capacity:1;used:3;usedphys:4;server:a",
        "capacity:1;capacityphys:2;used:3;usedphys:;server:a",
        "capacity:1;capacityphys:x;used:3;usedphys:4;server:a",
        "capacity:1 ;capacityphys:2;used:3;usedphys:4;server:a",
        "capacity:1;capacityphys:2;used:3;usedphys:4", "server:a"}) {
    expectRefused(CapacityEvent::fromString, std::string(";CAPACITYEVENT{") + content + ";}}",
                  kBadFormat);
  }
}

TEST_F(StatusEvents, AbilitiesWritesFlagsInUpperCaseHexadecimal) {
  char server[] = "a";
  const std::pair<int, std::string> flags[] = {{0, "0x0"},
                                               {31, "0x1F"},
                                               {0xabcdef, "0xABCDEF"},
                                               {2147483647, "0x7FFFFFFF"},
                                               {-1, "0xFFFFFFFF"},
                                               {-2147483647 - 1, "0x80000000"}};
  for (const auto& [number, text] : flags) {
    AbilitiesEvent event(number, server, 1);
    const std::string section = ";ABILITIESEVENT{flags:" + text + ";server:a;}}";
    EXPECT_EQ(section, writtenSection(event));
    EXPECT_EQ(section, rewritten(AbilitiesEvent::fromString, section));
  }
}

TEST_F(StatusEvents, AbilitiesReadsHexadecimalAsTheCLibraryDoes) {
  const std::pair<std::string, std::string> flags[] = {{"0xabc", "0xABC"}, {"0x0x1f", "0x1F"},
                                                       {"0x 7", "0x7"},    {"0x-1", "0xFFFFFFFF"},
                                                       {"0x10G", "0x10"},  {"0x100000002", "0x2"}};
  for (const auto& [given, again] : flags) {
    EXPECT_EQ(
        ";ABILITIESEVENT{flags:" + again + ";server:a;}}",
        rewritten(AbilitiesEvent::fromString, ";ABILITIESEVENT{flags:" + given + ";server:a;}}"));
  }
}

TEST_F(StatusEvents, AbilitiesNeedsThePrefixOfHexadecimal) {
  for (const char* flags : {"31", "0X1F", "1F", "x1F", "", "0x", "0xg", "0x;"}) {
    expectRefused(AbilitiesEvent::fromString,
                  std::string(";ABILITIESEVENT{flags:") + flags + ";server:a;}}", kBadFormat);
  }
}

TEST_F(StatusEvents, AbilitiesPassesOverWhatStandsBeforeTheServer) {
  EXPECT_EQ(";ABILITIESEVENT{flags:0x1;server:a;}}",
            rewritten(AbilitiesEvent::fromString, ";ABILITIESEVENT{flags:0x1 x;y;server:a;}}"));
}

}  // namespace
}  // namespace EventSystemTest
