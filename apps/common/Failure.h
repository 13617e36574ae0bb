// Why something could not be done, in words for the person who asked for it: what was wrong, where,
// and what to do.
//
// Thread safety: as std::runtime_error.

#ifndef EVENTSYSTEM_APPS_COMMON_FAILURE_H
#define EVENTSYSTEM_APPS_COMMON_FAILURE_H

#include <stdexcept>

namespace EventApps {

class Failure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The queues are at a cluster that has no majority: the same can be done when it has one again.
class NoMajority : public Failure {
 public:
  using Failure::Failure;
};

}  // namespace EventApps

#endif
