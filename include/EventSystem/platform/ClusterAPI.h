// The cluster event service, as the library needs it from its host. Declarations only.
//
// Thread safety: as EventSystem/platform/OrbDB.h. Any call may throw; EventManager turns that
// into result 4.

#ifndef EVENTSYSTEM_PLATFORM_CLUSTERAPI_H
#define EVENTSYSTEM_PLATFORM_CLUSTERAPI_H

#include <string>

#include "EventSystem/Export.h"

class EVENTSYSTEM_HOST_API ClusterAPI {
 public:
  static ClusterAPI& instance();

  // Stores an event string in the queue named by `a` for member `b`. `id` 0 asks for a new id;
  // any other id makes the call a copy of an event kept elsewhere, which the service stores only
  // once. Returns 0 and sets `newId`, or a status.
  unsigned int newEvent(const std::string& a, const std::string& b, const std::string& eventString,
                        unsigned long id, unsigned long& newId, unsigned int dsid);

  // The first event after `afterId`, 0 being the start of the queue: its id, the member that
  // wrote it and its event string. `id` is 0 at the end of the queue. Returns 0 or a status.
  unsigned int getNextEvent(const std::string& a, unsigned long afterId, unsigned long& id,
                            std::string& second, std::string& eventString, unsigned int dsid);

  // Removes one event. Returns 0 or a status.
  unsigned int deleteEventById(const std::string& a, unsigned long id, unsigned int dsid);
};

#endif
