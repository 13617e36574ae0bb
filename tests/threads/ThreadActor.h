// One of many threads on the queues of one process: from a seed it calls every public operation
// that threads may call at once, and knows afterwards what must be in the queues of it.
//
// An actor deletes only what it has added, so that whatever the others do it can tell what it must
// find. It writes its ledger alone: a lock there would order the threads and hide their races.
//
// Thread safety: run() in a thread of its own; the rest before it starts and after it is joined.

#ifndef EVENTSYSTEM_TESTS_THREADS_THREADACTOR_H
#define EVENTSYSTEM_TESTS_THREADS_THREADACTOR_H

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "EventSystem/EventManager.h"
#include "EventSystem/HashEventStorage.h"
#include "host/Host.h"

namespace EventSystemTest {

struct RoundPlan {
  std::uint64_t seed = 1;
  int threads = 16;
  int operations = 150;  // of each thread
  std::string hostIni;
  bool cluster = false;  // what hostIni says
  int countLimit = 0;
  int ageLimitDays = 0;
  bool audit = false;  // a service leaves audit rows meanwhile
};

// What must be in a queue, by id.
using Kept = std::map<unsigned long, std::string>;

struct Ledger {
  std::map<unsigned int, Kept> kept;                         // by dsid; 0 for the global queue
  std::map<unsigned int, std::vector<unsigned long>> given;  // every id, deleted ones too
  std::vector<std::string> audits;                           // left for the import
  std::map<std::string, std::uint64_t> counts;
  std::vector<std::string> failures;
};

class ThreadActor {
 public:
  ThreadActor(const RoundPlan& plan, int number, EventSystem::EventManager& manager,
              EventSystemHost::Host& host, std::filesystem::path auditDatabase,
              const std::vector<std::string>& texts);

  void run();
  const Ledger& ledger() const { return m_ledger; }

 private:
  void step();
  void add();
  void readBack();
  void walk();
  void remove();
  void check();
  void parse();
  void log();
  void askHost();
  void readClock();
  void useQueueInMemory();
  void doWhatOneThreadMay();
  void leaveAuditRow();

  unsigned long random(unsigned long below);
  std::unique_ptr<EventSystem::Event> makeEvent(const std::string& mark);
  // The first event after `afterId`; null at the end of the queue and after a failure.
  std::unique_ptr<EventSystem::Event> next(unsigned long afterId, unsigned int queue);
  // 2 is another name of the global queue.
  unsigned int dsidOf(unsigned int queue) { return queue == 0 && random(2) == 0 ? 2 : queue; }
  void fail(const std::string& what);

  const RoundPlan& m_plan;
  const int m_number;
  EventSystem::EventManager& m_manager;
  EventSystemHost::Host& m_host;
  const std::filesystem::path m_auditDatabase;
  const std::vector<std::string>& m_texts;
  EventSystem::HashEventStorage m_inMemory;
  std::mt19937_64 m_random;
  int m_marks = 0;
  Ledger m_ledger;
};

// The mark in the text of an event; empty when there is none.
std::string markIn(const std::string& text);

}  // namespace EventSystemTest

#endif
