// Why a command failed, in words for the person who called it: what was wrong, where, and what to
// do. main() prints it as "eventctl: ..." and ends with status 1.
//
// Thread safety: as std::runtime_error.

#ifndef EVENTSYSTEM_APPS_EVENTCTL_COMMANDERROR_H
#define EVENTSYSTEM_APPS_EVENTCTL_COMMANDERROR_H

#include <stdexcept>

namespace EventCtl {

class CommandError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Exit statuses of eventctl.
enum ExitStatus : int { kDone = 0, kFailed = 1, kUsage = 2 };

}  // namespace EventCtl

#endif
