// What this process knows of one queue of one data selection between calls.
//
// Thread safety: the span functions may be called from any thread; everything else belongs to the
// thread that has passed the gate.

#ifndef EVENTSYSTEM_HOST_CLUSTER_QUEUELANE_H
#define EVENTSYSTEM_HOST_CLUSTER_QUEUELANE_H

#include <cstdint>
#include <map>
#include <mutex>
#include <string>

#include "host/cluster/EmptySpan.h"
#include "host/cluster/EtcdKeys.h"
#include "host/cluster/Gate.h"
#include "host/cluster/UnsettledWrites.h"

namespace EventSystemHost {

// A key as etcd last told it. Revision 0: it does not exist.
struct KeyState {
  std::int64_t revision = 0;
  std::string value;
};

// The markers of one member's copied events from one id to another, as they were read at once.
struct CopiedWindow {
  std::string member;
  unsigned long first = 1;
  unsigned long last = 0;  // below `first`: nothing was read
  std::map<unsigned long, KeyState> markers;

  bool covers(const std::string& ofMember, unsigned long id) const {
    return member == ofMember && first <= id && id <= last;
  }
};

class QueueLane {
 public:
  QueueLane(const std::string& queueName, unsigned int dataSelection)
      : queue(queueName), dsid(dataSelection), keys(queueName, dataSelection) {}

  const std::string queue;
  const unsigned int dsid;
  const EtcdKeys keys;

  // One write of this process at a time, so that one token key is enough for it.
  Gate gate;
  bool sequenceKnown = false;
  KeyState sequence;
  KeyState token;
  unsigned long lastToken = 0;
  UnsettledWrites unsettled;
  CopiedWindow copied;

  EmptySpan span() const;
  void forgetSpan();
  void learnEmpty(std::int64_t birth, unsigned long first, unsigned long last);
  void emptied(unsigned long id);

  // Whether etcd is at an earlier revision than when this was last asked: it was wiped or restored.
  bool wentBack(std::int64_t revision);

 private:
  mutable std::mutex m_spanMutex;
  EmptySpan m_span;
  std::int64_t m_revision = 0;
};

}  // namespace EventSystemHost

#endif
