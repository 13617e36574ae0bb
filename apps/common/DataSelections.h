// The table of data selections, which decides what queues there are. It is in the database wherever
// the queues are.
//
// Thread safety: one thread at a time; needs a running host.

#ifndef EVENTSYSTEM_APPS_COMMON_DATASELECTIONS_H
#define EVENTSYSTEM_APPS_COMMON_DATASELECTIONS_H

#include <cstddef>
#include <string>
#include <vector>

#include "apps/common/QueueReader.h"
#include "host/Host.h"

namespace EventApps {

struct DataSelection {
  unsigned int id = 0;
  int type = 9;
  std::string name;  // at most kLongestSelectionName bytes
};

constexpr std::size_t kLongestSelectionName = 255;

// All of them, whether or not they have events.
std::vector<DataSelection> dataSelections();

// Durable when they return. Throw Failure, and change nothing then: when it is there already, when
// it is not there or still holds events.
void addDataSelection(EventSystemHost::Host& host, const DataSelection& selection);
void removeDataSelection(EventSystemHost::Host& host, unsigned int dsid);

unsigned long countEvents(const QueueReader& reader, unsigned int dsid);

}  // namespace EventApps

#endif
