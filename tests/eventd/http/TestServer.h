// A server with a handler for each way of answering, on a Unix socket and a TCP port.
//
// Thread safety: as Server; what the handler has left behind may be asked for on any thread.

#ifndef EVENTSYSTEM_TESTS_EVENTD_HTTP_TESTSERVER_H
#define EVENTSYSTEM_TESTS_EVENTD_HTTP_TESTSERVER_H

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "apps/eventd/http/Server.h"
#include "tests/eventd/http/RawClient.h"
#include "tests/support/TempDir.h"

namespace EventSystemTest {

namespace Http = EventApps::Http;

// Waits for what other threads do; false when it does not come.
bool eventually(const std::function<bool()>& happened);

// Answers, by path: /hello and /echo at once (/echo with method, path, query and body); /wait keeps
// the exchange; /stream starts a stream and keeps it; /throw throws; /drop lets go.
class TestServer {
 public:
  using Change = std::function<void(Http::Server&)>;

  // `change` is called before the server is started.
  explicit TestServer(const Http::Limits& limits = {}, const Change& change = {},
                      unsigned threads = 2);
  ~TestServer() { m_server->stop(std::chrono::seconds(0)); }

  Http::Server& server() { return *m_server; }
  std::filesystem::path socket() const { return m_directory.path() / "http.sock"; }
  std::uint16_t port() const { return m_port; }
  RawClient client() const { return RawClient(socket()); }

  // Waits until that many exchanges are kept, and takes them; fewer when they do not come.
  std::vector<std::shared_ptr<Http::Exchange>> kept(std::size_t count);
  void wakeUp();  // whoever waits for kept exchanges, now and later
  std::shared_ptr<Http::Exchange> keptOne() { return kept(1).at(0); }

  std::atomic<int> closed = 0;  // calls of onClose() callbacks of kept exchanges
  std::vector<std::string> complaints();

 private:
  void handle(const std::shared_ptr<Http::Exchange>& exchange);
  void keep(const std::shared_ptr<Http::Exchange>& exchange);

  TempDir m_directory;
  std::mutex m_mutex;
  std::condition_variable m_arrived;
  std::vector<std::shared_ptr<Http::Exchange>> m_kept;
  std::vector<std::string> m_complaints;
  bool m_awake = false;
  std::uint16_t m_port = 0;
  std::unique_ptr<Http::Server> m_server;
};

}  // namespace EventSystemTest

#endif
