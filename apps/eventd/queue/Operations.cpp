#include "apps/eventd/queue/Operations.h"

#include <utility>

namespace EventApps {

Operations::Operation::~Operation() {
  stopClock();
  const std::lock_guard lock(m_all.m_mutex);
  --m_all.m_open;
  m_all.m_changed.notify_all();
}

void Operations::Operation::stopClock() {
  if (std::exchange(m_measured, true) || m_all.m_observer == nullptr) return;
  const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - m_begin;
  m_all.m_observer->onOperation(m_name, taken.count());
}

OperationPtr Operations::begin(const char* name) {
  {
    const std::lock_guard lock(m_mutex);
    if (!m_takesMore) return nullptr;
    ++m_open;
  }
  return std::make_shared<Operation>(*this, name);
}

void Operations::takeNoMore() {
  const std::lock_guard lock(m_mutex);
  m_takesMore = false;
}

bool Operations::takesMore() const {
  const std::lock_guard lock(m_mutex);
  return m_takesMore;
}

void Operations::waitForAll() {
  std::unique_lock lock(m_mutex);
  m_changed.wait(lock, [this] { return m_open == 0; });
}

}  // namespace EventApps
