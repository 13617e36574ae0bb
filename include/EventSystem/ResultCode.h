// Result codes of the whole library. Operations return them as plain integers; a code that a
// backend or host returns beyond these is passed through unchanged.

#ifndef EVENTSYSTEM_RESULTCODE_H
#define EVENTSYSTEM_RESULTCODE_H

namespace EventSystem {

enum ResultCode {
  kSuccess = 0,
  kLimitReached = 1,       // checkLimits(): the count limit is reached
  kStoreFailure = 4,       // a store or its backend failed, or an exception was caught
  kGeneralFailure = 9,     // NULL argument, unparsable event string, unknown event type
  kStorageLimits = 50,     // a write was refused because the queue is full
  kTableUnavailable = 67,  // the database or one of its tables is not there
  kNoDataSelection = 72    // no data selection of the required type exists
};

}  // namespace EventSystem

#endif
