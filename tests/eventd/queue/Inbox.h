// What a subscriber was delivered.
//
// Thread safety: any thread.

#ifndef EVENTSYSTEM_TESTS_EVENTD_QUEUE_INBOX_H
#define EVENTSYSTEM_TESTS_EVENTD_QUEUE_INBOX_H

#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <utility>

#include "tests/eventd/queue/ServiceFixture.h"

namespace EventSystemTest {

class Inbox {
 public:
  std::optional<EventApps::Subscription> subscribe(EventApps::QueueService& service,
                                                   std::optional<unsigned long> after,
                                                   std::set<int> types = {},
                                                   unsigned int dsid = 0) {
    return service.subscribe(
        dsid, after, std::move(types), [this](EventApps::EventSpan events) { return take(events); },
        [this](const std::string& why) { end(why); });
  }

  void wantMore(bool more) {
    const std::lock_guard lock(m_mutex);
    m_wantsMore = more;
  }
  Ids ids() const {
    const std::lock_guard lock(m_mutex);
    return m_ids;
  }
  // Why nothing follows.
  std::string why() const {
    const std::lock_guard lock(m_mutex);
    return m_why;
  }
  // Whether there were ever so many.
  bool has(std::size_t count) const {
    return eventually([&] { return ids().size() >= count; });
  }

 private:
  bool take(EventApps::EventSpan events) {
    const std::lock_guard lock(m_mutex);
    for (const auto& event : events) m_ids.push_back(event->id());
    return m_wantsMore;
  }
  void end(const std::string& why) {
    const std::lock_guard lock(m_mutex);
    m_why = why;
  }

  mutable std::mutex m_mutex;
  Ids m_ids;
  std::string m_why;
  bool m_wantsMore = true;
};

}  // namespace EventSystemTest

#endif
