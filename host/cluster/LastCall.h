// What came of the last call of the cluster service: its callers behind the library are told
// success or failure only, and never the id that an event got.
//
// Thread safety: any thread; each has a last call of its own.

#ifndef EVENTSYSTEM_HOST_CLUSTER_LASTCALL_H
#define EVENTSYSTEM_HOST_CLUSTER_LASTCALL_H

#include <string>

namespace EventSystemHost {

struct ClusterCall {
  unsigned long newId = 0;     // of the event that a newEvent has stored; 0 after any other call
  std::string failure = {};    // what failed and where, for the operator; empty on success
  bool open = false;           // it failed, and what it was to change may be changed all the same
  bool lacksMajority = false;  // it failed because no majority of the members answers
};

// Of the calling thread.
const ClusterCall& lastClusterCall();

void noteClusterCall(ClusterCall call);

}  // namespace EventSystemHost

#endif
