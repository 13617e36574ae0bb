// The newest events of one queue, bounded in number and bytes.
//
// Thread safety: none.

#ifndef EVENTSYSTEM_APPS_EVENTD_QUEUE_EVENTRING_H
#define EVENTSYSTEM_APPS_EVENTD_QUEUE_EVENTRING_H

#include <cstddef>
#include <map>
#include <optional>
#include <set>

#include "apps/eventd/queue/Published.h"

namespace EventApps {

class EventRing {
 public:
  EventRing(std::size_t mostEvents, std::size_t mostBytes)
      : m_mostEvents(mostEvents), m_mostBytes(mostBytes) {}

  // From now on it has every event above `id`; nothing when it has begun already.
  void beginAfter(unsigned long id);

  // Events come with growing ids; the oldest go when there is no room.
  void add(EventPtr event);

  void remove(unsigned long id);

  // Forgets all events up to now.
  void clear();

  // Has nothing, until it begins anew.
  void stop();

  // Forgets the oldest event, of which there must be one.
  void dropFirst();

  // About how much memory its events take.
  std::size_t bytes() const { return m_bytes; }

  // Whether it has all events above `id`.
  bool covers(unsigned long id) const { return m_floor && id >= *m_floor; }

  // The highest id that it knows of, also when that event is gone.
  std::optional<unsigned long> last() const { return m_last; }

  struct Found {
    EventList events;
    unsigned long seenTo = 0;  // events above it were not looked at
  };

  // The first events above `after`, which must be covered, of these types; empty: of all.
  Found after(unsigned long after, const std::set<int>& types, std::size_t most) const;

 private:
  const std::size_t m_mostEvents;
  const std::size_t m_mostBytes;
  std::map<unsigned long, EventPtr> m_events;
  std::size_t m_bytes = 0;
  std::optional<unsigned long> m_floor;
  std::optional<unsigned long> m_last;
};

}  // namespace EventApps

#endif
