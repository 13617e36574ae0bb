// The home that is a member of a queue.
//
// Thread safety: plain values.

#ifndef EVENTSYSTEM_HOST_CLUSTER_MEMBERHOME_H
#define EVENTSYSTEM_HOST_CLUSTER_MEMBERHOME_H

#include <string>

namespace EventSystemHost {

// `identity` is drawn once for a database, `place` says where it is, in
// words for the operator.
struct MemberHome {
  std::string identity;
  std::string place;
};

}  // namespace EventSystemHost

#endif
