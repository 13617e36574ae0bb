// Plain writes of this process that were reported as failed although etcd may have stored them.
//
// A caller that is told of a failure may hand in the same event again. If the first try turns out
// to have been stored, the event that is there already is the answer: it was promised to nobody,
// so nothing is lost, and it is not stored a second time. An event string carries the time of its
// event, so equal texts are retries; where they are not, each success still has one event of that
// text to its name.
//
// All tries that are open at one time have the same conditions, so at most one of them was stored,
// and none of them can be stored any more once the queue's sequence has moved.
//
// Thread safety: none; belongs to the thread that has passed the gate of its queue.

#ifndef EVENTSYSTEM_HOST_CLUSTER_UNSETTLEDWRITES_H
#define EVENTSYSTEM_HOST_CLUSTER_UNSETTLEDWRITES_H

#include <deque>
#include <optional>
#include <string>

namespace EventSystemHost {

struct UnsettledWrite {
  unsigned long token;
  unsigned long id;  // that it gets if it is stored
  std::string hash;  // of member and text
};

class UnsettledWrites {
 public:
  const std::deque<UnsettledWrite>& open() const { return m_open; }

  void add(UnsettledWrite write);

  // The sequence has moved: `stored` is the token of the try that moved it, or 0 for none of them.
  void settle(unsigned long stored);

  // The id of an event with this hash that is stored although its writer was told otherwise. Each
  // is claimed once.
  std::optional<unsigned long> claim(const std::string& hash);

 private:
  std::deque<UnsettledWrite> m_open;
  std::deque<UnsettledWrite> m_stored;
};

}  // namespace EventSystemHost

#endif
