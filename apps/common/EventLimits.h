// Whether an event can be stored and read back whole. The library refuses or cuts what does not
// fit; the commands say beforehand why.
//
// Thread safety: pure functions of their arguments.

#ifndef EVENTSYSTEM_APPS_COMMON_EVENTLIMITS_H
#define EVENTSYSTEM_APPS_COMMON_EVENTLIMITS_H

#include <string>

#include "EventSystem/Event.h"

namespace EventApps {

// Where an event is to be stored.
struct Destination {
  unsigned int dsid = 0;
  unsigned long id = 0;     // in its event string there
  bool isDatabase = false;  // whose rows take less than the cluster service
};

// Why the event could not be read back whole from there, or the empty text.
std::string whyNotStorable(EventSystem::Event& event, const Destination& destination);

// Why `line` is no event string, or the empty text when it is one that loses nothing.
std::string whyNotAnEventString(const std::string& line);

}  // namespace EventApps

#endif
