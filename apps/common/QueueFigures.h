// How much is in the queues.
//
// Thread safety: plain values; the functions use only their arguments.

#ifndef EVENTSYSTEM_APPS_COMMON_QUEUEFIGURES_H
#define EVENTSYSTEM_APPS_COMMON_QUEUEFIGURES_H

#include <map>
#include <nlohmann/json_fwd.hpp>

#include "apps/common/EventView.h"
#include "apps/common/QueueReader.h"

namespace EventApps {

struct QueueFigures {
  unsigned long count = 0;
  unsigned long damaged = 0;
  unsigned long oldest = 0;  // dates; 0 in an empty queue
  unsigned long newest = 0;
  unsigned long highestId = 0;  // ever handed out
  std::map<int, unsigned long> countByType;
  bool known = true;  // in the dataselection table, or the global queue

  void add(const EventView& event);
};

using Figures = std::map<unsigned int, QueueFigures>;  // by dsid; 0 is the global queue

// Counts all queues: time and reading grow with the number of events. Throws Failure.
Figures readFigures(const QueueReader& reader);

nlohmann::ordered_json jsonOfQueue(unsigned int dsid, const QueueFigures& queue);

}  // namespace EventApps

#endif
