// The end of one call of the cluster service, shared by all the requests that it takes.
//
// Thread safety: plain values.

#ifndef EVENTSYSTEM_HOST_CLUSTER_DEADLINE_H
#define EVENTSYSTEM_HOST_CLUSTER_DEADLINE_H

#include <algorithm>
#include <chrono>

namespace EventSystemHost {

class Deadline {
 public:
  using Clock = std::chrono::steady_clock;
  using Milliseconds = std::chrono::milliseconds;

  // Attempts that a call has time for, at the least.
  static constexpr int kShares = 4;

  explicit Deadline(Milliseconds budget)
      : m_end(Clock::now() + budget), m_share(std::max(budget / kShares, Milliseconds(1))) {}

  Clock::time_point end() const { return m_end; }
  bool passed() const { return Clock::now() >= m_end; }

  Milliseconds left() const {
    const auto rest = std::chrono::duration_cast<Milliseconds>(m_end - Clock::now());
    return std::max(rest, Milliseconds(0));
  }

  // What one attempt gets. Never all of it: a member that has stopped answers nothing at all, and
  // a request that was handed on to a leader that has just died is answered after 7 s, when no
  // time is left to ask another member.
  Milliseconds attempt() const { return std::min(left(), m_share); }
  Milliseconds share() const { return m_share; }

 private:
  Clock::time_point m_end;
  Milliseconds m_share;
};

}  // namespace EventSystemHost

#endif
