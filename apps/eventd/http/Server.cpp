#include "apps/eventd/http/Server.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <boost/asio/executor_work_guard.hpp>
#include <exception>
#include <thread>
#include <utility>
#include <vector>

#include "apps/eventd/http/Core.h"
#include "apps/eventd/http/Listener.h"
#include "apps/eventd/http/ListeningSockets.h"
#include "apps/eventd/http/SocketFile.h"
#include "apps/eventd/http/TlsContext.h"

namespace EventApps::Http {

class Server::Parts {
 public:
  Parts(const Limits& limits, Handler handler, unsigned threads);

  void add(Descriptor socket, const Listener::Tls& tls = nullptr);
  void work() noexcept;
  void stopListening();
  void finish();
  void waitUntilStopped();

  struct TlsListener {
    std::shared_ptr<Listener> listener;
    TlsFiles files;
  };

  const unsigned threadCount;
  const std::shared_ptr<Core> core;
  boost::asio::executor_work_guard<boost::asio::io_context::executor_type> guard;
  std::mutex mutex;  // of what follows
  std::condition_variable done;
  std::vector<std::shared_ptr<Listener>> listeners;
  std::vector<TlsListener> tlsListeners;
  std::vector<SocketFile> files;
  std::vector<std::thread> threads;
  bool started = false;
  bool stopped = false;
};

Server::Parts::Parts(const Limits& limits, Handler handler, unsigned given)
    : threadCount(std::max(1u, given)),
      core(std::make_shared<Core>(limits, std::move(handler), static_cast<int>(threadCount))),
      guard(core->context.get_executor()) {}

void Server::Parts::add(Descriptor socket, const Listener::Tls& tls) {
  const std::lock_guard lock(mutex);
  listeners.push_back(std::make_shared<Listener>(core, std::move(socket), tls));
  if (started && !core->stopping) listeners.back()->start();
}

void Server::Parts::work() noexcept {
  for (;;) {
    try {
      core->context.run();
      return;
    } catch (const std::exception& error) {
      core->complain(std::string("A network thread met an error: ") + error.what());
    }
  }
}

void Server::Parts::stopListening() {
  const std::lock_guard lock(mutex);
  for (const auto& listener : listeners) listener->stop();
  listeners.clear();
  tlsListeners.clear();
  files.clear();
}

// Nothing is left to be done but to end what waits; then the threads run out of work.
void Server::Parts::finish() {
  guard.reset();
  std::vector<std::thread> ended;
  {
    const std::lock_guard lock(mutex);
    ended.swap(threads);
  }
  for (std::thread& thread : ended) thread.join();
  if (ended.empty()) work();  // never started: what was posted is let go of
  const std::lock_guard lock(mutex);
  stopped = true;
  done.notify_all();
}

void Server::Parts::waitUntilStopped() {
  std::unique_lock lock(mutex);
  done.wait(lock, [this] { return stopped; });
}

Server::Server(const Limits& limits, Handler handler, unsigned threads)
    : m_parts(std::make_unique<Parts>(limits, std::move(handler), threads)) {}

Server::~Server() {
  stop();
}

void Server::onRefusal(Refusal refusal) {
  m_parts->core->refuse = std::move(refusal);
}
void Server::onAdmission(Admission admission) {
  m_parts->core->admit = std::move(admission);
}
void Server::onComplaint(Complaint complaint) {
  m_parts->core->complaint = std::move(complaint);
}

void Server::listenUnix(const std::filesystem::path& path, unsigned mode,
                        const std::string& group) {
  Descriptor socket = listenOnUnixSocket(path, mode, group);
  SocketFile file(path);
  m_parts->add(std::move(socket));
  const std::lock_guard lock(m_parts->mutex);
  m_parts->files.push_back(std::move(file));
}

std::uint16_t Server::listenTcp(const std::string& host, std::uint16_t port) {
  std::vector<Descriptor> sockets = listenOnTcp(host, port);
  const std::uint16_t taken = portOf(sockets.front().get());
  for (Descriptor& socket : sockets) m_parts->add(std::move(socket));
  return taken;
}

std::uint16_t Server::listenTls(const std::string& host, std::uint16_t port,
                                const TlsFiles& files) {
  const Listener::Tls tls = loadTlsContext(files);
  std::vector<Descriptor> sockets = listenOnTcp(host, port);
  const std::uint16_t taken = portOf(sockets.front().get());
  for (Descriptor& socket : sockets) {
    m_parts->add(std::move(socket), tls);
    const std::lock_guard lock(m_parts->mutex);
    m_parts->tlsListeners.push_back({m_parts->listeners.back(), files});
  }
  return taken;
}

void Server::adopt(int listeningDescriptor) {
  Descriptor socket(listeningDescriptor);
  checkListening(socket.get());
  m_parts->add(std::move(socket));
}

void Server::reloadTls() {
  const std::lock_guard lock(m_parts->mutex);
  std::vector<Listener::Tls> contexts;
  for (const auto& one : m_parts->tlsListeners) contexts.push_back(loadTlsContext(one.files));
  for (std::size_t i = 0; i < contexts.size(); ++i) {
    m_parts->tlsListeners[i].listener->setTls(contexts[i]);
  }
}

void Server::start() {
  const std::lock_guard lock(m_parts->mutex);
  if (m_parts->core->stopping || std::exchange(m_parts->started, true)) return;
  for (const auto& listener : m_parts->listeners) listener->start();
  for (unsigned i = 0; i < m_parts->threadCount; ++i) {
    m_parts->threads.emplace_back([parts = m_parts.get()] { parts->work(); });
  }
}

void Server::run() {
  start();
  m_parts->waitUntilStopped();
}

void Server::stop(std::chrono::milliseconds grace) {
  Core& core = *m_parts->core;
  if (core.stopping.exchange(true)) return m_parts->waitUntilStopped();
  m_parts->stopListening();
  for (const auto& connection : core.connections.all()) connection->stop();
  core.connections.waitUntilEmpty(grace);
  while (!core.connections.waitUntilEmpty(std::chrono::milliseconds(0))) {
    for (const auto& connection : core.connections.all()) connection->cut();
    core.connections.waitUntilEmpty(std::chrono::milliseconds(100));
  }
  m_parts->finish();
}

Figures Server::figures() const {
  const Core& core = *m_parts->core;
  Figures figures;
  figures.connectionsOpen = core.connections.open();
  figures.connectionsOpened = core.connections.opened();
  figures.connectionsRefused = core.connections.refused();
  figures.acceptFailures = core.acceptFailures;
  figures.handshakesFailed = core.handshakesFailed;
  figures.requests = core.requests;
  figures.requestsRefused = core.requestsRefused;
  figures.bytesIn = core.bytesIn;
  figures.bytesOut = core.bytesOut;
  return figures;
}

}  // namespace EventApps::Http
