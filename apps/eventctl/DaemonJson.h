// What a daemon says, as the values that the commands work with.
//
// Thread safety: pure functions of their arguments. They throw nlohmann::json::exception for what
// is not as the interface has it.

#ifndef EVENTSYSTEM_APPS_EVENTCTL_DAEMONJSON_H
#define EVENTSYSTEM_APPS_EVENTCTL_DAEMONJSON_H

#include <nlohmann/json_fwd.hpp>
#include <utility>

#include "apps/common/DataSelections.h"
#include "apps/common/EventView.h"
#include "apps/common/QueueCheck.h"
#include "apps/eventctl/Statistics.h"

namespace EventApps {

EventView eventFrom(const nlohmann::json& event);

// A queue's figures, by its dsid.
std::pair<unsigned int, QueueFigures> figuresFrom(const nlohmann::json& queue);

DataSelection selectionFrom(const nlohmann::json& queue);

EventSystemHost::ClusterReport clusterFrom(const nlohmann::json& cluster);
Statistics statisticsFrom(const nlohmann::json& stats);

CheckReport checkReportFrom(const nlohmann::json& report);

}  // namespace EventApps

#endif
