// SIGINT and SIGTERM as a descriptor that becomes readable, so that a command can end between two
// steps and in every wait.
//
// Thread safety: create it before other threads are started; one at a time.

#ifndef EVENTSYSTEM_APPS_EVENTCTL_STOPSIGNALS_H
#define EVENTSYSTEM_APPS_EVENTCTL_STOPSIGNALS_H

#include <csignal>

namespace EventApps {

class StopSignals {
 public:
  // Holds the signals back from here on.
  StopSignals();
  // Puts the signal mask back. A signal that has arrived is forgotten.
  ~StopSignals();

  StopSignals(const StopSignals&) = delete;
  StopSignals& operator=(const StopSignals&) = delete;

  // Readable once a signal has arrived, and from then on.
  int descriptor() const { return m_descriptor; }
  bool arrived() const;

 private:
  sigset_t m_before;
  int m_descriptor;
};

}  // namespace EventApps

#endif
