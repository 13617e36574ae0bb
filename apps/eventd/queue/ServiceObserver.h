// Told how long the work of a queue service takes, for metrics.
//
// Thread safety: called by several threads, also at once; must not block and must not throw.

#ifndef EVENTSYSTEM_APPS_EVENTD_QUEUE_SERVICEOBSERVER_H
#define EVENTSYSTEM_APPS_EVENTD_QUEUE_SERVICEOBSERVER_H

#include <string_view>

namespace EventApps {

class ServiceObserver {
 public:
  virtual ~ServiceObserver() = default;

  // From the request to its answer, waiting for a flush included, waiting for events not. Names:
  // store, read, find, remove, remove_up_to, check.
  virtual void onOperation(std::string_view name, double seconds) = 0;

  virtual void onFlush(double seconds) = 0;
};

}  // namespace EventApps

#endif
