// What came of the last call of the cluster service: its callers behind the library are told
// success or failure only, and never the id that an event got.
//
// Thread safety: any thread; each has a last call of its own.

#ifndef EVENTSYSTEM_HOST_CLUSTER_LASTCALL_H
#define EVENTSYSTEM_HOST_CLUSTER_LASTCALL_H

#include <string>

namespace EventSystemHost {

struct ClusterCall {
  unsigned long newId = 0;  // of the event that a newEvent has stored; 0 after any other call
  std::string failure;      // what failed and where, in words for the operator; empty on success
};

// Of the calling thread.
const ClusterCall& lastClusterCall();

void noteClusterCall(const std::string& failure);
void noteNewEvent(unsigned long id);

}  // namespace EventSystemHost

#endif
