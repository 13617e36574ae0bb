#include "tests/cluster/Workload.h"

#include <gtest/gtest.h>

#include <chrono>

namespace EventSystemTest {
namespace {

using EventSystemHost::ClusterClient;

constexpr char kQueue[] = "events";
constexpr std::chrono::minutes kPatience{1};

}  // namespace

Workload::Workload(const EventSystemHost::ClusterConfiguration& configuration,
                   const WorkloadOptions& options)
    : m_configuration(configuration), m_options(options) {
  for (int i = 0; i <= options.producers; ++i) {
    m_clients.push_back(std::make_unique<ClusterClient>(configuration));
  }
  for (std::size_t i = 1; i < m_clients.size(); ++i) {
    m_threads.emplace_back([this, i] { produce(*m_clients[i], "member" + std::to_string(i)); });
  }
  m_threads.emplace_back([this] { consume(*m_clients[0]); });
}

Workload::~Workload() {
  m_stopping = true;
  for (std::thread& thread : m_threads) {
    if (thread.joinable()) thread.join();
  }
}

// A write begins when its event is handed in for the first time: if that try was stored although it
// was reported as failed, its place in the queue is the event's.
void Workload::produce(ClusterClient& client, const std::string& member) {
  for (long number = 0; !m_stopping; ++number) {
    const std::string text = "event " + std::to_string(number) + " of " + member;
    const auto begin = History::now();
    for (bool stored = false; !stored;) {
      unsigned long id = 0;
      stored = client.newEvent(kQueue, member, text, 0, id, 0) == 0;
      if (stored) {
        m_history.wrote(text, id, begin, History::now());
        ++m_acknowledged;
      } else {
        ++m_failures;
      }
      const bool givesUp = !m_options.tryAgain || m_stopping;
      if (!stored && givesUp) {
        m_history.failed(text, begin);
        break;
      }
    }
  }
}

// Reads upwards and deletes what it is given. It stops in the middle of a delete that does not
// succeed, as a consumer may that is told to end.
void Workload::consume(ClusterClient& client) {
  unsigned long last = 0;
  while (!m_stopping) {
    unsigned long id = 0;
    std::string member;
    std::string text;
    const auto begin = History::now();
    if (client.getNextEvent(kQueue, last, id, member, text, 0) != 0) continue;
    m_history.read(last, id, text, begin, History::now());
    if (id == 0) {
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
      continue;
    }
    last = id;
    m_history.deleting(id, History::now());
    bool deleted = false;
    while (!deleted && !m_stopping) deleted = client.deleteEventById(kQueue, id, 0) == 0;
    if (deleted) m_history.deleted(id, History::now());
  }
}

bool Workload::waitForMore(const std::atomic<long>& counter, long more) {
  const long goal = counter + more;
  const auto end = History::now() + kPatience;
  while (counter < goal) {
    if (History::now() > end) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  return true;
}

const History& Workload::finish() {
  m_stopping = true;
  for (std::thread& thread : m_threads) thread.join();
  readTheRest();
  return m_history;
}

void Workload::readTheRest() {
  ClusterClient client(m_configuration);
  unsigned long last = 0;
  for (;;) {
    unsigned long id = 0;
    std::string member;
    std::string text;
    ASSERT_EQ(client.getNextEvent(kQueue, last, id, member, text, 0), 0u);
    if (id == 0) return;
    m_history.left(id, text);
    last = id;
  }
}

}  // namespace EventSystemTest
