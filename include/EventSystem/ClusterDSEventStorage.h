// The queues of all data selections at the host's cluster event service. The store keeps nothing:
// its id caches and highest ids stay empty.
//
// Thread safety: none; EventManager serialises all calls. What the service throws is passed on.

#ifndef EVENTSYSTEM_CLUSTERDSEVENTSTORAGE_H
#define EVENTSYSTEM_CLUSTERDSEVENTSTORAGE_H

#include "EventSystem/DSEventStorage.h"

namespace EventSystem {

class EVENTSYSTEM_API ClusterDSEventStorage : public DSEventStorage {
 public:
  // Calls nothing at the service.
  ClusterDSEventStorage();
  ~ClusterDSEventStorage() override;

  // As ClusterEventStorage's operations of the same names, on the queue of `dsid`.
  int readEvent(unsigned long id, Event** event, unsigned int dsid) override;
  int getNextEvent(unsigned long afterId, Event** event, unsigned int dsid) override;
  int writeEvent(Event* event, unsigned int dsid) override;
  void deleteEvent(unsigned long id, unsigned int dsid) override;

  // Does nothing.
  void deleteDataSelection(unsigned int dsid) override;

  // 0: there is nothing to check here.
  int checkConsistency(bool fix) override;

  // As OrbDBDSEventStorage::getFirstDsid(): in the host's database in cluster mode too.
  int getFirstDsid(unsigned int& dsid) override;

  // 0: there is no cache to fill.
  int populateIdCache() override;
};

}  // namespace EventSystem

#endif
