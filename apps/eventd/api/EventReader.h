// The events of a request's body, each checked as far as it can be before it is known which id it
// will get.
//
// Thread safety: pure functions of their arguments.

#ifndef EVENTSYSTEM_APPS_EVENTD_API_EVENTREADER_H
#define EVENTSYSTEM_APPS_EVENTD_API_EVENTREADER_H

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

#include "EventSystem/Event.h"
#include "apps/common/EventLimits.h"

namespace EventApps::Api {

using Events = std::vector<std::unique_ptr<EventSystem::Event>>;

// Where the events of one body go, and how many there may be.
struct BodyBounds {
  Destination destination;  // its id is not looked at
  std::size_t mostEvents = 0;
};

// `mediaType` is application/json, application/x-ndjson or text/plain. Throws Refused: for an event
// that cannot be stored with its index and, where there is one, its field and line.
Events readEvents(std::string_view body, std::string_view mediaType, const BodyBounds& bounds);

}  // namespace EventApps::Api

#endif
