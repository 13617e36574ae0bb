// The library in cluster mode, on the reference host: the global queue. One at a time.
//
// Thread safety: none.

#ifndef EVENTSYSTEM_BENCH_CLUSTER_LIBRARYQUEUE_H
#define EVENTSYSTEM_BENCH_CLUSTER_LIBRARYQUEUE_H

#include <memory>
#include <string>
#include <vector>

#include "EventSystem/Event.h"
#include "EventSystem/EventManager.h"
#include "bench/cluster/Queue.h"
#include "host/Host.h"
#include "tests/support/TempDir.h"

namespace Bench {

// The event that both sides store.
std::unique_ptr<EventSystem::Event> sampleEvent();
std::string sampleText();

class LibraryQueue : public Queue {
 public:
  LibraryQueue(const std::vector<std::string>& endpoints, const std::string& queue);

  void add() override;
  unsigned long next(unsigned long afterId) override { return nextOf(0, afterId); }
  // The same in the queue of a data selection.
  unsigned long nextOf(unsigned int dsid, unsigned long afterId);
  void remove(unsigned long id) override;

 private:
  EventSystemTest::TempDir m_home;
  std::unique_ptr<EventSystem::Event> m_event;
  std::unique_ptr<EventSystemHost::Host> m_host;
  std::unique_ptr<EventSystem::EventManager> m_manager;
};

}  // namespace Bench

#endif
