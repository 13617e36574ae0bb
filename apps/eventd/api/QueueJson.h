// Queues and limits as JSON.
//
// Thread safety: pure functions of their arguments.

#ifndef EVENTSYSTEM_APPS_EVENTD_API_QUEUEJSON_H
#define EVENTSYSTEM_APPS_EVENTD_API_QUEUEJSON_H

#include <nlohmann/json_fwd.hpp>

#include "apps/eventd/queue/ServiceRequests.h"

namespace EventApps::Api {

// In the order of their numbers; a data selection with its name and type.
nlohmann::ordered_json jsonOfQueues(const FiguresSnapshot& figures);

// The fields of every kind of event, by its name.
nlohmann::ordered_json jsonOfKinds();

}  // namespace EventApps::Api

#endif
