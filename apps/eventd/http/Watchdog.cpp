#include "apps/eventd/http/Watchdog.h"

#include <utility>

namespace EventApps::Http {

void Watchdog::set(std::chrono::milliseconds time, const std::shared_ptr<void>& owner) {
  m_deadline = Clock::now() + time;
  if (m_deadline < m_fires) wait(owner);
}

void Watchdog::wait(const std::shared_ptr<void>& owner) {
  m_fires = m_deadline;
  m_timer.expires_at(m_fires);
  m_timer.async_wait([this, owner, round = ++m_round](const boost::system::error_code& error) {
    if (error || round != m_round) return;
    m_fires = Clock::time_point::max();
    if (m_deadline == Clock::time_point::max()) return;
    if (Clock::now() < m_deadline) return wait(owner);
    clear();
    m_callback();
  });
}

void Watchdog::cancel() {
  ++m_round;
  clear();
  boost::system::error_code ignored;
  m_timer.cancel(ignored);
}

}  // namespace EventApps::Http
