// A run of copies: what one start of a member hands in, event by event in the order of ids.
//
// When a copy fails, those behind it must not overtake it, and need not each wait for a service
// that is away: they fail at once, until the one that failed is handed in again, or the run is over
// because something else is asked for.
//
// Thread safety: any thread.

#ifndef EVENTSYSTEM_HOST_CLUSTER_COPYRUN_H
#define EVENTSYSTEM_HOST_CLUSTER_COPYRUN_H

#include <mutex>

namespace EventSystemHost {

class QueueLane;

class CopyRun {
 public:
  // Whether no copy before this one has failed.
  bool admits(const QueueLane& lane, unsigned long id) const {
    const std::lock_guard lock(m_mutex);
    return m_lane != &lane || id <= m_failed;
  }

  void note(const QueueLane& lane, unsigned long id, bool succeeded) {
    const std::lock_guard lock(m_mutex);
    m_lane = succeeded ? nullptr : &lane;
    m_failed = id;
  }

  // Something else was asked for.
  void end() {
    const std::lock_guard lock(m_mutex);
    m_lane = nullptr;
  }

 private:
  mutable std::mutex m_mutex;
  const QueueLane* m_lane = nullptr;  // null: no copy of the run has failed
  unsigned long m_failed = 0;
};

}  // namespace EventSystemHost

#endif
