// The queues as the database tables hold them, read without an event manager: beside a running
// writer, and without changing anything. A table that does not exist yet is an empty queue.
//
// Thread safety: none; needs a running host for its whole life.

#ifndef EVENTSYSTEM_APPS_EVENTCTL_QUEUEREADER_H
#define EVENTSYSTEM_APPS_EVENTCTL_QUEUEREADER_H

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "EventSystem/platform/OrbDB.h"
#include "apps/eventctl/CommandLine.h"
#include "apps/eventctl/EventView.h"
#include "apps/eventctl/Session.h"

namespace EventCtl {

struct DataSelection {
  unsigned int id = 0;
  int type = 0;
  std::string name;
};

class QueueReader {
 public:
  // Returns false to end the walk.
  using Visitor = std::function<bool(const EventView&)>;

  // The events of one queue, damaged rows included, in the order of their row ids.
  void forEach(unsigned int dsid, const Visitor& visit) const;

  // The events of all data selections.
  void forEachOfDataSelections(const Visitor& visit) const;

  std::optional<EventView> find(unsigned long id, unsigned int dsid) const;

  // The highest row id of a queue; 0 for an empty one.
  unsigned long highestRowId(unsigned int dsid) const;

  // The highest id ever handed out in a queue.
  unsigned long highestId(unsigned int dsid) const;

  // The table of data selections, whether or not they have events.
  std::vector<DataSelection> dataSelections() const;
};

// A running host that reads only, with the queues' tables in it. Throws CommandError where the
// queues are not in the database.
OpenHost openReader(const GlobalOptions& options);

}  // namespace EventCtl

#endif
