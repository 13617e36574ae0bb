// The one entry point to the event queues of a process: the global queue, and one queue for each
// data selection. A dsid of 0 or 2 means the global queue, any other its data selection's.
//
// Thread safety: newEvent(), getNextEvent(), deleteEvent() and checkConsistency() may be called
// from any number of threads. Two things take no lock, and the host sees to them:
// - The first getInstance(), or the constructor, must return before other threads use the library.
//   Threads that arrive while there is no instance each build one: two managers, each with stores,
//   id counters and a mutex of its own, over one database. A build of the library without NDEBUG
//   ends such a process with a message.
// - Calls of updateZRTTimeStamp() must not overlap.

#ifndef EVENTSYSTEM_EVENTMANAGER_H
#define EVENTSYSTEM_EVENTMANAGER_H

#include <pthread.h>

#include <map>

#include "EventSystem/Event.h"

namespace EventSystem {

class DSEventStorage;
class EventStorage;

class EVENTSYSTEM_API EventManager {
 public:
  // The manager of the process, created on the first call, without a lock, and never destroyed by
  // the library. Passes on what the constructor throws; the next call then tries again.
  static EventManager* getInstance();

  // Chooses the stores by the host's configuration and builds them: database stores, or cluster
  // stores in cluster mode. Throws when a store cannot be built.
  EventManager();
  ~EventManager();

  EventManager(const EventManager&) = delete;
  EventManager& operator=(const EventManager&) = delete;

  // Stores an event and sets its new id into it; the caller keeps the object. In cluster mode the
  // event's id stays as it was, 0 for a new one: only the service knows the new id. 0 on success, 9
  // for a NULL event, 50 when the queue is full, 4 when a store threw, otherwise the store's
  // result.
  int newEvent(Event* event, unsigned int dsid);

  // The first event after `afterId` (0: from the start) in the queue of `dsid`; the caller deletes
  // it. `*event` is NULL at the end of the queue. 0 on success, 9 for a NULL `event`, 4 when a
  // store threw, otherwise the store's result.
  int getNextEvent(unsigned long afterId, Event** event, unsigned int dsid);

  // Removes one event. A failure is logged.
  void deleteEvent(unsigned long id, unsigned int dsid);

  // Checks both stores, and repairs them when `fix` is true; what was found is logged. 0, or 4
  // when a store threw.
  int checkConsistency(bool fix);

  // Records an access to `dsid`, after logging every data selection whose last access was more
  // than 600 seconds ago.
  void updateZRTTimeStamp(unsigned int dsid);

 private:
  bool isGlobal(unsigned int dsid) const;

  static EventManager* instance;

  pthread_mutex_t m_mutex;
  EventStorage* m_eventStorage;                // owned
  DSEventStorage* m_dsEventStorage;            // owned
  std::map<unsigned int, long> m_accessTimes;  // by dsid: gethrtime() of the last access
  unsigned int m_orig_dsid;                    // the dsid that shares the global queue
};

}  // namespace EventSystem

#endif
