// What each operation of the API does.
//
// Thread safety: network threads; see Router.h.

#ifndef EVENTSYSTEM_APPS_EVENTD_API_HANDLERS_H
#define EVENTSYSTEM_APPS_EVENTD_API_HANDLERS_H

#include <string>

#include "apps/eventd/api/Problem.h"
#include "apps/eventd/api/Router.h"

namespace EventApps::Api {

Handler postEvents;
Handler readEvents;
Handler streamEvents;
Handler findEvent;
Handler removeEvent;
Handler removeEvents;

Handler listQueues;
Handler addQueue;
Handler removeQueue;
Handler checkQueues;

Handler showStats;
Handler showLimits;
Handler showCluster;
Handler showWhoami;
Handler showHealth;
Handler showReadiness;
Handler showMetrics;
Handler showOpenApi;
Handler showProblem;

// The console's files, for paths that are no route; 404 when there is no such file.
void showAsset(const CallPtr& call);

// The queue that a path names; the global queue is 0 whatever number it is called by. Throws
// Refused when there is none.
unsigned int queueIn(const Services& services, const Call& call);

// What a client is told when the queues could not do what it asked for, with their code and words.
Problem queueProblem(int code, const std::string& problem);

// Whether a body is there; then it must be JSON. Throws Refused.
nlohmann::json optionalBody(const Call& call, std::initializer_list<std::string_view> members);

}  // namespace EventApps::Api

#endif
