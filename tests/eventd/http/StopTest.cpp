// The end of a server, whatever its clients are at.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <thread>
#include <vector>

#include "tests/eventd/http/Certificates.h"
#include "tests/eventd/http/TestServer.h"

namespace EventSystemTest {
namespace {

constexpr std::chrono::hours kLong(1);  // a grace that no test waits for
constexpr std::chrono::seconds kNone(0);

TEST(Stop, EndsWithNothingToDo) {
  TestServer server;
  server.server().stop(kLong);
  server.server().stop(kLong);
}

TEST(Stop, EndsAServerThatHasNotRun) {
  TempDir directory;
  Http::Server server(
      {}, [](const auto&) {}, 2);
  server.listenUnix(directory.path() / "s", 0600);
  RawClient client(directory.path() / "s");
  server.stop(kLong);
  EXPECT_EQ("", client.rest());
}

TEST(Stop, LetsRunReturn) {
  Http::Server server(
      {}, [](const auto&) {}, 2);
  std::thread runner([&] { server.run(); });
  server.stop(kLong);
  runner.join();
}

TEST(Stop, ClosesIdleConnectionsAtOnce) {
  TestServer server;
  RawClient fresh = server.client();
  RawClient used = server.client();
  EXPECT_EQ("hello", used.ask("/hello").body);
  EXPECT_TRUE(eventually([&] { return server.server().figures().connectionsOpened == 2; }));
  server.server().stop(kLong);
  EXPECT_EQ("", fresh.rest());
  EXPECT_EQ("", used.rest());
}

TEST(Stop, LetsRequestsBeAnswered) {
  TestServer server;
  RawClient client = server.client();
  client.get("/wait");
  const auto exchange = server.keptOne();
  std::thread stopper([&] { server.server().stop(kLong); });
  EXPECT_TRUE(eventually([&] { return server.closed == 1; })) << "whoever waits is told";
  exchange->respond({200, "", "the last", {}});
  const Reply reply = client.reply();
  EXPECT_EQ("the last", reply.body);
  EXPECT_EQ("close", reply.headers.at("connection"));
  client.close();
  stopper.join();
}

TEST(Stop, AnswersForRequestsThatAreGivenUp) {
  TestServer server;
  RawClient client = server.client();
  client.get("/wait");
  auto exchange = server.keptOne();
  std::thread stopper([&] { server.server().stop(kLong); });
  EXPECT_TRUE(eventually([&] { return server.closed == 1; }));
  exchange.reset();
  EXPECT_EQ(503u, client.reply().status);
  client.close();
  stopper.join();
}

TEST(Stop, EndsStreamsInGoodOrder) {
  TestServer server;
  RawClient client = server.client();
  client.get("/stream");
  const auto exchange = server.keptOne();
  exchange->send("the last");
  std::thread stopper([&] { server.server().stop(kLong); });
  const Reply reply = client.reply();
  EXPECT_EQ("the last", reply.body);
  EXPECT_TRUE(reply.whole);
  EXPECT_EQ("", client.rest());
  client.close();
  stopper.join();
  EXPECT_EQ(1, server.closed);
  EXPECT_FALSE(exchange->send("more"));
}

TEST(Stop, TakesARequestThatHasBegun) {
  TestServer server;
  RawClient client = server.client();
  client.send("GET /hello HTTP/1.1\r\nHost");
  EXPECT_TRUE(eventually([&] { return server.server().figures().bytesIn > 0; }));
  std::thread stopper([&] { server.server().stop(kLong); });
  EXPECT_TRUE(eventually([&] { return !std::filesystem::exists(server.socket()); }));
  client.send(": h\r\n\r\n");
  EXPECT_EQ("hello", client.reply().body);
  client.close();
  stopper.join();
}

TEST(Stop, CutsOffWhatDoesNotEnd) {
  Certificates certificates;
  certificates.sign("server", "server", "serverAuth");
  std::uint16_t tlsPort = 0;
  TestServer server({}, [&](Http::Server& one) {
    tlsPort = one.listenTls("127.0.0.1", 0,
                            {certificates.file("server.crt"), certificates.file("server.key"), ""});
  });
  RawClient waiting = server.client();
  waiting.get("/wait");
  RawClient streaming(server.port());
  streaming.get("/stream");
  const auto exchanges = server.kept(2);
  exchanges.at(0)->send(std::string(1000, 'x'));
  exchanges.at(1)->send(std::string(1000, 'x'));
  RawClient halfAHead(server.port());
  halfAHead.send("GET / HTTP/1.1\r\n");
  RawClient halfABody = server.client();
  halfABody.send("POST / HTTP/1.1\r\nHost: h\r\nContent-Length: 10\r\n\r\nabc");
  RawClient halfAHandshake(tlsPort);
  halfAHandshake.send("\x16\x03\x01\x02");
  RawClient deaf = server.client();
  deaf.get("/wait");
  server.keptOne()->respond({200, "", std::string(32u << 20, 'x'), {}});
  EXPECT_TRUE(eventually([&] { return server.server().figures().connectionsOpened == 6; }));
  server.server().stop(kNone);
  EXPECT_EQ(0u, server.server().figures().connectionsOpen);
  EXPECT_EQ("", waiting.rest());
  streaming.rest();
  EXPECT_EQ("", halfAHead.rest());
  EXPECT_EQ("", halfABody.rest());
  EXPECT_EQ("", halfAHandshake.rest());
  EXPECT_FALSE(deaf.reply().whole);
}

TEST(Stop, LeavesExchangesUsable) {
  std::shared_ptr<Http::Exchange> waiting;
  std::shared_ptr<Http::Exchange> stream;
  {
    TestServer server;
    RawClient first = server.client();
    first.get("/wait");
    waiting = server.keptOne();
    RawClient second = server.client();
    second.get("/stream");
    stream = server.keptOne();
    server.server().stop(kNone);
  }
  EXPECT_EQ("/wait", waiting->request().path);
  EXPECT_EQ("unix", waiting->request().peer->address);
  waiting->respond({});
  EXPECT_FALSE(stream->send("x"));
  stream->endStream();
  bool called = false;
  stream->onClose([&] { called = true; });
  EXPECT_TRUE(called);
}

// Clients of every kind come, ask and go on two threads, others answer, and the server ends.
TEST(Stop, ComesAtAnyTime) {
  for (int round = 0; round < 30; ++round) {
    TestServer server;
    std::atomic<bool> ends = false;
    const auto clients = [&] {
      const char* const paths[] = {"/hello", "/wait", "/stream", "/drop", "/throw"};
      for (unsigned i = 0; !ends; ++i) {
        try {
          RawClient client(server.port());
          client.get(paths[i % 5]);
          if (i % 5 == 0) client.reply();
          if (i % 7 == 0) client.reset();
        } catch (const std::runtime_error&) {
          // nobody listens any more
        }
      }
    };
    const auto answering = [&] {
      while (!ends) {
        for (const auto& exchange : server.kept(1)) {
          exchange->respond({200, "", "x", {}});
          exchange->send("y");
        }
      }
    };
    std::thread first(clients);
    std::thread second(clients);
    std::thread third(answering);
    const auto wanted = static_cast<std::uint64_t>(round * 5);
    EXPECT_TRUE(eventually([&] { return server.server().figures().requests >= wanted; }));
    server.server().stop(round % 2 == 0 ? std::chrono::milliseconds(0)
                                        : std::chrono::milliseconds(20));
    ends = true;
    server.wakeUp();
    first.join();
    second.join();
    third.join();
    EXPECT_EQ(0u, server.server().figures().connectionsOpen);
  }
}

}  // namespace
}  // namespace EventSystemTest
