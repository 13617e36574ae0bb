// Checks all queues, with repair on demand.
//
// Thread safety: made by any thread, used by the queue thread.

#ifndef EVENTSYSTEM_APPS_EVENTD_QUEUE_CHECKTASK_H
#define EVENTSYSTEM_APPS_EVENTD_QUEUE_CHECKTASK_H

#include <functional>
#include <string>

#include "apps/eventd/queue/Core.h"
#include "apps/eventd/queue/Task.h"

namespace EventApps {

class CheckTask : public Task {
 public:
  // On the answering thread.
  using Done = std::function<void(CheckResult)>;

  CheckTask(Core& core, bool fix, Done done);

  bool step() override;
  void fail(const std::exception& problem) override;

 private:
  CheckReport check();
  void answer();
  void note() const;

  Core& m_core;
  const bool m_fix;
  const Done m_done;
  CheckResult m_result;
};

}  // namespace EventApps

#endif
