// The target of a request: what stands between its method and its version.
//
// Thread safety: a pure function.

#ifndef EVENTSYSTEM_APPS_EVENTD_HTTP_TARGET_H
#define EVENTSYSTEM_APPS_EVENTD_HTTP_TARGET_H

#include <string_view>

#include "apps/eventd/http/Request.h"

namespace EventApps::Http {

// Fills path and query of a request whose method is known. In the query "+" is a blank. Throws
// RefusedRequest for what is no target, and for escapes that hide something: a control character,
// a slash in the path, bytes that are no UTF-8.
void readTarget(std::string_view target, Request& request);

}  // namespace EventApps::Http

#endif
