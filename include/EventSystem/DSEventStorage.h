// The interface of every store that keeps one event queue for each data selection, addressed by
// its dsid. It is EventStorage with a dsid on every operation, an id cache and a highest id for
// each dsid, and no limit on the queues.
//
// Thread safety: none; EventManager serialises all calls.

#ifndef EVENTSYSTEM_DSEVENTSTORAGE_H
#define EVENTSYSTEM_DSEVENTSTORAGE_H

#include <map>
#include <set>

#include "EventSystem/Event.h"

namespace EventSystem {

class EVENTSYSTEM_API DSEventStorage {
 public:
  DSEventStorage(const DSEventStorage&) = delete;
  DSEventStorage& operator=(const DSEventStorage&) = delete;

  virtual ~DSEventStorage();

  // As EventStorage's operations of the same names, on the queue of `dsid`. An unknown dsid has
  // an empty queue.
  virtual int readEvent(unsigned long id, Event** event, unsigned int dsid) = 0;
  virtual int getNextEvent(unsigned long afterId, Event** event, unsigned int dsid);
  virtual int writeEvent(Event* event, unsigned int dsid) = 0;
  virtual void deleteEvent(unsigned long id, unsigned int dsid) = 0;

  // A hook for the end of a data selection.
  virtual void deleteDataSelection(unsigned int dsid) = 0;

  // Looks for damage in all queues, and repairs what can be repaired when `fix` is true. Returns
  // the number of problems found.
  virtual int checkConsistency(bool fix) = 0;

  // The first data selection that the store knows. 0 on success; otherwise `dsid` is 0.
  virtual int getFirstDsid(unsigned int& dsid) = 0;

  // Fills the id caches and highest ids from what the store holds. 0 on success.
  virtual int populateIdCache() = 0;

 protected:
  // Starts with empty caches and reads the limits from the host's configuration.
  DSEventStorage();

  // Sets the event's id; does nothing for NULL.
  void assignEventId(Event* event, unsigned long id);

  void addIdToCache(unsigned long id, unsigned int dsid);
  void removeIdFromCache(unsigned long id, unsigned int dsid);

  // The smallest cached id of `dsid` above `afterId`; 0 when there is none, when `afterId` has
  // reached the highest id handed out, or when the dsid is unknown.
  unsigned long getNextId(unsigned long afterId, unsigned int dsid);

  // As EventStorage::loadLimits().
  void loadLimits();

  // Returns 0: queues of data selections are not limited.
  int checkLimits();

  int m_ageLimit;                                               // days; read, not applied
  int m_countLimit;                                             // events; read, not applied
  std::map<unsigned int, unsigned long> m_maxIds;               // by dsid
  std::map<unsigned int, std::set<unsigned long> > m_idCaches;  // by dsid
};

}  // namespace EventSystem

#endif
