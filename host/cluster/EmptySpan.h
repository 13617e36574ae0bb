// A stretch of ids of one queue that holds no event and never will again: ids are handed out
// upwards only, so where all ids are handed out and no event is left, none appears. A consumer
// that always asks from the start of the queue is spared the way over what it has consumed.
//
// Thread safety: plain values.

#ifndef EVENTSYSTEM_HOST_CLUSTER_EMPTYSPAN_H
#define EVENTSYSTEM_HOST_CLUSTER_EMPTYSPAN_H

#include <cstdint>

namespace EventSystemHost {

class EmptySpan {
 public:
  // The id after which to look, for a reader that asks for the first event after `afterId`.
  unsigned long skip(unsigned long afterId) const;

  // Whether the span is still about this queue: false when the queue was removed or restored from
  // a backup behind our back. `birth` is the revision that created the queue's sequence, `highest`
  // the highest id handed out.
  bool holds(std::int64_t birth, unsigned long highest) const;

  // All ids from `first` to `last` are handed out and hold no event.
  void learn(std::int64_t birth, unsigned long first, unsigned long last);

  // This event existed and was deleted.
  void emptied(unsigned long id);

 private:
  bool known() const { return m_last != 0; }

  std::int64_t m_birth = 0;
  unsigned long m_first = 0;
  unsigned long m_last = 0;  // 0: nothing is known
};

}  // namespace EventSystemHost

#endif
