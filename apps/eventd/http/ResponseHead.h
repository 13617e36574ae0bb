// What stands before the body of a response.
//
// Thread safety: pure functions.

#ifndef EVENTSYSTEM_APPS_EVENTD_HTTP_RESPONSEHEAD_H
#define EVENTSYSTEM_APPS_EVENTD_HTTP_RESPONSEHEAD_H

#include <ctime>
#include <string>

#include "apps/eventd/http/Response.h"

namespace EventApps::Http {

enum class Framing {
  kLength,   // the body is the response's own
  kChunked,  // it follows in chunks
  kToTheEnd  // it ends with the connection
};

// Whether the response can be sent as it is: its status, and headers that begin no other header.
bool isSendable(const Response& response);

// Ends with the empty line. `now` is in seconds.
std::string headOf(const Response& response, Framing framing, bool keepAlive, std::time_t now);

// Whether a response of this status has a body at all.
bool mayHaveBody(unsigned status);

}  // namespace EventApps::Http

#endif
