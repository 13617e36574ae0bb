// Reads the queues without an event manager: beside a running writer, and without changing
// anything.
//
// Thread safety: none; needs a running host for its whole life.

#ifndef EVENTSYSTEM_APPS_COMMON_QUEUEREADER_H
#define EVENTSYSTEM_APPS_COMMON_QUEUEREADER_H

#include <functional>
#include <memory>
#include <optional>

#include "apps/common/EventView.h"
#include "host/Host.h"

namespace EventApps {

class QueueReader {
 public:
  QueueReader() = default;
  virtual ~QueueReader() = default;

  QueueReader(const QueueReader&) = delete;
  QueueReader& operator=(const QueueReader&) = delete;

  // Returns false to end the walk.
  using Visitor = std::function<bool(const EventView&)>;

  // The events of one queue that are filed under higher ids than `afterId`, damaged ones included.
  virtual void forEach(unsigned int dsid, unsigned long afterId, const Visitor& visit) const = 0;

  // The events of all data selections, also of those that nobody has added.
  virtual void forEachOfDataSelections(const Visitor& visit) const = 0;

  // The events of all queues, as they are now where they are in the database: whoever calls what is
  // returned, in whatever thread, walks them, all of them at the cost of one walk.
  using Walk = std::function<void(const Visitor&)>;
  virtual Walk beginAll() const = 0;

  virtual std::optional<EventView> find(unsigned long id, unsigned int dsid) const = 0;

  // The highest id ever handed out in a queue: the noted one, or that of a row above it. Looks at
  // every row where there is a table.
  virtual unsigned long highestId(unsigned int dsid) const = 0;

  // The highest id that is noted as handed out; costs little.
  virtual unsigned long notedHighestId(unsigned int dsid) const = 0;
};

// A reader of the queues where the host has them: in the database or at the cluster service.
std::unique_ptr<QueueReader> readerOf(const EventSystemHost::Host& host);

}  // namespace EventApps

#endif
