// One host of the tour that writes events as fast as they are taken: a real `eventctl import`, fed
// through a pipe, and what it acknowledges.
//
// Thread safety: none; used by the main thread.

#ifndef EVENTSYSTEM_APPS_EVENTCTL_DEMOWRITER_H
#define EVENTSYSTEM_APPS_EVENTCTL_DEMOWRITER_H

#include <chrono>
#include <string>
#include <vector>

#include "apps/eventctl/ChildProcess.h"
#include "apps/eventctl/DemoProof.h"

namespace EventApps {

class DemoWriter {
 public:
  using Clock = std::chrono::steady_clock;

  // Starts it for the home `host`.
  DemoWriter(const std::string& host, const ChildOptions& options);

  // To wait for; -1 where there is nothing to wait for.
  int output() const { return m_ended ? -1 : m_child.output(); }
  int input() const { return m_child.input(); }

  // Hands over as many events as it takes now.
  void feed();
  // Takes note of what it has said.
  void read();
  // Hands over nothing more: it ends when it has dealt with what it has.
  void finish() { m_child.closeInput(); }

  const std::string& name() const { return m_record.writer; }
  bool ended() const { return m_ended; }
  // Its exit status, once it has ended. Throws Failure when a signal ended it.
  int status() { return m_child.wait(); }

  const DemoRecord& record() const { return m_record; }
  unsigned long acknowledged() const { return m_acknowledged; }
  // Refused aloud, as it said at its end.
  unsigned long refused() const { return m_refused; }
  const std::vector<std::string>& complaints() const { return m_complaints; }
  // Between two acknowledgements.
  std::chrono::milliseconds longestGap() const { return m_longestGap; }

 private:
  void takeLine(const std::string& line);

  DemoRecord m_record;
  ChildProcess m_child;
  bool m_ended = false;
  unsigned long m_acknowledged = 0;
  unsigned long m_refused = 0;
  std::vector<std::string> m_complaints;
  Clock::time_point m_lastAnswer;
  std::chrono::milliseconds m_longestGap{0};
};

}  // namespace EventApps

#endif
