// Streams: what is sent, when they end, and who is told.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>

#include "tests/eventd/http/TestServer.h"

namespace EventSystemTest {
namespace {

constexpr std::size_t kMegabyte = 1u << 20;

TEST(Stream, IsSentInChunksAsTheyCome) {
  TestServer server;
  RawClient client = server.client();
  client.get("/stream");
  const auto exchange = server.keptOne();
  EXPECT_TRUE(exchange->send("one"));
  EXPECT_EQ("", client.reply(true).body);
  EXPECT_EQ("one", client.chunks(3));
  EXPECT_TRUE(exchange->send(""));
  EXPECT_TRUE(exchange->send("two"));
  EXPECT_EQ("two", client.chunks(3));
  EXPECT_TRUE(eventually([&] { return exchange->unsent() == 0; }));
}

TEST(Stream, EndsWithAllThatWasSent) {
  TestServer server;
  RawClient client = server.client();
  client.get("/stream");
  const auto exchange = server.keptOne();
  EXPECT_TRUE(exchange->send("last"));
  exchange->endStream();
  EXPECT_FALSE(exchange->send("more"));
  exchange->endStream();
  const Reply reply = client.reply();
  EXPECT_EQ("last", reply.body);
  EXPECT_EQ("text/event-stream", reply.headers.at("content-type"));
  EXPECT_EQ("hello", client.ask("/hello").body);
  EXPECT_EQ(1, server.closed);
}

TEST(Stream, EndsWhenItIsLetGoOf) {
  TestServer server;
  RawClient client = server.client();
  client.get("/stream");
  server.keptOne()->send("last");
  const Reply reply = client.reply();
  EXPECT_TRUE(reply.whole);
  EXPECT_EQ("last", reply.body);
}

TEST(Stream, ToAnOldClientEndsWithTheConnection) {
  TestServer server;
  RawClient client = server.client();
  client.send("GET /stream HTTP/1.0\r\nConnection: keep-alive\r\n\r\n");
  const auto exchange = server.keptOne();
  exchange->send("one");
  exchange->send("two");
  exchange->endStream();
  const std::string all = client.rest();
  EXPECT_TRUE(all.ends_with("\r\n\r\nonetwo")) << all;
  EXPECT_EQ(std::string::npos, all.find("Transfer-Encoding"));
}

TEST(Stream, AskedForWithHeadIsItsHead) {
  TestServer server;
  RawClient client = server.client();
  client.send("HEAD /stream HTTP/1.1\r\nHost: h\r\n\r\n");
  const auto exchange = server.keptOne();
  EXPECT_FALSE(exchange->send("one"));
  EXPECT_EQ(200u, client.reply(true).status);
  EXPECT_EQ("hello", client.ask("/hello").body);
  EXPECT_EQ(1, server.closed);
}

TEST(Stream, NoticesAHangUpWhileItIdles) {
  TestServer server;
  for (const bool reset : {false, true}) {
    RawClient client(server.port());
    client.get("/stream");
    const auto exchange = server.keptOne();
    client.reply(true);
    reset ? client.reset() : client.close();
    EXPECT_TRUE(eventually([&] { return server.closed == 1; }));
    EXPECT_FALSE(exchange->send("nobody is there"));
    server.closed = 0;
  }
}

// The client takes nothing: what it is owed is bounded, and then the connection is closed.
TEST(Stream, ToAClientThatIsTooSlowIsCutOff) {
  Http::Limits limits;
  limits.streamBacklog = kMegabyte;
  TestServer server(limits);
  RawClient client = server.client();
  client.get("/stream");
  const auto exchange = server.keptOne();
  const std::string chunk(65536, 'x');
  std::size_t sent = 0;
  while (exchange->send(chunk)) {
    sent += chunk.size();
    ASSERT_LE(exchange->unsent(), kMegabyte + 200 * 16);
    ASSERT_LT(sent, 64 * kMegabyte) << "the kernel's buffers are not that long";
  }
  EXPECT_GT(sent, kMegabyte - 2 * chunk.size());
  EXPECT_TRUE(eventually([&] { return server.closed == 1; }));
  EXPECT_TRUE(eventually([&] { return server.server().figures().connectionsOpen == 0; }));
  EXPECT_FALSE(exchange->send("x"));
  EXPECT_LT(client.rest().size(), sent) << "the end is missing, and its client can tell";
}

TEST(Stream, MayBeLongerThanItsBacklogWhenItIsTaken) {
  Http::Limits limits;
  limits.streamBacklog = 100000;
  TestServer server(limits);
  RawClient client = server.client();
  client.get("/stream");
  const auto exchange = server.keptOne();
  client.reply(true);
  const std::string chunk(50000, 'x');
  for (int i = 0; i < 100; ++i) {
    ASSERT_TRUE(exchange->send(chunk));
    ASSERT_EQ(chunk, client.chunks(chunk.size()));
    ASSERT_TRUE(eventually([&] { return exchange->unsent() == 0; }));
  }
}

TEST(Stream, ThatNobodyReadsIsCutOffInTime) {
  Http::Limits limits;
  limits.streamBacklog = 64 * kMegabyte;
  limits.writeTime = std::chrono::milliseconds(100);
  TestServer server(limits);
  RawClient client = server.client();
  client.get("/stream");
  const auto exchange = server.keptOne();
  EXPECT_TRUE(exchange->send(std::string(16 * kMegabyte, 'x')));
  EXPECT_TRUE(eventually([&] { return server.closed == 1; }));
}

TEST(OnClose, IsCalledAtOnceWhereThereIsNobodyLeft) {
  TestServer server;
  RawClient client = server.client();
  client.get("/stream");
  const auto exchange = server.keptOne();
  client.close();
  EXPECT_TRUE(eventually([&] { return server.closed == 1; }));
  bool called = false;
  exchange->onClose([&] { called = true; });
  EXPECT_TRUE(called);
}

TEST(OnClose, IsNotCalledAfterAnAnswer) {
  TestServer server;
  RawClient client = server.client();
  client.get("/wait");
  const auto exchange = server.keptOne();
  exchange->respond({});
  bool called = false;
  exchange->onClose([&] { called = true; });
  client.reply();
  client.close();
  EXPECT_TRUE(eventually([&] { return server.server().figures().connectionsOpen == 0; }));
  EXPECT_FALSE(called);
  EXPECT_EQ(0, server.closed);
}

TEST(OnClose, LetsGoOfWhatItHoldsWithTheAnswer) {
  TestServer server;
  RawClient client = server.client();
  client.get("/wait");
  const auto exchange = server.keptOne();
  auto held = std::make_shared<int>();
  const std::weak_ptr<int> watched = held;
  exchange->onClose([held = std::move(held)] {});
  EXPECT_FALSE(watched.expired());
  exchange->respond({});
  EXPECT_TRUE(watched.expired());
}

TEST(OnClose, LetsGoOfWhatItHolds) {
  TestServer server;
  RawClient client = server.client();
  client.get("/wait");
  auto exchange = server.keptOne();
  const std::weak_ptr<Http::Exchange> watched = exchange;
  exchange->onClose([exchange] { exchange->respond({}); });
  exchange.reset();
  client.close();
  EXPECT_TRUE(eventually([&] { return watched.expired(); }));
}

}  // namespace
}  // namespace EventSystemTest
