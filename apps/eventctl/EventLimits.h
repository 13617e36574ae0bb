// Whether an event can be stored and read back whole. The library refuses or cuts what does not
// fit; the commands say beforehand why.
//
// Thread safety: pure functions of their arguments.

#ifndef EVENTSYSTEM_APPS_EVENTCTL_EVENTLIMITS_H
#define EVENTSYSTEM_APPS_EVENTCTL_EVENTLIMITS_H

#include <string>

#include "EventSystem/Event.h"

namespace EventCtl {

// Why the event could not be read back whole from the queue of `dsid` once it is stored under
// `id`, or the empty text.
std::string whyNotStorable(EventSystem::Event& event, unsigned int dsid, unsigned long id);

// Why `line` is no event string, or the empty text when it is one that loses nothing.
std::string whyNotAnEventString(const std::string& line);

}  // namespace EventCtl

#endif
