// Clients that mean no good, or are torn off in the middle: the server answers or hangs up, serves
// the others, and forgets nothing.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "tests/eventd/http/TestServer.h"

namespace EventSystemTest {
namespace {

const std::vector<std::string>& seeds() {
  static const std::vector<std::string> texts = {
      "GET /hello HTTP/1.1\r\nHost: h\r\n\r\n",
      "GET /stream HTTP/1.1\r\nHost: h\r\n\r\n",
      "HEAD /wait HTTP/1.1\r\nHost: h\r\nConnection: close\r\n\r\n",
      "POST /e HTTP/1.1\r\nHost: h\r\nContent-Length: 12\r\n\r\nhello worlds",
      "POST /e HTTP/1.1\r\nHost: h\r\nTransfer-Encoding: chunked\r\n\r\n5\r\nhello\r\n0\r\n\r\n",
      "POST /drop HTTP/1.1\r\nHost: h\r\nExpect: 100-continue\r\nContent-Length: 2\r\n\r\nab",
      "GET http://h/throw?a=%41&b HTTP/1.0\r\nConnection: keep-alive\r\n\r\n"};
  return texts;
}

class Malice {
 public:
  explicit Malice(unsigned seed) : m_random(seed) {}

  std::size_t below(std::size_t bound) { return m_random() % bound; }

  std::string bytes() {
    std::string made;
    for (std::size_t count = 1 + below(4); count > 0; --count) {
      std::string one = seeds()[below(seeds().size())];
      for (std::size_t changes = below(3); changes > 0; --changes) change(one);
      made += one;
    }
    return made;
  }

 private:
  void change(std::string& text) {
    const std::size_t at = below(text.size());
    switch (below(5)) {
      case 0:
        text[at] = static_cast<char>(m_random());
        break;
      case 1:
        text.erase(at, below(10));
        break;
      case 2:
        text.append(text, 0, below(40));
        break;
      case 3:
        text.insert(at, below(3000), 'x');
        break;
      default:
        text.resize(at);
        break;
    }
    if (text.empty()) text = "\r";
  }

  std::mt19937 m_random;
};

// In pieces, and then in one of the ways there are to go.
void attack(Malice& malice, RawClient client) {
  std::string bytes = malice.bytes();
  while (!bytes.empty()) {
    const std::size_t piece = std::min(bytes.size(), 1 + malice.below(200));
    if (!client.send(std::string_view(bytes).substr(0, piece))) return;
    bytes.erase(0, piece);
  }
  switch (malice.below(4)) {
    case 0:
      client.reset();
      break;
    case 1:
      client.finishSending();
      client.rest();
      break;
    case 2:
      client.finishSending();
      break;
    default:
      break;
  }
}

TEST(HostileClients, LeaveTheServerWell) {
  Http::Limits limits;
  limits.headerBytes = 1000;
  limits.bodyBytes = 1000;
  limits.streamBacklog = 10000;
  TestServer server(limits);
  std::atomic<bool> ends = false;
  std::thread lettingGo([&] {
    while (!ends) server.kept(1);
  });
  for (unsigned seed = 1; seed <= 1500; ++seed) {
    Malice malice(seed);
    SCOPED_TRACE("seed " + std::to_string(seed));
    attack(malice, seed % 2 == 0 ? server.client() : RawClient(server.port()));
    if (seed % 100 == 0) {
      ASSERT_EQ("hello", server.client().ask("/hello").body);
    }
  }
  EXPECT_TRUE(eventually([&] { return server.server().figures().connectionsOpen == 0; }));
  ends = true;
  server.wakeUp();
  lettingGo.join();
  EXPECT_GT(server.server().figures().requests, 500u);
  EXPECT_GT(server.server().figures().requestsRefused, 200u);
}

}  // namespace
}  // namespace EventSystemTest
