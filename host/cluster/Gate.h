// A lock that is waited for until a deadline.
//
// Thread safety: any thread.

#ifndef EVENTSYSTEM_HOST_CLUSTER_GATE_H
#define EVENTSYSTEM_HOST_CLUSTER_GATE_H

#include <condition_variable>
#include <mutex>

#include "host/cluster/Deadline.h"

namespace EventSystemHost {

class Gate {
 public:
  // Holds the gate from its construction to its end, unless the deadline ended first.
  class Pass {
   public:
    Pass(Gate& gate, const Deadline& deadline) : m_gate(gate) {
      std::unique_lock lock(gate.m_mutex);
      m_entered =
          gate.m_left.wait_until(lock, deadline.end(), [&gate] { return !gate.m_occupied; });
      if (m_entered) gate.m_occupied = true;
    }
    ~Pass() {
      if (!m_entered) return;
      {
        const std::lock_guard lock(m_gate.m_mutex);
        m_gate.m_occupied = false;
      }
      m_gate.m_left.notify_one();
    }

    Pass(const Pass&) = delete;
    Pass& operator=(const Pass&) = delete;

    explicit operator bool() const { return m_entered; }

   private:
    Gate& m_gate;
    bool m_entered = false;
  };

 private:
  std::mutex m_mutex;
  std::condition_variable m_left;
  bool m_occupied = false;
};

}  // namespace EventSystemHost

#endif
