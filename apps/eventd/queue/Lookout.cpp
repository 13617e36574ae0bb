#include "apps/eventd/queue/Lookout.h"

#include <string>
#include <utility>

namespace EventApps {

Lookout::Lookout(const ServiceLimits& limits, const Health& health, Worker& answers, Timer& timer,
                 std::function<void()> look)
    : m_limits(limits),
      m_health(health),
      m_answers(answers),
      m_timer(timer),
      m_look(std::move(look)) {}

void Lookout::ask(Done done) {
  const Clock::time_point now = Clock::now();
  {
    const std::lock_guard lock(m_mutex);
    if (m_begun && now - *m_begun >= m_limits.lookPatience) {
      return tell({std::move(done)}, withoutAnswer());
    }
    if (!m_begun && knows(now)) return tell({std::move(done)}, m_health.readiness());
    m_waiting.push_back(std::move(done));
    if (m_begun) return;
    m_begun = now;
  }
  m_timer.callAfter(m_limits.lookPatience, [this, now] { giveUp(now); });
  m_look();
}

bool Lookout::knows(Clock::time_point now) const {
  const auto age = m_health.readiness().ready() ? m_limits.lookAge : m_limits.lookAgain;
  return m_ended && now - *m_ended < age;
}

void Lookout::ended() {
  const std::lock_guard lock(m_mutex);
  m_begun.reset();
  m_ended = Clock::now();
  tell(std::exchange(m_waiting, {}), m_health.readiness());
}

void Lookout::giveUp(Clock::time_point begun) {
  const std::lock_guard lock(m_mutex);
  if (m_begun == begun) tell(std::exchange(m_waiting, {}), withoutAnswer());
}

Readiness Lookout::withoutAnswer() const {
  Readiness known = m_health.readiness();
  if (!known.ready()) return known;
  return {false, false,
          "a small read, write and flush has not ended within " +
              std::to_string(m_limits.lookPatience.count()) +
              " ms: the queue is busy, or its disk or the cluster service hangs"};
}

void Lookout::tell(std::vector<Done> waiting, const Readiness& readiness) {
  m_answers.post([waiting = std::move(waiting), readiness] {
    for (const Done& done : waiting) done(readiness);
  });
}

}  // namespace EventApps
