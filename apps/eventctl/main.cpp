// eventctl: the event queues of a server from the command line.

#include <fcntl.h>

#include <CLI/CLI.hpp>
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

void define(CLI::App& app, CommandLine& line) {
  app.description("The event queues of a deduplicating storage server.");
  app.name("eventctl");
  app.fallthrough();
  app.require_subcommand(1);
  app.set_version_flag("--version", "eventctl " EVENTCTL_VERSION, "print the version and exit");
  app.get_formatter()->column_width(28);
  defineGlobalOptions(app, line.global);
  defineAdd(app, line);
  defineImport(app, line);
  defineExport(app, line);
  defineList(app, line);
  defineShow(app, line);
  defineStats(app, line);
  defineNext(app, line);
  defineConsume(app, line);
  defineDelete(app, line);
  definePurge(app, line);
  defineCheck(app, line);
  defineBackup(app, line);
  defineRestore(app, line);
  defineDataSelection(app, line);
  defineToken(app, line);
  defineDemo(app, line);
  app.footer(
      "The options above work before and after every command. Exit status: 0 done,\n"
      "1 failed, 2 wrong usage.\n\n"
      "Example:\n  eventctl add serverstatus --server node1 --state 2\n"
      "  eventctl list\n  eventctl consume --json | my-handler\n\n"
      "eventctl COMMAND --help tells more about a command; eventctl demo shows them\n"
      "at work in a directory of its own.");
}

// The innermost command that the command line got to.
const CLI::App& reached(const CLI::App& app) {
  const auto chosen = app.get_subcommands();
  return chosen.empty() ? app : reached(*chosen.front());
}

std::string commandPath(const CLI::App* app) {
  const CLI::App* const parent = app->get_parent();
  return parent == nullptr ? app->get_name() : commandPath(parent) + " " + app->get_name();
}

std::string describe(const CLI::App& app, const CLI::ParseError& error) {
  if (!app.get_subcommands().empty() || error.get_name() != "RequiredError") return error.what();
  const auto unknown = app.remaining();
  if (unknown.empty()) return "a command is required";
  return "there is no command or option '" + unknown.front() + "'";
}

int wrongUsage(const CLI::App& app, const CLI::ParseError& error) {
  const CLI::App& command = reached(app);
  complain(describe(app, error));
  complain("see " + commandPath(&command) + " --help");
  return kUsage;
}

int printHelp(const CLI::App& app, const CLI::Success& wanted) {
  Output& output = standardOutput();
  if (dynamic_cast<const CLI::CallForVersion*>(&wanted) != nullptr) {
    output.line(wanted.what());
  } else {
    output.write(app.help());
  }
  output.flush();
  return kDone;
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
  CLI::App app;
  CommandLine line;
  define(app, line);
  try {
    app.parse(argc, argv);
  } catch (const CLI::Success& wanted) {
    return runGuarded([&] { return printHelp(app, wanted); });
  } catch (const CLI::ParseError& error) {
    return wrongUsage(app, error);
  }
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
