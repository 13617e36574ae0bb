// What the tour of the cluster mode proves: that a queue holds exactly what its writers were
// promised. Every event that the tour writes tells who wrote it, and as which of theirs.
//
// Thread safety: plain values; the functions use only their arguments.

#ifndef EVENTSYSTEM_APPS_EVENTCTL_DEMOPROOF_H
#define EVENTSYSTEM_APPS_EVENTCTL_DEMOPROOF_H

#include <string>
#include <vector>

namespace EventApps {

// The event string of a writer's event, numbered from 1. `id` 0: none has been given yet.
std::string demoEventString(const std::string& writer, unsigned long number, unsigned long id);

// What became of an event as its writer knows it.
struct DemoFate {
  unsigned int dsid = 0;
  bool acknowledged = false;
  unsigned long id = 0;  // that it was acknowledged under; 0: not told
};

// All that one writer handed over, in its order.
struct DemoRecord {
  std::string writer;
  std::vector<DemoFate> events;

  unsigned long acknowledged(unsigned int dsid) const;
};

struct DemoFound {
  unsigned long id = 0;
  std::string eventString;
};

// A queue compared with what was written to it, in events.
struct DemoProof {
  std::vector<unsigned long> acknowledged;  // by writer
  unsigned long found = 0;
  unsigned long unanswered = 0;   // of those found, not acknowledged: stored, but nobody was told
  unsigned long lost = 0;         // acknowledged and not there
  unsigned long doubled = 0;      // there once more than once
  unsigned long disordered = 0;   // id not above the one before, or its writer's order changed
  unsigned long misnumbered = 0;  // under another id than the acknowledged one
  unsigned long foreign = 0;      // what nobody wrote in this form to this queue

  bool holds() const { return lost + doubled + disordered + misnumbered + foreign == 0; }
};

// `found`: the whole queue, as it was read.
DemoProof proveQueue(const std::vector<DemoRecord>& records, unsigned int dsid,
                     const std::vector<DemoFound>& found);

}  // namespace EventApps

#endif
