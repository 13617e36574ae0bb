// An event that survives power loss, as all readers share it.
//
// Thread safety: immutable; any thread. Its JSON is made once, by whoever asks first.

#ifndef EVENTSYSTEM_APPS_EVENTD_QUEUE_PUBLISHED_H
#define EVENTSYSTEM_APPS_EVENTD_QUEUE_PUBLISHED_H

#include <cstddef>
#include <memory>
#include <mutex>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "apps/common/EventView.h"

namespace EventApps {

class Published {
 public:
  explicit Published(EventView view) : m_view(std::move(view)) {}

  Published(const Published&) = delete;
  Published& operator=(const Published&) = delete;

  unsigned long id() const { return m_view.id; }
  int type() const { return m_view.type; }
  const EventView& view() const { return m_view; }

  // One line of JSON, without the line's end.
  const std::string& json() const;

  // About how much memory it takes, its JSON included.
  std::size_t bytes() const;

 private:
  const EventView m_view;
  mutable std::once_flag m_made;
  mutable std::string m_json;
};

using EventPtr = std::shared_ptr<const Published>;
using EventList = std::vector<EventPtr>;
using EventSpan = std::span<const EventPtr>;

}  // namespace EventApps

#endif
