// Many producers and consumers on one eventd, which may be killed and started again under them.
//
// Every event is posted with a key of its own until it is acknowledged, so each must be read once.
// Consumers share the global queue by the remainder of the id, read, and delete what they have
// read; an event that another one deleted would be missed.
//
// Thread safety: run() makes its own threads and returns when they have ended.

#ifndef EVENTSYSTEM_TESTS_EVENTD_LOAD_LOAD_H
#define EVENTSYSTEM_TESTS_EVENTD_LOAD_LOAD_H

#include <atomic>
#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

#include "tests/eventd/load/Books.h"
#include "tests/eventd/load/DaemonProcess.h"

namespace EventSystemTest {

struct LoadPlan {
  std::string name;  // begins every key and text; another for every run on one home
  unsigned int producers = 16;
  unsigned int consumers = 4;
  std::chrono::milliseconds time{2000};
  std::vector<std::chrono::milliseconds> kills;  // after the start, growing
};

struct LoadResult {
  Books::Balance balance;
  std::uint64_t left = 0;  // events in the queue at the end
  std::uint64_t full = 0;  // posts that found the queue full and came again
  std::uint64_t retried = 0;
  double seconds = 0;                    // in which producers produced
  std::vector<std::uint32_t> latencies;  // of acknowledged posts that needed one try, in
                                         // microseconds, sorted
};

class Client;

class Load {
 public:
  Load(DaemonProcess& daemon, LoadPlan plan);

  LoadResult run();

 private:
  void produce(unsigned int number);
  void postUntilAcknowledged(Client& client, unsigned int producer, unsigned long number,
                             std::vector<std::uint32_t>& latencies);
  void consume(unsigned int number);
  void removeUntilGone(Client& client, unsigned long id);
  void killInTime();

  DaemonProcess& m_daemon;
  const LoadPlan m_plan;
  Books m_books;
  std::atomic<bool> m_producing{true};
  std::atomic<bool> m_consuming{true};
  std::atomic<std::uint64_t> m_full{0};
  std::atomic<std::uint64_t> m_retried{0};
  std::mutex m_mutex;
  std::vector<std::uint32_t> m_latencies;
};

}  // namespace EventSystemTest

#endif
