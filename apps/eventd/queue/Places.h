// A bounded number of places.
//
// Thread safety: any thread.

#ifndef EVENTSYSTEM_APPS_EVENTD_QUEUE_PLACES_H
#define EVENTSYSTEM_APPS_EVENTD_QUEUE_PLACES_H

#include <atomic>
#include <cstddef>
#include <memory>
#include <utility>

namespace EventApps {

class Places {
 public:
  // Held for as long as it lives.
  using Taken = std::shared_ptr<void>;

  explicit Places(std::size_t most) : m_most(most) {}

  // Null when all are taken.
  Taken take() {
    if (m_count->fetch_add(1) >= m_most) {
      --*m_count;
      return nullptr;
    }
    return {m_count.get(), [count = m_count](void*) { --*count; }};
  }

  // One here and one of `others`; null when either has none.
  Taken takeWith(Places& others) {
    auto both = std::make_pair(take(), others.take());
    if (!both.first || !both.second) return nullptr;
    return std::make_shared<std::pair<Taken, Taken>>(std::move(both));
  }

  std::size_t taken() const { return *m_count; }

 private:
  const std::size_t m_most;
  const std::shared_ptr<std::atomic<std::size_t>> m_count =
      std::make_shared<std::atomic<std::size_t>>(0);
};

}  // namespace EventApps

#endif
