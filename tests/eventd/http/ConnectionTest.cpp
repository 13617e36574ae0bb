// Connections: how many there may be, how long they may take, and how they end.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <boost/asio/buffer.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/strand.hpp>
#include <chrono>
#include <deque>
#include <filesystem>
#include <iterator>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "apps/eventd/http/Connection.h"
#include "apps/eventd/http/Core.h"
#include "tests/eventd/http/TestServer.h"

namespace EventSystemTest {
namespace {

using std::chrono::milliseconds;

TEST(WaitingRequest, NoticesAHangUp) {
  TestServer server;
  for (const bool reset : {false, true}) {
    RawClient client(server.port());
    client.get("/wait");
    const auto exchange = server.keptOne();
    reset ? client.reset() : client.close();
    EXPECT_TRUE(eventually([&] { return server.closed == 1; }));
    exchange->respond({});
    server.closed = 0;
  }
  EXPECT_TRUE(eventually([&] { return server.server().figures().connectionsOpen == 0; }));
}

TEST(WaitingRequest, OfAClientThatSendsNoMoreIsStillAnswered) {
  TestServer server;
  RawClient client = server.client();
  client.get("/wait");
  const auto exchange = server.keptOne();
  client.finishSending();
  EXPECT_TRUE(eventually([&] { return server.closed == 1; }));
  exchange->respond({200, "", "late", {}});
  EXPECT_EQ("late", client.reply().body);
  EXPECT_EQ("", client.rest());
}

TEST(WaitingRequest, MayWaitLongerThanAnythingElse) {
  Http::Limits limits;
  limits.idle = limits.requestTime = limits.writeTime = milliseconds(20);
  TestServer server(limits);
  RawClient waiting = server.client();
  waiting.get("/wait");
  const auto exchange = server.keptOne();
  for (int i = 0; i < 5; ++i) {  // as long as it takes to end five idle connections
    RawClient idle = server.client();
    idle.ask("/hello");
    EXPECT_EQ("", idle.rest());
  }
  EXPECT_EQ(0, server.closed);
  exchange->respond({200, "", "at last", {}});
  EXPECT_EQ("at last", waiting.reply().body);
}

TEST(IdleConnection, IsClosed) {
  Http::Limits limits;
  limits.idle = milliseconds(20);
  TestServer server(limits);
  RawClient client = server.client();
  EXPECT_EQ("hello", client.ask("/hello").body);
  EXPECT_EQ("", client.rest());
}

TEST(IdleConnection, ThatHasNeverAskedIsClosed) {
  Http::Limits limits;
  limits.requestTime = milliseconds(20);
  TestServer server(limits);
  EXPECT_EQ("", server.client().rest());
}

TEST(SlowRequest, IsCutOff) {
  Http::Limits limits;
  limits.requestTime = milliseconds(50);
  TestServer server(limits);
  for (const char* begun : {"G", "GET / HTTP/1.1\r\nHost: h\r\nX: ", "\r\n",
                            "POST / HTTP/1.1\r\nHost: h\r\nContent-Length: 10\r\n\r\nabc",
                            "POST / HTTP/1.1\r\nHost: h\r\nTransfer-Encoding: chunked\r\n\r\n1"}) {
    RawClient client = server.client();
    client.send(begun);
    EXPECT_EQ(408u, client.reply().status) << begun;
    EXPECT_EQ("", client.rest());
  }
}

// A byte now and then buys no time.
TEST(SlowRequest, IsCutOffHoweverBusyItLooks) {
  Http::Limits limits;
  limits.headerBytes = 1u << 30;
  limits.requestTime = milliseconds(500);
  TestServer server(limits);
  RawClient client = server.client();
  client.send("GET / HTTP/1.1\r\nHost: h\r\nX: ");
  EXPECT_TRUE(eventually([&] {
    client.send("x");
    return server.server().figures().requestsRefused == 1;
  }));
  EXPECT_EQ(408u, client.reply().status);
}

TEST(SlowReader, IsCutOff) {
  Http::Limits limits;
  limits.writeTime = milliseconds(50);
  TestServer server(limits);
  RawClient client = server.client();
  client.get("/wait");
  server.keptOne()->respond({200, "", std::string(32u << 20, 'x'), {}});
  EXPECT_TRUE(eventually([&] { return server.server().figures().connectionsOpen == 0; }));
  EXPECT_FALSE(client.reply().whole);
}

// Some bytes now and then keep no answer in memory for ever.
TEST(SlowReader, IsCutOffHoweverBusyItLooks) {
  Http::Limits limits;
  limits.writeTime = milliseconds(500);
  limits.takenInTime = 1u << 20;
  TestServer server(limits);
  RawClient client = server.client();
  client.get("/wait");
  server.keptOne()->respond({200, "", std::string(64u << 20, 'x'), {}});
  std::vector<char> some(32768);  // eight times in that time: a quarter of what it should take
  auto next = std::chrono::steady_clock::now();
  EXPECT_TRUE(eventually([&] {
    if (std::chrono::steady_clock::now() >= next) {
      ::recv(client.descriptor(), some.data(), some.size(), MSG_DONTWAIT);
      next = std::chrono::steady_clock::now() + limits.writeTime / 8;
    }
    return server.server().figures().connectionsOpen == 0;
  }));
}

// What its client sends comes at once, and of what it is sent the client takes nothing.
class UnreadConnection final : public Http::Connection {
 public:
  UnreadConnection(const std::shared_ptr<Http::Core>& core, const Http::Strand& strand,
                   std::deque<std::string> pieces)
      : Connection(core, strand, {}), m_socket(strand), m_pieces(std::move(pieces)) {}

