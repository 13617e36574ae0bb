// Events of a running eventd as they arrive.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "tests/eventd/program/DaemonHome.h"

namespace EventSystemTest {
namespace {

using ::testing::HasSubstr;
using ::testing::MatchesRegex;
using ::testing::Not;
using ::testing::StartsWith;

constexpr const char* kStream = "/v1/queues/0/events/stream";

class Stream : public DaemonHome {
 protected:
  // What comes until `text` has come.
  static std::string until(RawClient& client, const std::string& text) {
    std::string received;
    while (received.find(text) == std::string::npos) {
      const std::string piece = client.chunks(1);
      if (piece.empty()) {
        ADD_FAILURE() << "the stream ended before " << text << ": " << received;
        break;
      }
      received += piece;
    }
    return received;
  }

  RawClient open(const std::string& path,
                 std::vector<std::pair<std::string, std::string>> headers = {}) const {
    RawClient client(socket());
    client.send(Ask{.path = path, .headers = std::move(headers)}.text());
    EXPECT_EQ(client.reply(true).status, 200U);
    return client;
  }
};

TEST_F(Stream, BeginsWithWhatArrives) {
  start();
  add("before");
  RawClient client = open(kStream);
  until(client, ": \n\n");
  add("after");
  const std::string received = until(client, "\n\n");
  EXPECT_THAT(received, StartsWith("id: 2\nevent: event\ndata: {\"id\":2,"));
  EXPECT_THAT(received, HasSubstr("\"server\":\"after\""));
}

TEST_F(Stream, GoesOnWhereItIsTold) {
  start();
  for (const char* server : {"a", "b", "c"}) add(server);
  RawClient all = open(std::string(kStream) + "?after=0");
  EXPECT_THAT(until(all, "id: 3"), HasSubstr("id: 1\n"));
  RawClient client = open(std::string(kStream) + "?after=0", {{"Last-Event-ID", "2"}});
  EXPECT_THAT(until(client, "id: 3"), Not(HasSubstr("id: 2\n")));
}

TEST_F(Stream, IsFilteredByKind) {
  start();
  RawClient client = open(std::string(kStream) + "?type=legacy");
  until(client, ": \n\n");
  add("passed-over");
  post("/v1/queues/0/events", R"({"kind":"legacy","fields":{"payload":"wanted"}})");
  const std::string received = until(client, "wanted");
  EXPECT_THAT(received, Not(HasSubstr("passed-over")));
}

TEST_F(Stream, SaysThatItIsAlive) {
  write("eventd.ini", "[limits]\nheartbeat_ms = 50\n");
  start();
  RawClient client = open(kStream);
  for (int i = 0; i < 3; ++i) EXPECT_EQ(until(client, ": \n\n"), ": \n\n");
}

TEST_F(Stream, IsAskedForStrictly) {
  start();
  EXPECT_EQ(problemName(get(std::string(kStream) + "?after=x")), "bad-request");
  EXPECT_EQ(problemName(get(std::string(kStream) + "?limit=1")), "bad-request");
  EXPECT_EQ(problemName(request({.path = kStream, .headers = {{"Last-Event-ID", "x"}}})),
            "bad-request");
  EXPECT_EQ(problemName(get("/v1/queues/9/events/stream")), "unknown-data-selection");
  EXPECT_EQ(problemName(request({.path = kStream, .headers = {{"Accept", "application/json"}}})),
            "not-acceptable");
}

TEST_F(Stream, HasAHeadThatCachesLeaveAlone) {
  start();
  const Reply reply = request({.method = "HEAD", .path = kStream});
  EXPECT_EQ(reply.status, 200U);
  EXPECT_EQ(reply.headers.at("content-type"), "text/event-stream");
  EXPECT_EQ(reply.headers.at("cache-control"), "no-store");
}

TEST_F(Stream, EndsForAClientThatHasGone) {
  start();
  {
    RawClient client = open(kStream);
    until(client, ": \n\n");
    EXPECT_EQ(jsonOf(get("/v1/stats"))["waiting"], 1);
  }
  while (jsonOf(get("/v1/stats"))["waiting"] != 0) {
  }
}

// A slow reader is sent what it takes; what is not sent yet does not gather in memory, nor is it
// lost.
TEST_F(Stream, OfABacklogLargerThanItsBufferIsComplete) {
  write("eventd.ini", "[limits]\nstream_backlog_bytes = 131072\n");
  start();
  std::string body;
  for (int i = 0; i < 3000; ++i) body += statusEvent("server-" + std::to_string(i)) + "\n";
  ASSERT_EQ(post("/v1/queues/0/events", body, "application/x-ndjson").status, 201U);
  RawClient client = open(std::string(kStream) + "?after=0");
  const std::string received = until(client, "id: 3000\n");
  std::size_t at = 0;
  for (int id = 1; id <= 3000; ++id) {
    at = received.find("id: " + std::to_string(id) + "\n", at);
    ASSERT_NE(at, std::string::npos) << id;
  }
}

// A control character takes six times its place in JSON, and stands there twice.
TEST_F(Stream, OfTheLongestEventsFitsTheSmallestBuffer) {
  write("eventd.ini", "[limits]\nstream_backlog_bytes = 131072\n");
  start();
  const json event = {{"kind", "imagerep"},
                      {"fields", {{"size", 1}, {"path", std::string(1900, '\x01')}}}};
  for (int i = 0; i < 50; ++i) {
    ASSERT_EQ(post("/v1/queues/0/events", event.dump()).status, 201U);
  }
  RawClient client = open(std::string(kStream) + "?after=0");
  EXPECT_THAT(until(client, "id: 50\n"), HasSubstr("id: 49\n"));
}

TEST_F(Stream, EndsWhenTheDaemonStops) {
  start();
  RawClient client = open(kStream);
  until(client, ": \n\n");
  EXPECT_EQ(stop().status, 0);
  EXPECT_EQ(client.chunks(1), "");
}

}  // namespace
}  // namespace EventSystemTest
