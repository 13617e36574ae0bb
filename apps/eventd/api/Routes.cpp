#include <array>

#include "apps/eventd/api/Handlers.h"
#include "apps/eventd/api/Router.h"

namespace EventApps::Api {
namespace {

constexpr std::array<Route, 19> kRoutes = {{
    {"GET", "/v1/queues", Need::kRead, listQueues},
    {"PUT", "/v1/queues/{dsid}", Need::kAdmin, addQueue},
    {"DELETE", "/v1/queues/{dsid}", Need::kAdmin, removeQueue},
    {"POST", "/v1/queues/{dsid}/events", Need::kWrite, postEvents},
    {"GET", "/v1/queues/{dsid}/events", Need::kRead, readEvents},
    {"DELETE", "/v1/queues/{dsid}/events", Need::kAdmin, removeEvents},
    {"GET", "/v1/queues/{dsid}/events/stream", Need::kRead, streamEvents, "text/event-stream"},
    {"GET", "/v1/queues/{dsid}/events/{id}", Need::kRead, findEvent},
    {"DELETE", "/v1/queues/{dsid}/events/{id}", Need::kWrite, removeEvent},
    {"GET", "/v1/stats", Need::kRead, showStats},
    {"GET", "/v1/limits", Need::kRead, showLimits},
    {"POST", "/v1/check", Need::kAdmin, checkQueues},
    {"GET", "/v1/cluster", Need::kRead, showCluster},
    {"GET", "/v1/whoami", Need::kCredentials, showWhoami},
    {"GET", "/healthz", Need::kNothing, showHealth, ""},
    {"GET", "/readyz", Need::kNothing, showReadiness, ""},
    {"GET", "/metrics", Need::kMetrics, showMetrics, ""},
    {"GET", "/openapi.json", Need::kNothing, showOpenApi, ""},
    {"GET", "/problems/{name}", Need::kNothing, showProblem, ""},
}};

}  // namespace

std::span<const Route> routes() {
  return kRoutes;
}

}  // namespace EventApps::Api
