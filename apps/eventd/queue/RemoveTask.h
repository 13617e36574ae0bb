// Removes one event, or many.
//
// Thread safety: made by any thread, used by the queue thread.

#ifndef EVENTSYSTEM_APPS_EVENTD_QUEUE_REMOVETASK_H
#define EVENTSYSTEM_APPS_EVENTD_QUEUE_REMOVETASK_H

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "apps/eventd/queue/Core.h"
#include "apps/eventd/queue/Task.h"

namespace EventApps {

class RemoveTask : public Task {
 public:
  // On the answering thread.
  using Done = std::function<void(RemoveUpToResult)>;

  RemoveTask(Core& core, unsigned int dsid, std::vector<unsigned long> ids, Done done);

  bool step() override;
  void fail(const std::exception& problem) override;

 private:
  void remove(unsigned long id);
  void answer();

  Core& m_core;
  const unsigned int m_dsid;
  const std::vector<unsigned long> m_ids;
  const Done m_done;
  std::size_t m_next = 0;
  RemoveUpToResult m_result;
  Core::Removed m_removed;
};

// The ids of a queue's events up to `upTo`, as they are now; any thread. Throws Failure.
std::vector<unsigned long> idsUpTo(EventSystemHost::Host& host, unsigned int dsid,
                                   unsigned long upTo);

}  // namespace EventApps

#endif
