// What the API reads before anything else: addresses, paths, types, JSON.

#include <gtest/gtest.h>

#include <string>

#include "apps/eventd/ListenAddress.h"
#include "apps/eventd/api/JsonReader.h"
#include "apps/eventd/api/MediaTypes.h"
#include "apps/eventd/api/Problem.h"
#include "apps/eventd/api/Router.h"

namespace EventSystemTest {
namespace {

using namespace EventApps;
using namespace EventApps::Api;

TEST(ListenAddress, IsNumericWithAPort) {
  const auto v4 = parseListenAddress("127.0.0.1:8780");
  ASSERT_TRUE(v4);
  EXPECT_EQ(v4->host, "127.0.0.1");
  EXPECT_EQ(v4->port, 8780);
  EXPECT_EQ(textOf(*v4), "127.0.0.1:8780");
  const auto v6 = parseListenAddress("[::1]:0");
  ASSERT_TRUE(v6);
  EXPECT_EQ(v6->host, "::1");
  EXPECT_EQ(textOf(*v6), "[::1]:0");
  EXPECT_EQ(textOf(parseListenAddress("localhost:1").value()), "127.0.0.1:1");
  for (const char* text :
       {"", ":", ":80", "127.0.0.1", "127.0.0.1:", "127.0.0.1:-1", "127.0.0.1:65536", "::1:80",
        "[::1]", "[]:80", "[127.0.0.1]:80", "host:80", "127.1:80", "127.0.0.1 :80"}) {
    EXPECT_FALSE(parseListenAddress(text)) << text;
  }
}

TEST(ListenAddress, KnowsWhatStaysOnTheMachine) {
  for (const char* text : {"127.0.0.1:1", "127.9.9.9:1", "[::1]:1", "[::ffff:127.0.0.1]:1"}) {
    EXPECT_TRUE(parseListenAddress(text).value().isLoopback) << text;
  }
  for (const char* text : {"0.0.0.0:1", "128.0.0.1:1", "[::]:1", "[::2]:1", "[::ffff:1.2.3.4]:1"}) {
    EXPECT_FALSE(parseListenAddress(text).value().isLoopback) << text;
  }
}

TEST(Router, PrefersFixedPaths) {
  EXPECT_EQ(findRoute("GET", "/v1/queues/0/events/stream").route->pattern,
            "/v1/queues/{dsid}/events/stream");
  const Match one = findRoute("HEAD", "/v1/queues/7/events/12");
  EXPECT_EQ(one.route->pattern, "/v1/queues/{dsid}/events/{id}");
  EXPECT_EQ(one.arguments.at("dsid"), "7");
  EXPECT_EQ(one.arguments.at("id"), "12");
  EXPECT_EQ(findRoute("GET", "/v1/queues//events").route, nullptr);
  EXPECT_EQ(findRoute("GET", "").route, nullptr);
  EXPECT_THROW(findRoute("PATCH", "/v1/stats"), Refused);
}

TEST(MediaTypes, AreReadInAnyCaseWithTheirParameters) {
  EXPECT_EQ(mediaTypeOf("Application/JSON ; charset=\"UTF-8\""), "application/json");
  EXPECT_EQ(mediaTypeOf("text/plain;format=flowed"), "text/plain");
  EXPECT_EQ(mediaTypeOf(""), "");
  EXPECT_THROW(mediaTypeOf("text/plain; charset=utf-16"), Refused);
}

TEST(MediaTypes, AreAcceptedByTheMostSpecificRange) {
  EXPECT_TRUE(accepts("", "application/json"));
  EXPECT_TRUE(accepts("*/*;q=0, application/json", "application/json"));
  EXPECT_FALSE(accepts("application/json;q=0.0, */*", "application/json"));
  EXPECT_FALSE(accepts("application/xml", "application/json"));
  EXPECT_FALSE(accepts(",;", "application/json"));
}

std::string refusal(const std::string& text, const JsonBounds& bounds = {}) {
  try {
    readJson(text, bounds);
  } catch (const Refused& refused) {
    return refused.what();
  }
  return "(read)";
}

TEST(JsonReader, KeepsNumbersExact) {
  const auto numbers = readJson("[18446744073709551615,-9223372036854775808,0]", {.elements = 3});
  EXPECT_EQ(numbers[0].get<std::uint64_t>(), 18446744073709551615ULL);
  EXPECT_TRUE(numbers[0].is_number_unsigned());
  EXPECT_EQ(numbers[1].get<std::int64_t>(), INT64_MIN);
}

TEST(JsonReader, IsBounded) {
  EXPECT_EQ(refusal("[1,2]", {.elements = 1}),
            "the array has more than 1 elements; send it in several requests");
  EXPECT_EQ(refusal("[{},[]]", {.elements = 1}),
            "the array has more than 1 elements; send it in several requests");
  EXPECT_EQ(refusal("[[[]]]", {.depth = 2}), "the JSON goes deeper than 2 levels");
  EXPECT_EQ(refusal("[[]]", {.depth = 2}), "(read)");
  EXPECT_EQ(refusal(R"({"a":1,"b":2})", {.members = 1}), "an object has more than 1 members");
  EXPECT_EQ(refusal(R"({"a":[1,2,3]})", {.elements = 1}), "(read)");
}

TEST(JsonReader, RefusesMembersNamedTwice) {
  EXPECT_EQ(refusal(R"([{"a":{"a":1}},{"a":1,"\u0061":2}])", {.elements = 2}),
            "the member \"a\" is there twice in one object; keep one");
}

TEST(JsonReader, SaysWhereItIsNoJson) {
  EXPECT_EQ(refusal("{\"a\":\n}").substr(0, 38), "this is no JSON, at line 2, column 1: ");
}

// A body of megabytes must not come back as an answer of megabytes.
TEST(JsonReader, QuotesNoMoreThanIsNeeded) {
  const std::string much(1u << 20, 'x');
  for (const std::string& text : {"[\"" + much, "[" + std::string(1u << 20, '1') + "]",
                                  R"({")" + much + R"(":1,")" + much + R"(":2})"}) {
    const std::string why = refusal(text);
    EXPECT_LT(why.size(), 1000U) << why.substr(0, 1000);
    EXPECT_NE(why.find("…"), std::string::npos) << why.substr(0, 1000);
  }
}

TEST(Problems, HaveNamesOfTheirOwnAndStatuses) {
  for (const ProblemText& text : problemTexts()) {
    EXPECT_GE(text.status, 400U) << text.name;
    EXPECT_LT(text.status, 600U) << text.name;
  }
  EXPECT_EQ(problemOfStatus(431, "x").kind, ProblemKind::kHeadersTooLarge);
  EXPECT_EQ(problemOfStatus(499, "x").kind, ProblemKind::kBadRequest);
  EXPECT_EQ(problemOfStatus(599, "x").kind, ProblemKind::kInternalError);
}

}  // namespace
}  // namespace EventSystemTest
