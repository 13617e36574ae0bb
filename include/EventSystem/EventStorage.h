// The interface of every store of the global event queue, with the bookkeeping that all of them
// share: the ids that the store holds, the highest id handed out, and the queue's limits.
//
// Event ids are unsigned 64-bit and only grow. 0 is never an id: as a result it means no event,
// as an afterId the start of the queue.
//
// Thread safety: none; EventManager serialises all calls. A host that uses a store directly does
// the same.

#ifndef EVENTSYSTEM_EVENTSTORAGE_H
#define EVENTSYSTEM_EVENTSTORAGE_H

#include <memory>
#include <set>
#include <vector>

#include "EventSystem/Event.h"

namespace EventSystem {

class EVENTSYSTEM_API EventStorage {
 public:
  EventStorage(const EventStorage&) = delete;
  EventStorage& operator=(const EventStorage&) = delete;

  virtual ~EventStorage();

  // Reads one event into a new object that the caller deletes. 0 on success; what a failure
  // leaves in `*event` and returns is the concrete store's.
  virtual int readEvent(unsigned long id, Event** event) = 0;

  // The first readable event after `afterId`, in id order; the caller deletes it. `*event` is
  // NULL at the end of the queue. An id that cannot be read is logged, dropped from the cache and
  // passed over. Returns 0; overrides may return a failure of their backend.
  virtual int getNextEvent(unsigned long afterId, Event** event);

  // Stores an event under a new id, which is set into the caller's object. The caller keeps the
  // object. 0 on success, 50 when the queue is full, 9 for NULL, 4 when the store failed.
  virtual int writeEvent(Event* event) = 0;

  // Removes one event. Unknown ids are ignored.
  virtual void deleteEvent(unsigned long id) = 0;

  // Looks for damage, and repairs what can be repaired when `fix` is true. Returns the number of
  // problems found.
  virtual int checkConsistency(bool fix) = 0;

  // Fills the id cache from what the store holds. 0 on success.
  virtual int populateIdCache() = 0;

 protected:
  // Events that the age walk was handed; see checkLimits(WalkedEvents*&).
  typedef std::vector<std::unique_ptr<Event> > WalkedEvents;

  // Starts with an empty cache and reads the limits from the host's configuration.
  EventStorage();

  // Sets the event's id; does nothing for NULL.
  void assignEventId(Event* event, unsigned long id);

  void addIdToCache(unsigned long id);
  void removeIdFromCache(unsigned long id);

  // The smallest cached id above `afterId`; 0 when there is none or `afterId` has reached the
  // highest id handed out.
  unsigned long getNextId(unsigned long afterId);

  // Reads the age limit (days) and the count limit (events) from the "OrbCentral" file. Without
  // that file both stay as they are.
  void loadLimits();

  // Returns 1 when the count limit is reached, otherwise 0 after a warning for each event older
  // than the age limit. The events that the age walk gets from getNextEvent() are not released.
  int checkLimits();

  // The same for a store whose getNextEvent() makes new objects: while the walk runs, `walked`
  // points to a list in which the store's readEvent() notes what it hands out (noteWalked()), and
  // those events are deleted when the check is over. `walked` is then what it was before.
  int checkLimits(WalkedEvents*& walked);
  static void noteWalked(WalkedEvents* walked, Event* event);

  int m_ageLimit;         // days; 0: no limit
  int m_countLimit;       // events; 0: no limit
  unsigned long m_maxId;  // the highest id handed out
  std::set<unsigned long> m_idCache;

 private:
  void reportOldEvents();
};

}  // namespace EventSystem

#endif
