// Events for people: as rows of a table, or as a block of lines.
//
// Thread safety: functions that use only their arguments.

#ifndef EVENTSYSTEM_APPS_EVENTCTL_EVENTTABLE_H
#define EVENTSYSTEM_APPS_EVENTCTL_EVENTTABLE_H

#include <string>
#include <vector>

#include "apps/common/EventView.h"
#include "apps/common/Table.h"

namespace EventApps {

// For the help of the commands that print events.
constexpr const char* kHexHelp =
    "In JSON, bytes that are no UTF-8 are U+FFFD; such an event has one more member,\n"
    "eventStringHex: the exact bytes of its event string in hex.";

// The table of events, and one row of it.
Table eventTable(Output& output, Overflow overflow);
std::vector<std::string> tableRow(const EventView& event);

// "key: value" lines, complete.
void printBlock(Output& output, const EventView& event);

}  // namespace EventApps

#endif
