// Paths and queries, decoded strictly.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "apps/eventd/http/Characters.h"
#include "apps/eventd/http/RefusedRequest.h"
#include "apps/eventd/http/Target.h"

namespace EventSystemTest {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

namespace Http = EventApps::Http;

Http::Request read(const std::string& target, const std::string& method = "GET") {
  Http::Request request;
  request.method = method;
  Http::readTarget(target, request);
  return request;
}

TEST(Target, IsSplitIntoPathAndQuery) {
  const Http::Request request = read("/v1/queues/0/events?after=7&limit=100");
  EXPECT_EQ("/v1/queues/0/events", request.path);
  EXPECT_THAT(request.query, ElementsAre(Pair("after", "7"), Pair("limit", "100")));
  EXPECT_EQ("7", *request.find("after"));
  EXPECT_EQ(nullptr, request.find("wait"));
}

TEST(Target, IsDecoded) {
  const Http::Request request = read("/a%20b/%C3%a4+?x%3d=%26+y%2Bz&k%C3%BCr=%2f");
  EXPECT_EQ("/a b/\xc3\xa4+", request.path);
  EXPECT_THAT(request.query, ElementsAre(Pair("x=", "& y+z"), Pair("k\xc3\xbcr", "/")));
}

TEST(Target, MayLackValuesAndRepeatNames) {
  EXPECT_THAT(read("/?a&b=&&=c&a=1&").query,
              ElementsAre(Pair("a", ""), Pair("b", ""), Pair("", "c"), Pair("a", "1")));
  EXPECT_THAT(read("/?").query, IsEmpty());
}

TEST(Target, MayNameTheServer) {
  EXPECT_EQ("/v1/stats", read("http://localhost:8780/v1/stats").path);
  EXPECT_EQ("/", read("HTTPS://[::1]:8780").path);
  const Http::Request request = read("http://a?b=c");
  EXPECT_EQ("/", request.path);
  EXPECT_THAT(request.query, ElementsAre(Pair("b", "c")));
}

TEST(Target, IsAnAsteriskForOptionsOnly) {
  EXPECT_EQ("*", read("*", "OPTIONS").path);
  EXPECT_THROW(read("*"), Http::RefusedRequest);
}

class BadTarget : public ::testing::TestWithParam<const char*> {};

TEST_P(BadTarget, IsRefused) {
  try {
    read(GetParam());
    ADD_FAILURE() << GetParam() << " was taken";
  } catch (const Http::RefusedRequest& refused) {
    EXPECT_EQ(400u, refused.status());
  }
}

INSTANTIATE_TEST_SUITE_P(
    Targets, BadTarget,
    ::testing::Values("", "v1", "?a", "/%", "/%4", "/%4g", "/%g4", "/a%2", "/%%30", "/%00", "/%0a",
                      "/%7f", "/a%2Fb", "/a%2fb", "/%ff", "/%c0%af", "/%ed%a0%80", "/%c3", "/a#b",
                      "/a b", "/\xc3\xa4", "/\t", "/?a=%", "/?a=%00", "/?%ff=1", "/?a=%e2%82",
                      "http://", "http:///a", "http://u@h/", "ftp://host/", "localhost:80"),
    [](const auto& instance) { return "Number" + std::to_string(instance.index); });

TEST(Utf8, IsWellFormedOnly) {
  EXPECT_TRUE(Http::isUtf8(""));
  EXPECT_TRUE(Http::isUtf8("a\xc2\x80\xdf\xbf\xe0\xa0\x80\xed\x9f\xbf\xee\x80\x80\xef\xbf\xbf"));
  EXPECT_TRUE(Http::isUtf8("\xf0\x90\x80\x80\xf4\x8f\xbf\xbf"));
  for (const char* text : {"\x80", "\xc1\xbf", "\xc2", "\xc2 ", "\xe0\x9f\xbf", "\xe2\x82",
                           "\xed\xa0\x80", "\xf0\x8f\xbf\xbf", "\xf4\x90\x80\x80",
                           "\xf5\x80\x80\x80", "\xf0\x90\x80", "\xe2\x82(", "\xff"}) {
    EXPECT_FALSE(Http::isUtf8(text)) << text;
  }
}

}  // namespace
}  // namespace EventSystemTest
