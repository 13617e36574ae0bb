// A TCP proxy in front of one server, which can lose the server's answers.
//
// Thread safety: any thread.

#ifndef EVENTSYSTEM_TESTS_CLUSTER_PROXY_H
#define EVENTSYSTEM_TESTS_CLUSTER_PROXY_H

#include <atomic>
#include <list>
#include <string>
#include <thread>

#include "apps/etcd_nodes/Ports.h"

namespace EventSystemTest {

class Proxy {
 public:
  // Listens on a port of its own. `target` is "127.0.0.1:port".
  explicit Proxy(const std::string& target);
  ~Proxy();

  Proxy(const Proxy&) = delete;
  Proxy& operator=(const Proxy&) = delete;

  std::string endpoint() const;

  // The answer to the next request is swallowed when it comes from the server, and the connection
  // is cut: the request is done and its sender cannot know.
  void loseNextAnswer() { m_losing = true; }

  // Requests reach the server, and no answer comes back, until it is turned off; then everything
  // that was open is cut.
  void setMute(bool mute);

  // The other way round: no request reaches the server.
  void setDeaf(bool deaf);

  // Everything is refused and cut while it is on.
  void setDown(bool down);

  // Answers lost by loseNextAnswer().
  int lostAnswers() const { return m_lostAnswers; }

 private:
  struct Connection {
    EtcdNodes::Descriptor client;
    EtcdNodes::Descriptor server;
    bool awaitsAnswer = false;  // the request that loses its answer went through here
    bool broken = false;
  };

  void run();
  void accept();
  void serve(Connection& connection, bool clientReady, bool serverReady);
  void wake() const;

  const unsigned short m_targetPort;
  EtcdNodes::Descriptor m_listener;
  EtcdNodes::Descriptor m_wakeReader;
  EtcdNodes::Descriptor m_wakeWriter;
  std::list<Connection> m_connections;  // of the thread

  std::atomic<bool> m_stopping{false};
  std::atomic<bool> m_losing{false};
  std::atomic<bool> m_mute{false};
  std::atomic<bool> m_deaf{false};
  std::atomic<bool> m_down{false};
  std::atomic<bool> m_cutAll{false};
  std::atomic<int> m_lostAnswers{0};
  std::thread m_thread;
};

}  // namespace EventSystemTest

#endif