 private:
  void open() override { onOpen({}); }
  void readSome(boost::asio::mutable_buffer buffer) override {
    if (m_pieces.empty()) return;
    const std::size_t bytes = boost::asio::buffer_copy(buffer, boost::asio::buffer(m_pieces[0]));
    m_pieces.pop_front();
    boost::asio::post(m_socket.get_executor(),
                      [me = self<UnreadConnection>(), bytes] { me->onRead({}, bytes); });
  }
  void writeSome(boost::asio::const_buffer) override {}
  void endSending() override {}
  Http::Socket& socket() override { return m_socket; }

  Http::Socket m_socket;
  std::deque<std::string> m_pieces;
};

// The 100 is neither read by the client nor forgotten by the server.
TEST(SlowReader, IsCutOffWhereItLeavesTheGoAheadUnread) {
  Http::Limits limits;
  limits.requestTime = limits.writeTime = milliseconds(10);
  const std::string head =
      "POST / HTTP/1.1\r\nHost: h\r\nExpect: 100-continue\r\nContent-Length: 2\r\n\r\n";
  for (const std::deque<std::string>& sent : {std::deque<std::string>{head, "ok"}, {head}}) {
    int handled = 0;
    const auto core = std::make_shared<Http::Core>(
        limits,
        [&](const std::shared_ptr<Http::Exchange>& exchange) {
          ++handled;
          exchange->respond({200, "", "done", {}});
        },
        1);
    const auto connection =
        std::make_shared<UnreadConnection>(core, boost::asio::make_strand(core->context), sent);
    core->connections.enter(connection, "");
    connection->start();
    core->context.run();  // until there is nothing to wait for
    EXPECT_EQ(handled, sent.size() == 2 ? 1 : 0);
    EXPECT_EQ(core->connections.open(), 0u);
    connection->cut();
  }
}

TEST(Answers, AreBoundedTogether) {
  Http::Limits limits;
  limits.answersBytes = 40u << 20;
  TestServer server(limits);
  const auto ask = [&](RawClient& client) {
    client.get("/wait");
    server.keptOne()->respond({200, "", std::string(32u << 20, 'x'), {}});
  };
  RawClient slow = server.client();
  ask(slow);
  EXPECT_TRUE(eventually([&] { return server.server().figures().bytesOut > 0; }));
  RawClient second = server.client();
  ask(second);
  const Reply refused = second.reply();
  EXPECT_EQ(503u, refused.status);
  EXPECT_EQ("5", refused.headers.at("retry-after"));
  EXPECT_EQ("hello", second.ask("/hello").body);
  EXPECT_TRUE(slow.reply().whole);
  EXPECT_EQ("hello", slow.ask("/hello").body);
  ask(second);
  EXPECT_EQ(200u, second.reply().status);
}

TEST(Answers, AreNotWithheldFromWhoeverMayHaveChangedSomething) {
  Http::Limits limits;
  limits.answersBytes = 100000;
  TestServer server(limits);
  const std::string much(200000, 'x');
  RawClient client = server.client();
  client.get("/wait");
  server.keptOne()->respond({200, "", much, {}});
  EXPECT_EQ(503u, client.reply().status);
  client.send("DELETE /wait HTTP/1.1\r\nHost: h\r\n\r\n");
  server.keptOne()->respond({200, "", much, {}});
  EXPECT_EQ(much, client.reply().body);
}

TEST(Answers, AreBoundedTogetherWithWhatStreamsHaveNotSent) {
  Http::Limits limits;
  limits.answersBytes = 1u << 20;
  TestServer server(limits);
  const std::string much(900000, 'x');  // less than a stream may have unsent
  RawClient first = server.client();
  first.get("/stream");
  const auto one = server.keptOne();
  EXPECT_TRUE(one->send(much));
  EXPECT_TRUE(eventually([&] { return server.server().figures().bytesOut > 1000; }));
  RawClient second = server.client();
  second.get("/stream");
  const auto other = server.keptOne();
  other->send(much);
  EXPECT_TRUE(eventually([&] { return server.closed == 1; }));
  EXPECT_LT(second.reply().body.size(), much.size());
  EXPECT_EQ(200u, first.reply(true).status);
  EXPECT_EQ(much, first.chunks(much.size()));
}

TEST(PipeliningClient, IsReadFromWithinBounds) {
  TestServer server;
  RawClient client = server.client();
  client.get("/wait");
  const auto exchange = server.keptOne();
  const std::string request = "GET /hello HTTP/1.1\r\nHost: h\r\n\r\n";
  std::string many;
  while (many.size() < 400000) many += request;
  std::thread sender([&] { client.send(many); });
  RawClient other = server.client();
  for (int i = 0; i < 200; ++i) EXPECT_EQ("hello", other.ask("/hello").body);
  EXPECT_LT(server.server().figures().bytesIn, 100000u) << "the rest waits with the client";
  exchange->respond({200, "", "first", {}});
  EXPECT_EQ("first", client.reply().body);
  for (std::size_t i = 0; i < many.size() / request.size(); ++i) {
    ASSERT_EQ("hello", client.reply().body);
  }
  sender.join();
}

TEST(Connections, AreBounded) {
  Http::Limits limits;
  limits.connections = 2;
  TestServer server(limits);
  RawClient first = server.client();
  RawClient second = server.client();
  EXPECT_EQ(200u, first.ask("/hello").status);
  EXPECT_EQ(200u, second.ask("/hello").status);
  RawClient third = server.client();
  const Reply refused = third.ask("/hello");
  EXPECT_EQ(503u, refused.status);
  EXPECT_EQ("close", refused.headers.at("connection"));
  EXPECT_EQ("", third.rest());
  EXPECT_EQ(1u, server.server().figures().connectionsRefused);
  EXPECT_EQ(2u, server.server().figures().connectionsOpen);
  first.close();
  EXPECT_TRUE(eventually([&] { return server.server().figures().connectionsOpen == 1; }));
  EXPECT_EQ(200u, server.client().ask("/hello").status);
}

TEST(Connections, OfOneAddressAreBounded) {
  Http::Limits limits;
  limits.connectionsOfOnePeer = 1;
  TestServer server(limits);
  RawClient first(server.port());
  EXPECT_EQ(200u, first.ask("/hello").status);
  EXPECT_EQ(503u, RawClient(server.port()).ask("/hello").status);
  EXPECT_EQ(200u, server.client().ask("/hello").status) << "the Unix socket is another matter";
  first.close();
  EXPECT_TRUE(eventually([&] { return RawClient(server.port()).ask("/hello").status == 200; }));
}

TEST(Connections, OfTheNetworkLeaveRoomForTheUnixSocket) {
  Http::Limits limits;
  limits.connections = 16;
  TestServer server(limits);
  std::vector<RawClient> clients;
  for (int i = 0; i < 15; ++i) {
    clients.emplace_back(server.port());
    ASSERT_EQ(200u, clients.back().ask("/hello").status);
  }
  EXPECT_EQ(503u, RawClient(server.port()).ask("/hello").status);
  EXPECT_EQ(200u, server.client().ask("/hello").status);
}

TEST(Peer, IsKnown) {
  TestServer server;
  RawClient local = server.client();
  local.get("/wait");
  const auto fromUnix = server.keptOne();
  const Http::Peer& unixPeer = *fromUnix->request().peer;
  EXPECT_EQ(Http::Peer::Via::kUnix, unixPeer.via);
  EXPECT_TRUE(unixPeer.loopback);
  EXPECT_EQ("unix", unixPeer.address);
  EXPECT_EQ(getuid(), unixPeer.uid);
  EXPECT_EQ(getgid(), unixPeer.gid);
  EXPECT_EQ(getpid(), unixPeer.pid);
  fromUnix->respond({});

  RawClient remote(server.port());
  remote.get("/wait");
  const auto fromTcp = server.keptOne();
  const Http::Peer& tcpPeer = *fromTcp->request().peer;
  EXPECT_EQ(Http::Peer::Via::kTcp, tcpPeer.via);
  EXPECT_TRUE(tcpPeer.loopback);
  EXPECT_EQ("127.0.0.1:" + std::to_string(remote.localPort()), tcpPeer.address);
  EXPECT_EQ(static_cast<uid_t>(-1), tcpPeer.uid);
  EXPECT_EQ("", tcpPeer.certificate);
  fromTcp->respond({});
}

// No descriptors for anybody while it lives.
class NoDescriptors {
 public:
  NoDescriptors() {
    getrlimit(RLIMIT_NOFILE, &m_before);
    const rlimit none{0, m_before.rlim_max};
    setrlimit(RLIMIT_NOFILE, &none);
  }
  ~NoDescriptors() { setrlimit(RLIMIT_NOFILE, &m_before); }
  NoDescriptors(const NoDescriptors&) = delete;
  NoDescriptors& operator=(const NoDescriptors&) = delete;

