// The global queue at the host's cluster event service, which stores the events, gives them their
// ids and keeps their limits. The store keeps nothing: its id cache stays empty.
//
// Thread safety: none; EventManager serialises all calls. What the service throws is passed on.

#ifndef EVENTSYSTEM_CLUSTEREVENTSTORAGE_H
#define EVENTSYSTEM_CLUSTEREVENTSTORAGE_H

#include "EventSystem/EventStorage.h"

namespace EventSystem {

class EVENTSYSTEM_API ClusterEventStorage : public EventStorage {
 public:
  // Calls nothing at the service.
  ClusterEventStorage();
  ~ClusterEventStorage() override;

  // Not supported: 4, and `*event` is left alone.
  int readEvent(unsigned long id, Event** event) override;

  // The service's first event after `afterId`, with the id that the service knows it by. 0, with
  // NULL at the end of the queue; 4 when the service failed; 9 when the event string does not
  // parse, and the event is then deleted at the service; 9 for a NULL `event`.
  int getNextEvent(unsigned long afterId, Event** event) override;

  // Hands the event string to the service, with the event's own id: an event that has one is a
  // copy of an event kept elsewhere. The id given by the service is not set into the event. 0; 9
  // for NULL; 4 when the service failed or gave no id.
  int writeEvent(Event* event) override;
  void deleteEvent(unsigned long id) override;

  // 0: there is nothing to check here.
  int checkConsistency(bool fix) override;
  // 0: there is no cache to fill.
  int populateIdCache() override;
};

}  // namespace EventSystem

#endif
