// How eventctl ends. A Failure that a command throws is printed as "eventctl: ..." and is kFailed.
//
// Thread safety: constants.

#ifndef EVENTSYSTEM_APPS_EVENTCTL_EXITSTATUS_H
#define EVENTSYSTEM_APPS_EVENTCTL_EXITSTATUS_H

namespace EventApps {

enum ExitStatus : int { kDone = 0, kFailed = 1, kUsage = 2 };

}  // namespace EventApps

#endif
