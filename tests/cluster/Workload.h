// Several producers and one consumer on one queue, each with a client of its own, while the test
// does harm to the servers.
//
// Thread safety: the test's thread owns it; its threads are its own.

#ifndef EVENTSYSTEM_TESTS_CLUSTER_WORKLOAD_H
#define EVENTSYSTEM_TESTS_CLUSTER_WORKLOAD_H

#include <atomic>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "host/cluster/ClusterClient.h"
#include "tests/cluster/History.h"

namespace EventSystemTest {

struct WorkloadOptions {
  int producers = 3;
  // A write that failed is handed in again until it succeeds; otherwise the next event follows.
  bool tryAgain = true;
};

class Workload {
 public:
  // Each client gets this configuration, so that proxies can stand in between. Returns when all of
  // them have connected: harm that comes later is harm to calls, not to a start.
  Workload(const EventSystemHost::ClusterConfiguration& configuration,
           const WorkloadOptions& options);
  // Stops the threads.
  ~Workload();

  Workload(const Workload&) = delete;
  Workload& operator=(const Workload&) = delete;

  // Waits until this many more writes have been acknowledged. False when that takes a minute.
  bool waitForWrites(long more) const { return waitForMore(m_acknowledged, more); }
  // The same for writes that have failed.
  bool waitForFailures(long more) const { return waitForMore(m_failures, more); }

  // Stops the producers and the consumer, and reads what the consumer has left.
  const History& finish();

  long failures() const { return m_failures; }

 private:
  static bool waitForMore(const std::atomic<long>& counter, long more);
  void produce(EventSystemHost::ClusterClient& client, const std::string& member);
  void consume(EventSystemHost::ClusterClient& client);
  void readTheRest();

  const EventSystemHost::ClusterConfiguration m_configuration;
  const WorkloadOptions m_options;
  History m_history;
  std::atomic<bool> m_stopping{false};
  std::atomic<long> m_acknowledged{0};
  std::atomic<long> m_failures{0};
  std::vector<std::unique_ptr<EventSystemHost::ClusterClient>> m_clients;  // the consumer's first
  std::vector<std::thread> m_threads;
};

}  // namespace EventSystemTest

#endif
