// The queues as the database tables hold them. A table that does not exist yet is an empty queue.
//
// Thread safety: none; needs a running host for its whole life.

#ifndef EVENTSYSTEM_APPS_COMMON_DATABASEQUEUEREADER_H
#define EVENTSYSTEM_APPS_COMMON_DATABASEQUEUEREADER_H

#include <optional>

#include "apps/common/EventView.h"
#include "apps/common/QueueReader.h"

namespace EventApps {

class DatabaseQueueReader : public QueueReader {
 public:
  // In the order of the row ids.
  void forEach(unsigned int dsid, unsigned long afterId, const Visitor& visit) const override;
  void forEachOfDataSelections(const Visitor& visit) const override;
  Walk beginAll() const override;
  std::optional<EventView> find(unsigned long id, unsigned int dsid) const override;
  unsigned long highestId(unsigned int dsid) const override;
  unsigned long notedHighestId(unsigned int dsid) const override;

  // The highest row id of a queue; 0 for an empty one.
  unsigned long highestRowId(unsigned int dsid) const;

  // The highest id that is noted as given to an event of any data selection.
  unsigned long notedIdOfDataSelections() const;

  // The id that the next event of a queue gets. Those of data selections are one sequence.
  unsigned long nextId(unsigned int dsid) const;

  bool has(unsigned long id, unsigned int dsid) const { return typeOf(id, dsid).has_value(); }

  // The type that an event's row names; nothing when there is no such row.
  std::optional<int> typeOf(unsigned long id, unsigned int dsid) const;

  // Returns false to end the walk.
  using IdVisitor = std::function<bool(unsigned int dsid, unsigned long id)>;

  // The ids of one queue's rows, or of those of all data selections, without a look at the events.
  void forEachId(unsigned int dsid, const IdVisitor& visit) const;
  void forEachIdOfDataSelections(const IdVisitor& visit) const;
};

}  // namespace EventApps

#endif
