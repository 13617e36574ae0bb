// Finds the first event after an id at a cost that does not grow with the queue.
//
// Thread safety: any thread.

#ifndef EVENTSYSTEM_HOST_CLUSTER_WINDOWREADER_H
#define EVENTSYSTEM_HOST_CLUSTER_WINDOWREADER_H

#include "host/cluster/EtcdChannel.h"
#include "host/cluster/EtcdKeys.h"
#include "host/cluster/QueueLane.h"

namespace EventSystemHost {

struct FoundEvent {
  unsigned long id = 0;  // 0: the end of the queue
  EventValue value;
};

class WindowReader {
 public:
  // `channel` outlives it.
  explicit WindowReader(EtcdChannel& channel) : m_channel(channel) {}

  EtcdResult next(QueueLane& lane, unsigned long afterId, const Deadline& deadline,
                  FoundEvent& found);

 private:
  struct Window;
  EtcdResult read(const QueueLane& lane, Window& window, const Deadline& deadline);

  EtcdChannel& m_channel;
};

}  // namespace EventSystemHost

#endif
