// What the queues are called.
//
// Thread safety: pure functions of their arguments.

#ifndef EVENTSYSTEM_APPS_COMMON_QUEUENAMES_H
#define EVENTSYSTEM_APPS_COMMON_QUEUENAMES_H

#include <string>

namespace EventApps {

// Whether events with this dsid go to the queue that is not of a data selection.
constexpr bool isGlobalQueue(unsigned int dsid) {
  return dsid == 0 || dsid == 2;
}

// The number under which a queue is known: all that mean the global queue are 0.
constexpr unsigned int queueOf(unsigned int dsid) {
  return isGlobalQueue(dsid) ? 0 : dsid;
}

// "the global queue" or "the queue of data selection N".
std::string queueName(unsigned int dsid);

// Why there is no queue of a data selection that does not exist, and what to do.
std::string noSuchSelection(unsigned int dsid);

}  // namespace EventApps

#endif
