// One guard for every host call that a database store makes: a call that throws is a call that
// fails.
//
// Thread safety: none needed.

#ifndef EVENTSYSTEM_SRC_BACKENDS_PLATFORMGUARD_H
#define EVENTSYSTEM_SRC_BACKENDS_PLATFORMGUARD_H

#include <exception>

#include "EventSystem/ResultCode.h"
#include "EventSystem/platform/HostLog.h"

namespace EventSystem {

// The result of `call`, or `failure` after a log line when it threw. `operation` is the store's
// function, `name` the host's.
template <class Result, class Call>
Result guarded(const char* operation, const char* name, Result failure, Call call) {
  try {
    return call();
  } catch (const std::exception& exception) {
    ErrorA(kStoreFailure, "%s %s threw an exception: %s", operation, name, exception.what());
  } catch (...) {
    ErrorA(kStoreFailure, "%s %s threw an exception!", operation, name);
  }
  return failure;
}

}  // namespace EventSystem

#endif
