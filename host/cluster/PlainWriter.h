// Stores new events, each once, whatever becomes of the answers.
//
// Thread safety: any thread that has passed the lane's gate.

#ifndef EVENTSYSTEM_HOST_CLUSTER_PLAINWRITER_H
#define EVENTSYSTEM_HOST_CLUSTER_PLAINWRITER_H

#include <string>

#include "host/cluster/ProducerLease.h"
#include "host/cluster/WriteTransaction.h"

namespace EventSystemHost {

class PlainWriter {
 public:
  // Both outlive it.
  PlainWriter(EtcdChannel& channel, ProducerLease& lease) : m_channel(channel), m_lease(lease) {}

  // Stores `value` (see EtcdKeys.h) under the next id. After a failure that is uncertain the event
  // may be stored or not, but never twice: the next plain write decides it, and one of the same
  // value finds it.
  EtcdResult write(QueueLane& lane, const std::string& value, const Deadline& deadline,
                   unsigned long& newId);

 private:
  EtcdResult tryToWrite(QueueLane& lane, const std::string& value, const Deadline& deadline,
                        unsigned long& newId, bool& open);
  EtcdResult prepare(QueueLane& lane, WriteTransaction& write, const Deadline& deadline);
  EtcdResult settle(QueueLane& lane, const KeyState& mark, const Deadline& deadline);
  EtcdResult lookForOpen(QueueLane& lane, unsigned long& stored, const Deadline& deadline);

  EtcdChannel& m_channel;
  ProducerLease& m_lease;
};

}  // namespace EventSystemHost

#endif
