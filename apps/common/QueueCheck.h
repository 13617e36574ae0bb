// A check of all queues, with repair on demand.
//
// Thread safety: one thread at a time.

#ifndef EVENTSYSTEM_APPS_COMMON_QUEUECHECK_H
#define EVENTSYSTEM_APPS_COMMON_QUEUECHECK_H

#include <functional>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

#include "apps/common/HostQueues.h"

namespace EventApps {

// A warning or an error of the library's log: the manager tells what a check found only there.
struct LogLine {
  std::string level;  // "error" or "warning"
  int code = 0;
  std::string message;

  bool operator==(const LogLine&) const = default;
};

struct CheckReport {
  bool fix = false;
  std::vector<LogLine> findings;  // each once
  int remaining = 0;              // problems that are still there
  bool clustered = false;         // it is about the database, the fall-back copy of the queues
  int result = 0;                 // not 0: it ended early
};

class QueueCheck {
 public:
  // What was logged since it was called last.
  using TakeLog = std::function<std::vector<LogLine>()>;

  QueueCheck(HostQueues& queues, TakeLog takeLog, bool fix);

  // Durable when it returns. Lines that were logged before are findings, too: a start repairs.
  // Reads every event; with `fix` it removes rows whose event string cannot be read. Throws
  // Failure.
  CheckReport run();

 private:
  void repair();
  void inspect();
  bool ended(int result);
  void note(const std::vector<LogLine>& lines);

  HostQueues& m_queues;
  TakeLog m_takeLog;
  CheckReport m_report;
};

// Reads every row of the database beside whoever writes: whether a check would find nothing,
// provided that the host complains of nothing meanwhile.
bool areRowsSound();

nlohmann::ordered_json jsonOf(const CheckReport& report);

}  // namespace EventApps

#endif
