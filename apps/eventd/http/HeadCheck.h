// The rules for a head as a whole, which keep a request from being one thing to a proxy and
// another to this server.
//
// Thread safety: pure functions.

#ifndef EVENTSYSTEM_APPS_EVENTD_HTTP_HEADCHECK_H
#define EVENTSYSTEM_APPS_EVENTD_HTTP_HEADCHECK_H

#include "apps/eventd/http/Request.h"

namespace EventApps::Http {

// `version` is 10 or 11. Throws RefusedRequest.
void checkHead(const Request& head, unsigned version);

}  // namespace EventApps::Http

#endif
