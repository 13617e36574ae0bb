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
  // An event that is gone. When the oldest is, the date of the next one stays unknown.
  void remove(int type);
};

using Figures = std::map<unsigned int, QueueFigures>;  // by dsid; 0 is the global queue

// A count of all queues, at the cost of one walk. Throws Failure.
class FiguresReading {
 public:
  // They are counted as they are now, where they are in the database. `reader` outlives it.
  explicit FiguresReading(const QueueReader& reader);

  // Once, in whatever thread.
  Figures finish();

 private:
  QueueFigures& of(unsigned int dsid);

  const QueueReader& m_reader;
  Figures m_figures;
  QueueReader::Walk m_walk;
};

inline Figures readFigures(const QueueReader& reader) {
  return FiguresReading(reader).finish();
}

nlohmann::ordered_json jsonOfQueue(unsigned int dsid, const QueueFigures& queue);

}  // namespace EventApps

#endif
