// Lets so many do something at once; others wait for their turn, in the order in which they came.
//
// Thread safety: none.

#ifndef EVENTSYSTEM_APPS_EVENTD_QUEUE_TURNS_H
#define EVENTSYSTEM_APPS_EVENTD_QUEUE_TURNS_H

#include <cstddef>
#include <deque>
#include <functional>
#include <utility>

namespace EventApps {

class Turns {
 public:
  // Begins what is to be done; false when that has become needless, and the turn is another's.
  using Begin = std::function<bool()>;

  explicit Turns(std::size_t atOnce) : m_left(atOnce) {}

  // Calls `begin` now, or within the end() of somebody else's turn.
  void take(Begin begin) {
    m_line.push_back(std::move(begin));
    next();
  }

  // After what `begin` has begun.
  void end() {
    ++m_left;
    next();
  }

 private:
  void next() {
    while (m_left > 0 && !m_line.empty()) {
      const Begin begin = std::move(m_line.front());
      m_line.pop_front();
      if (begin()) --m_left;
    }
  }

  std::size_t m_left;
  std::deque<Begin> m_line;
};

}  // namespace EventApps

#endif
