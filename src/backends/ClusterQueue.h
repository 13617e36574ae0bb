// One queue at the host's cluster event service: the calls, log lines and results that both
// cluster stores share.
//
// Thread safety: none; used under EventManager's mutex. What the service throws is passed on.

#ifndef EVENTSYSTEM_SRC_BACKENDS_CLUSTERQUEUE_H
#define EVENTSYSTEM_SRC_BACKENDS_CLUSTERQUEUE_H

#include <string>

#include "EventSystem/Event.h"

namespace EventSystem {

class ClusterQueue {
 public:
  // `dsid` 0 is the global queue.
  explicit ClusterQueue(unsigned int dsid) : m_dsid(dsid) {}

  // 0; 9 for NULL; 4 when the service failed or gave no id.
  int write(Event* event) const;

  // What the service has after an id. `id` is 0 at the end of the queue.
  struct Entry {
    unsigned long id = 0;
    std::string eventString;
  };

  // Asks for the first entry after `afterId`. 0, or 4 after a log line; the end of the queue is
  // logged too.
  int next(unsigned long afterId, Entry& entry) const;

  // Logs an entry that does not parse; the caller then deletes it.
  static void reportUnreadable(const Entry& entry);

  void remove(unsigned long id) const;

 private:
  unsigned int m_dsid;
};

// Whether getNextEvent() may use its output argument; sets it to NULL, or logs that it is NULL.
bool clearResult(Event** event);

}  // namespace EventSystem

#endif
