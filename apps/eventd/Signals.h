// The signals that steer the daemon, taken one by one by the main thread.
//
// Thread safety: made and used by the main thread, before there are others: they inherit that the
// signals do not interrupt them.

#ifndef EVENTSYSTEM_APPS_EVENTD_SIGNALS_H
#define EVENTSYSTEM_APPS_EVENTD_SIGNALS_H

#include <chrono>
#include <csignal>
#include <optional>

namespace EventApps {

class Signals {
 public:
  // SIGTERM, SIGINT and SIGHUP are held back until they are asked for.
  Signals();

  Signals(const Signals&) = delete;
  Signals& operator=(const Signals&) = delete;

  // The next one, or nothing when none comes in time.
  std::optional<int> wait(std::chrono::milliseconds time) const;

 private:
  sigset_t m_signals;
};

}  // namespace EventApps

#endif
