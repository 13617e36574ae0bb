// The description of the API, as it stands in openapi.json.
//
// Thread safety: constant data.

#ifndef EVENTSYSTEM_APPS_EVENTD_API_OPENAPI_H
#define EVENTSYSTEM_APPS_EVENTD_API_OPENAPI_H

namespace EventApps::Api {

const char* openApiDescription();

}  // namespace EventApps::Api

#endif
