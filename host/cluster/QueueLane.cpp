#include "host/cluster/QueueLane.h"

#include <utility>

namespace EventSystemHost {

EmptySpan QueueLane::span() const {
  const std::lock_guard lock(m_spanMutex);
  return m_span;
}

void QueueLane::forgetSpan() {
  const std::lock_guard lock(m_spanMutex);
  m_span = EmptySpan();
}

void QueueLane::learnEmpty(std::int64_t birth, unsigned long first, unsigned long last) {
  const std::lock_guard lock(m_spanMutex);
  m_span.learn(birth, first, last);
}

void QueueLane::emptied(unsigned long id) {
  const std::lock_guard lock(m_spanMutex);
  m_span.emptied(id);
}

bool QueueLane::wentBack(std::int64_t revision) {
  const std::lock_guard lock(m_spanMutex);
  return revision < std::exchange(m_revision, revision);
}

}  // namespace EventSystemHost
