// Warnings and errors as they are logged, for a program that shows them to somebody.
//
// Thread safety: made and destroyed by any thread; a line may be on its way to the function until
// the destructor returns.

#ifndef EVENTSYSTEM_HOST_LOGGING_LOGOBSERVER_H
#define EVENTSYSTEM_HOST_LOGGING_LOGOBSERVER_H

#include <functional>
#include <string_view>

#include "EventSystem/Export.h"
#include "host/config/HostConfiguration.h"

namespace EventSystemHost {

class EVENTSYSTEM_HOST_API LogObserver {
 public:
  // Called by the thread that logs, before its call returns, whatever the log's own level is. What
  // it logs itself is not observed, and what it throws is dropped.
  using Observe = std::function<void(LogLevel level, int code, std::string_view message)>;

  explicit LogObserver(Observe observe);
  ~LogObserver();

  LogObserver(const LogObserver&) = delete;
  LogObserver& operator=(const LogObserver&) = delete;

  void operator()(LogLevel level, int code, std::string_view message) const {
    m_observe(level, code, message);
  }

 private:
  const Observe m_observe;
};

}  // namespace EventSystemHost

#endif