 private:
  rlimit m_before{};
};

TEST(Listener, WaitsForDescriptorsWithoutSpinning) {
  TestServer server;
  RawClient client(server.socket(), RawClient::Connect::kLater);
  const auto begin = std::chrono::steady_clock::now();
  std::uint64_t failures = 0;
  {
    const NoDescriptors none;
    client.connect();
    ASSERT_TRUE(eventually([&] { return server.server().figures().acceptFailures >= 3; }));
    failures = server.server().figures().acceptFailures;
  }
  const auto pauses = std::chrono::steady_clock::now() - begin;
  EXPECT_GE(pauses, milliseconds(50) * (failures - 1));
  EXPECT_EQ("hello", client.ask("/hello").body);
}

std::size_t threadCount() {
  const std::filesystem::directory_iterator tasks("/proc/self/task");
  return static_cast<std::size_t>(std::distance(begin(tasks), end(tasks)));
}

void allowDescriptors(rlim_t wanted) {
  rlimit limit{};
  getrlimit(RLIMIT_NOFILE, &limit);
  limit.rlim_cur = std::max(limit.rlim_cur, std::min(wanted, limit.rlim_max));
  setrlimit(RLIMIT_NOFILE, &limit);
}

TEST(ThousandReaders, WaitWithoutAThreadEach) {
  constexpr std::size_t kReaders = 1000;
  allowDescriptors(3 * kReaders);
  std::thread([] {}).join();  // a sanitizer makes a thread of its own beside the first
  const std::size_t before = threadCount();
  TestServer server({}, {}, 2);
  std::vector<RawClient> clients;
  for (std::size_t i = 0; i < kReaders; ++i) {
    i % 2 == 0 ? clients.emplace_back(server.socket()) : clients.emplace_back(server.port());
    ASSERT_TRUE(clients.back().get("/wait"));
  }
  const auto waiting = server.kept(kReaders);
  ASSERT_EQ(kReaders, waiting.size());
  EXPECT_EQ(before + 2, threadCount());
  EXPECT_EQ(kReaders, server.server().figures().connectionsOpen);
  for (const auto& exchange : waiting) exchange->respond({200, "", "an event", {}});
  for (RawClient& client : clients) ASSERT_EQ("an event", client.reply().body);
}

}  // namespace
}  // namespace EventSystemTest
