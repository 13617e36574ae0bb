// How much of the memory for bodies one request or answer has; given back at its end.
//
// Thread safety: none; the sum that several of them share is atomic.

#ifndef EVENTSYSTEM_APPS_EVENTD_HTTP_BODYSHARE_H
#define EVENTSYSTEM_APPS_EVENTD_HTTP_BODYSHARE_H

#include <atomic>
#include <cstddef>
#include <utility>

namespace EventApps::Http {

class BodyShare {
 public:
  // `sum` outlives it.
  explicit BodyShare(std::atomic<std::size_t>& sum) : m_sum(&sum) {}
  ~BodyShare() { *m_sum -= m_bytes; }
  BodyShare(BodyShare&& other) noexcept
      : m_sum(other.m_sum), m_bytes(std::exchange(other.m_bytes, 0)) {}
  BodyShare& operator=(BodyShare&&) = delete;

  // The sum of all shares, when this one is `bytes`.
  std::size_t grow(std::size_t bytes) {
    const std::size_t more = bytes - std::exchange(m_bytes, bytes);
    return *m_sum += more;
  }

 private:
  std::atomic<std::size_t>* m_sum;
  std::size_t m_bytes = 0;
};

}  // namespace EventApps::Http

#endif
