// All assets, in the order of their paths; defined by a file that the build makes.
//
// Thread safety: constant data.

#ifndef EVENTSYSTEM_APPS_EVENTD_CONSOLE_ASSETTABLE_H
#define EVENTSYSTEM_APPS_EVENTD_CONSOLE_ASSETTABLE_H

#include <span>

#include "apps/eventd/console/Assets.h"

namespace EventApps {

std::span<const Asset> assetTable();

}  // namespace EventApps

#endif
