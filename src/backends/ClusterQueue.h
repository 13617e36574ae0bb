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

  // Asks for the first entry after `afterId` and parses it. 0, also at the end of the queue, which
  // is logged; 4 after a log line; 9 for NULL; else the parse result. `*event`, the caller's, still
  // has the id of its text.
  int next(unsigned long afterId, Entry& entry, Event** event) const;

  // Logs an entry that does not parse; the caller then deletes it.
  static void reportUnreadable(const Entry& entry);

  void remove(unsigned long id) const;

 private:
  // 0, or 4 after a log line.
  int ask(unsigned long afterId, Entry& entry) const;

  unsigned int m_dsid;
};

}  // namespace EventSystem

#endif
