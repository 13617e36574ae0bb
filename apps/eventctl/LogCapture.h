// The warnings and errors that the library logs while a command runs, for a command that shows
// them: the manager tells what a check found only to the log.
//
// Thread safety: none; used by the main thread.

#ifndef EVENTSYSTEM_APPS_EVENTCTL_LOGCAPTURE_H
#define EVENTSYSTEM_APPS_EVENTCTL_LOGCAPTURE_H

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "apps/common/QueueCheck.h"
#include "apps/eventctl/TemporaryDirectory.h"

namespace EventApps {

class LogCapture {
 public:
  // The file to give to the host as its log, at level warning.
  std::filesystem::path file() const { return m_directory.path() / "check.log"; }

  // The lines since the last call.
  std::vector<LogLine> take();

 private:
  TemporaryDirectory m_directory;
  std::streamoff m_position = 0;
};

}  // namespace EventApps

#endif
