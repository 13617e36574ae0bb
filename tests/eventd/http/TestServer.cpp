#include "tests/eventd/http/TestServer.h"

#include <chrono>
#include <stdexcept>
#include <thread>
#include <utility>

namespace EventSystemTest {
namespace {

constexpr std::chrono::seconds kMost(120);

std::string described(const Http::Request& request) {
  std::string text = request.method + " " + request.path;
  for (const auto& [name, value] : request.query) {
    text.append(" [").append(name).append("=").append(value).append("]");
  }
  return text.append("\n").append(request.body);
}

}  // namespace

bool eventually(const std::function<bool()>& happened) {
  const auto end = std::chrono::steady_clock::now() + kMost;
  while (!happened()) {
    if (std::chrono::steady_clock::now() > end) return false;
    std::this_thread::yield();
  }
  return true;
}

TestServer::TestServer(const Http::Limits& limits, const Change& change, unsigned threads)
    : m_server(std::make_unique<Http::Server>(
          limits, [this](const std::shared_ptr<Http::Exchange>& exchange) { handle(exchange); },
          threads)) {
  m_server->onComplaint([this](const std::string& message) {
    const std::lock_guard lock(m_mutex);
    m_complaints.push_back(message);
  });
  m_server->listenUnix(socket(), 0600);
  m_port = m_server->listenTcp("127.0.0.1", 0);
  if (change) change(*m_server);
  m_server->start();
}

void TestServer::handle(const std::shared_ptr<Http::Exchange>& exchange) {
  const std::string& path = exchange->request().path;
  if (path == "/hello") return exchange->respond({200, "text/plain", "hello", {}});
  if (path == "/wait") return keep(exchange);
  if (path == "/throw") throw std::runtime_error("a handler's error");
  if (path == "/drop") return;
  if (path == "/stream") {
    exchange->startStream({200, "text/event-stream", "", {}});
    return keep(exchange);
  }
  exchange->respond({200, "text/plain", described(exchange->request()), {}});
}

void TestServer::keep(const std::shared_ptr<Http::Exchange>& exchange) {
  exchange->onClose([this] { ++closed; });
  const std::lock_guard lock(m_mutex);
  m_kept.push_back(exchange);
  m_arrived.notify_all();
}

std::vector<std::shared_ptr<Http::Exchange>> TestServer::kept(std::size_t count) {
  std::unique_lock lock(m_mutex);
  m_arrived.wait_for(lock, kMost, [&] { return m_awake || m_kept.size() >= count; });
  return std::exchange(m_kept, {});
}

void TestServer::wakeUp() {
  const std::lock_guard lock(m_mutex);
  m_awake = true;
  m_arrived.notify_all();
}

std::vector<std::string> TestServer::complaints() {
  const std::lock_guard lock(m_mutex);
  return m_complaints;
}

}  // namespace EventSystemTest
