// The one transaction that takes an id and stores its event, on the condition that nobody else has
// taken an id and that this write has not left its mark yet. Sent again it does nothing and tells
// what has become of it: that is how a lost answer is settled.
//
// Thread safety: plain values; send() as EtcdChannel.

#ifndef EVENTSYSTEM_HOST_CLUSTER_WRITETRANSACTION_H
#define EVENTSYSTEM_HOST_CLUSTER_WRITETRANSACTION_H

#include <cstdint>
#include <string>

#include "host/cluster/EtcdChannel.h"
#include "host/cluster/EtcdKeys.h"
#include "host/cluster/QueueLane.h"

namespace EventSystemHost {

struct WriteTransaction {
  unsigned long id = 0;
  std::string value;  // of the event
  KeyState sequence;  // as last seen
  std::string markKey;
  KeyState mark;  // as last seen
  std::string markValue;
  std::int64_t markLease = 0;
};

struct WriteAnswer {
  bool stored = false;
  KeyState sequence;  // as they are now
  KeyState mark;
};

// Makes the success branch depend on the key's state.
void require(etcdserverpb::TxnRequest& request, const std::string& key, const KeyState& state);

EtcdResult send(EtcdChannel& channel, const EtcdKeys& keys, const WriteTransaction& write,
                WriteAnswer& answer, const Deadline& deadline);

// Reads one key.
EtcdResult readKey(EtcdChannel& channel, const std::string& key, KeyState& state,
                   const Deadline& deadline);

// Reads the lane's sequence when this process has not done so yet.
EtcdResult knowSequence(EtcdChannel& channel, QueueLane& lane, const Deadline& deadline);

// The highest id handed out, 0 for a new queue.
EtcdResult highestId(const QueueLane& lane, unsigned long& highest);

// Lets others finish first when several members write to one queue.
class ContentionPause {
 public:
  void wait();

 private:
  int m_rounds = 0;
};

}  // namespace EventSystemHost

#endif
