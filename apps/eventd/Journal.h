// The journal of the system, when standard error leads there: it is told what somebody should look
// at, warnings and errors, each with its weight. Requests and the like are in the log only.
//
// Thread safety: lines are told by whichever threads log; everything else by one thread.

#ifndef EVENTSYSTEM_APPS_EVENTD_JOURNAL_H
#define EVENTSYSTEM_APPS_EVENTD_JOURNAL_H

#include <filesystem>
#include <optional>
#include <string_view>

#include "host/logging/LogObserver.h"

namespace EventApps {

class Journal {
 public:
  // Says nothing, ever, where `logFile` is "-": the log itself goes to standard error then.
  explicit Journal(const std::filesystem::path& logFile);

  bool isThere() const { return m_isThere; }

  // One line; what could end or garble it is shown as an escape.
  void tell(EventSystemHost::LogLevel level, std::string_view message) const;

 private:
  bool m_isThere;
  std::optional<EventSystemHost::LogObserver> m_observer;
};

}  // namespace EventApps

#endif
