#include <gtest/gtest.h>

#include "host/cluster/EtcdKeys.h"

namespace EventSystemHost {
namespace {

TEST(EtcdKeys, HaveTheOrderOfTheIds) {
  const EtcdKeys keys("events", 7);
  EXPECT_EQ(keys.event(42), "/eventsystem/events/0000000007/e/00000000000000000042");
  EXPECT_EQ(keys.event(~0UL), "/eventsystem/events/0000000007/e/18446744073709551615");
  EXPECT_EQ(keys.sequence(), "/eventsystem/events/0000000007/seq");
  EXPECT_EQ(keys.lastToken("1-2"), "/eventsystem/events/0000000007/last/1-2");
  EXPECT_EQ(keys.copied("alpha", 3),
            "/eventsystem/events/0000000007/copied/alpha/00000000000000000003");
  EXPECT_LT(keys.event(9), keys.event(10));
  EXPECT_LT(keys.event(10), successor(keys.event(10)));
  EXPECT_LT(successor(keys.event(10)), keys.event(11));
}

TEST(EtcdKeys, TellTheirId) {
  EXPECT_EQ(idOfKey(EtcdKeys("events", 7).event(42)), 42u);
  EXPECT_EQ(idOfKey("short"), std::nullopt);
  EXPECT_EQ(idOfKey("/eventsystem/events/e/0000000000000000000x"), std::nullopt);
}

TEST(EtcdKeys, ParseOnlyNumbersOfFixedWidth) {
  EXPECT_EQ(parsePadded("00000000000000000042"), 42u);
  EXPECT_EQ(parsePadded("18446744073709551615"), ~0UL);
  EXPECT_EQ(parsePadded("18446744073709551616"), std::nullopt);
  EXPECT_EQ(parsePadded("42"), std::nullopt);
  EXPECT_EQ(parsePadded("-0000000000000000042"), std::nullopt);
  EXPECT_EQ(parsePadded(""), std::nullopt);
}

TEST(EtcdKeys, KeepMemberAndTextApart) {
  const auto value = parseEventValue(eventValue("alpha", "a\nb\n"));
  ASSERT_TRUE(value);
  EXPECT_EQ(value->member, "alpha");
  EXPECT_EQ(value->text, "a\nb\n");
  EXPECT_FALSE(parseEventValue("no line feed"));
}

TEST(EtcdKeys, ReadBackATokenAndItsId) {
  const auto value = parseTokenValue(tokenValue({3, 42}));
  ASSERT_TRUE(value);
  EXPECT_EQ(value->token, 3u);
  EXPECT_EQ(value->id, 42u);
  EXPECT_FALSE(parseTokenValue(""));
  EXPECT_FALSE(parseTokenValue("00000000000000000003 0000000000000000004x"));
}

TEST(EtcdKeys, FindACopyByItsHash) {
  const std::string marker = withCopy(withCopy("", "aaaa", 1), "bbbb", 2);
  EXPECT_EQ(findCopy(marker, "aaaa"), 1u);
  EXPECT_EQ(findCopy(marker, "bbbb"), 2u);
  EXPECT_EQ(findCopy(marker, "cccc"), std::nullopt);
  EXPECT_EQ(findCopy("", "aaaa"), std::nullopt);
  EXPECT_EQ(findCopy("damaged", "aaaa"), std::nullopt);
}

TEST(EtcdKeys, AcceptOnlyNamesThatCannotBeMistaken) {
  EXPECT_EQ(nameFault("queue", "Events_1.a-b"), "");
  EXPECT_EQ(nameFault("queue", std::string(128, 'a')), "");
  EXPECT_EQ(nameFault("queue", std::string(129, 'a')),
            "the queue name has 129 characters, more than 128");
  EXPECT_EQ(nameFault("member", ""), "the member name is empty");
  EXPECT_EQ(nameFault("member", "ab/c"),
            "the member name has a character that is not a letter, digit, '.', '_' or '-' at "
            "position 3");
}

}  // namespace
}  // namespace EventSystemHost
