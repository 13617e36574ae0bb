// Checks all queues, with repair on demand.
//
// Every event is read by the thread that walks whole tables, so that nobody who stores waits for
// it. Only where something is wrong, which is rare, the library looks for itself, and repairs.

#ifndef EVENTSYSTEM_APPS_EVENTD_QUEUE_CHECKTASK_H
#define EVENTSYSTEM_APPS_EVENTD_QUEUE_CHECKTASK_H

#include <array>
#include <functional>
#include <mutex>
#include <string>
#include <vector>

#include "apps/eventd/queue/Core.h"
#include "apps/eventd/queue/Task.h"

namespace EventApps {

// What the library does of a check.
//
// Thread safety: made by any thread, used by the queue thread.
class CheckTask : public Task {
 public:
  // On the answering thread.
  using Done = std::function<void(const CheckResult&)>;

  // `isSound`: nothing is wrong, and there is nothing to be done.
  CheckTask(Core& core, bool fix, bool isSound, Done done);

  bool step() override;
  void fail(const std::exception& problem) override;

 private:
  void check();
  void answer();
  void note() const;

  Core& m_core;
  const bool m_fix;
  const bool m_isSound;
  const Done m_done;
  CheckResult m_result;
};

// One check for all who have asked before it begins.
//
// Thread safety: any thread.
class Checks {
 public:
  // The core lives until it has been answered, and this lives as long as the core.
  void check(Core& core, bool fix, CheckTask::Done done);

 private:
  void begin(Core& core, bool fix);

  std::mutex m_mutex;
  std::array<std::vector<CheckTask::Done>, 2> m_waiting;  // without repair, and with it
};

}  // namespace EventApps

#endif
