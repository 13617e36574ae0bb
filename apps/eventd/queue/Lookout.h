// Finds out whether the queues can be used, when somebody wants to know: all that ask at a time
// share one look, which reads, writes and flushes. What is known from a moment ago is told at once,
// and a look that takes too long is an answer, too: it then hangs where others would.
//
// Thread safety: any thread, except for construction and destruction.

#ifndef EVENTSYSTEM_APPS_EVENTD_QUEUE_LOOKOUT_H
#define EVENTSYSTEM_APPS_EVENTD_QUEUE_LOOKOUT_H

#include <functional>
#include <mutex>
#include <optional>
#include <vector>

#include "apps/eventd/queue/Health.h"
#include "apps/eventd/queue/ServiceLimits.h"
#include "apps/eventd/queue/Timer.h"
#include "apps/eventd/queue/Worker.h"

namespace EventApps {

class Lookout {
 public:
  // On the answering thread.
  using Done = std::function<void(const Readiness&)>;

  // `look` begins a look and does not wait for it; ended() follows. The others outlive it.
  Lookout(const ServiceLimits& limits, const Health& health, Worker& answers, Timer& timer,
          std::function<void()> look);

  void ask(Done done);

  // By the answering thread: a look has ended, and what came of it is in the health.
  void ended();

 private:
  using Clock = Timer::Clock;

  bool knows(Clock::time_point now) const;
  void giveUp(Clock::time_point begun);
  Readiness withoutAnswer() const;
  void tell(std::vector<Done> waiting, const Readiness& readiness);

  const ServiceLimits m_limits;
  const Health& m_health;
  Worker& m_answers;
  Timer& m_timer;
  const std::function<void()> m_look;

  std::mutex m_mutex;  // guards what follows
  std::vector<Done> m_waiting;
  std::optional<Clock::time_point> m_begun;  // of the look that is under way
  std::optional<Clock::time_point> m_ended;  // of the last one
};

}  // namespace EventApps

#endif
