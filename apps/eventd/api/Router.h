// Which handler a method and a path lead to, and what somebody must be allowed to get there.
//
// Thread safety: constant data; the functions use only their arguments.

#ifndef EVENTSYSTEM_APPS_EVENTD_API_ROUTER_H
#define EVENTSYSTEM_APPS_EVENTD_API_ROUTER_H

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "apps/eventd/api/Call.h"

namespace EventApps::Api {

struct Services;

enum class Need {
  kNothing,
  kCredentials,  // whatever they allow
  kRead,
  kWrite,
  kAdmin,
  kMetrics  // as kRead, unless the configuration makes metrics public
};

// On a network thread; throws Refused, or answers then or later.
using Handler = void(Services&, const CallPtr&);

struct Route {
  std::string_view method;
  std::string_view pattern;  // "/v1/queues/{dsid}/events"
  Need need;
  Handler* handler;
  std::string_view produces = "application/json";  // empty: nothing that could be refused
};

std::span<const Route> routes();

struct Match {
  const Route* route = nullptr;  // null: nothing is there
  PathArguments arguments;
};

// HEAD is led where GET leads. Throws Refused when something is there, but not with this method.
Match findRoute(std::string_view method, std::string_view path);

}  // namespace EventApps::Api

#endif
