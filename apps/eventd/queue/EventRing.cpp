#include "apps/eventd/queue/EventRing.h"

#include <algorithm>
#include <utility>

namespace EventApps {

void EventRing::beginAfter(unsigned long id) {
  if (m_floor) return;
  m_floor = id;
  m_last = id;
}

void EventRing::add(EventPtr event) {
  const unsigned long id = event->id();
  m_bytes += event->bytes();
  m_events.insert_or_assign(m_events.end(), id, std::move(event));
  m_last = id;
  while (m_events.size() > m_mostEvents || (m_bytes > m_mostBytes && !m_events.empty())) {
    dropFirst();
  }
}

void EventRing::remove(unsigned long id) {
  const auto found = m_events.find(id);
  if (found == m_events.end()) return;
  m_bytes -= found->second->bytes();
  m_events.erase(found);
}

void EventRing::clear() {
  m_events.clear();
  m_bytes = 0;
  m_floor = m_last;
}

void EventRing::dropFirst() {
  const auto first = m_events.begin();
  m_floor = std::max(m_floor.value_or(0), first->first);
  m_bytes -= first->second->bytes();
  m_events.erase(first);
}

EventRing::Found EventRing::after(unsigned long after, const std::set<int>& types,
                                  std::size_t most) const {
  Found found{{}, after};
  for (auto at = m_events.upper_bound(after); at != m_events.end(); ++at) {
    if (found.events.size() == most) return found;
    found.seenTo = at->first;
    if (types.empty() || types.contains(at->second->type())) found.events.push_back(at->second);
  }
  found.seenTo = std::max(found.seenTo, m_last.value_or(after));
  return found;
}

}  // namespace EventApps
