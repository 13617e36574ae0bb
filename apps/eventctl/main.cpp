// eventctl: the event queues of a server from the command line.

#include <fcntl.h>

#include <clocale>
#include <csignal>
#include <exception>
#include <functional>
#include <string>

#include "apps/common/Output.h"
#include "apps/eventctl/CommandLine.h"
#include "apps/eventctl/Commands.h"
#include "apps/eventctl/ExitStatus.h"
#include "apps/eventctl/Session.h"
#include "host/logging/Log.h"

namespace {

using namespace EventApps;

// A standard descriptor that is closed would be given to the next file that is opened, the
// database for one, and then be written to. Instead, writing to it fails.
void occupyStandardDescriptors() {
  for (int descriptor = 0; descriptor <= 2; ++descriptor) {
    if (::fcntl(descriptor, F_GETFD) < 0)
      ::open("/dev/null", descriptor == 0 ? O_WRONLY : O_RDONLY);
  }
}

void define(Command eventctl) {
  defineAdd(eventctl);
  defineImport(eventctl);
  defineExport(eventctl);
  defineList(eventctl);
  defineShow(eventctl);
  defineStats(eventctl);
  defineNext(eventctl);
  defineConsume(eventctl);
  defineDelete(eventctl);
  definePurge(eventctl);
  defineCheck(eventctl);
  defineBackup(eventctl);
  defineRestore(eventctl);
  defineDataSelection(eventctl);
  defineToken(eventctl);
  defineDemo(eventctl);
}

int runCaught(const std::function<int()>& run) {
  try {
    const int status = run();
    standardOutput().flush();
    return status;
  } catch (const OutputError& error) {
    // `eventctl list | head` is no mishap that needs words.
    if (!error.closedPipe()) complain(error.what());
  } catch (const std::exception& error) {
    complain(error.what());
  }
  return kFailed;
}

// Whatever a command did, it cannot be trusted where the database is damaged.
int runGuarded(const std::function<int()>& run) {
  const int status = runCaught(run);
  const std::string damage = damageMet();
  if (damage.empty()) return status;
  complain(damage);
  return kFailed;
}

// The commands say themselves what is wrong with an event; where a daemon has the queues, no log is
// opened for what the library adds.
void setLevelWithoutLog(const GlobalOptions& options) {
  using EventSystemHost::LogLevel;
  EventSystemHost::setLevelWithoutLog(
      options.logLevel.value_or(options.verbose ? LogLevel::kInfo : LogLevel::kOff));
}

int parseAndRun(int argc, char** argv) {
  CommandLine line;
  parseCommandLine(argc, argv, define, line);
  setLevelWithoutLog(line.global);
  return runGuarded(line.run);
}

}  // namespace

// Running out of memory here ends the program before anything is open.
// NOLINTNEXTLINE(bugprone-exception-escape)
int main(int argc, char** argv) {
  occupyStandardDescriptors();
  std::setlocale(LC_CTYPE, "C.UTF-8");
  std::signal(SIGPIPE, SIG_IGN);
  return parseAndRun(argc, argv);
}
