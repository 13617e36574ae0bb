// Finds the first event after an id at a cost that does not grow with the queue.
//
// Thread safety: any thread.

#ifndef EVENTSYSTEM_HOST_CLUSTER_WINDOWREADER_H
#define EVENTSYSTEM_HOST_CLUSTER_WINDOWREADER_H

#include "host/cluster/PageReader.h"
#include "host/cluster/QueueLane.h"

namespace EventSystemHost {

class WindowReader {
 public:
  // `channel` outlives it.
  explicit WindowReader(EtcdChannel& channel) : m_reader(channel) {}

  // `found.id` is 0 at the end of the queue.
  EtcdResult next(QueueLane& lane, unsigned long afterId, const Deadline& deadline,
                  ClusterEvent& found);

 private:
  PageReader m_reader;
};

}  // namespace EventSystemHost

#endif
