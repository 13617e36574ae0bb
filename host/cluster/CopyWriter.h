// Stores copies of events that live in a member's database, each once.
//
// A marker per copied event makes a copy idempotent for as long as the marker stands: over lost
// answers, restarts, and also when the copy has been consumed meanwhile. Markers must therefore
// live as long as the database may hand in the same event again, which is at every start; they
// carry no lease. There are never more than the member's database has held since forget() was
// last called: a host that knows the lowest id that its database still holds calls it with that.
//
// Thread safety: copy() any thread that has passed the lane's gate; forget() any thread.

#ifndef EVENTSYSTEM_HOST_CLUSTER_COPYWRITER_H
#define EVENTSYSTEM_HOST_CLUSTER_COPYWRITER_H

#include <string>

#include "host/cluster/WriteTransaction.h"

namespace EventSystemHost {

class CopyWriter {
 public:
  // `channel` outlives it.
  explicit CopyWriter(EtcdChannel& channel) : m_channel(channel) {}

  // Stores the event that `member` holds under `id`: under its own id when that is above all ids
  // handed out, else under the next one. The same text again only tells the id that it got.
  EtcdResult copy(QueueLane& lane, const std::string& member, unsigned long id,
                  const std::string& text, const Deadline& deadline, unsigned long& newId);

  // Removes the markers of a member's ids below `belowId`: its database no longer holds them.
  EtcdResult forget(const QueueLane& lane, const std::string& member, unsigned long belowId,
                    const Deadline& deadline);

 private:
  EtcdResult readMarker(QueueLane& lane, const std::string& member, unsigned long id,
                        KeyState& marker, const Deadline& deadline);

  EtcdChannel& m_channel;
};

}  // namespace EventSystemHost

#endif
