// The headers Content-Type and Accept, as far as a service with few types needs them.
//
// Thread safety: pure functions of their arguments.

#ifndef EVENTSYSTEM_APPS_EVENTD_API_MEDIATYPES_H
#define EVENTSYSTEM_APPS_EVENTD_API_MEDIATYPES_H

#include <string>
#include <string_view>

namespace EventApps::Api {

// "application/json" of "Application/JSON; charset=utf-8". Throws Refused for a charset other than
// UTF-8 (or its part US-ASCII).
std::string mediaTypeOf(std::string_view contentType);

// Whether an Accept header, empty where there is none, takes a type such as "application/json".
bool accepts(std::string_view accept, std::string_view mediaType);

}  // namespace EventApps::Api

#endif
