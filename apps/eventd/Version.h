// The version of the program.
//
// Thread safety: constant data.

#ifndef EVENTSYSTEM_APPS_EVENTD_VERSION_H
#define EVENTSYSTEM_APPS_EVENTD_VERSION_H

namespace EventApps {

constexpr const char* kVersion = EVENTD_VERSION;

}  // namespace EventApps

#endif
