// eventd: the event queues of a server as a service.

#include <fcntl.h>
#include <sys/stat.h>

#include <CLI/CLI.hpp>
#include <chrono>
#include <clocale>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <string>
#include <vector>

#include "apps/common/Failure.h"
#include "apps/eventd/Configuration.h"
#include "apps/eventd/Daemon.h"
#include "apps/eventd/Journal.h"
#include "apps/eventd/Signals.h"
#include "apps/eventd/Systemd.h"
#include "apps/eventd/Version.h"
#include "apps/eventd/http/TlsContext.h"
#include "host/Host.h"

namespace {

using namespace EventApps;
using EventSystemHost::HostOptions;

enum ExitStatus : int {
  kDone = 0,
  kFailed = 1,
  kUsage = 2  // a command line or a configuration that is wrong stays so: do not start again
};

// What the log of the database takes before its pages are copied, and as much again for the copy.
constexpr std::uintmax_t kReserveBytes = 8u << 20;

struct Options {
  std::string home;
  std::string configuration;
  std::string listen;
  bool checkOnly = false;
};

void complain(const std::string& message) {
  std::fprintf(stderr, "eventd: %s\n", message.c_str());
}

// A standard descriptor that is closed would be given to the next file that is opened, and then be
// written to.
void occupyStandardDescriptors() {
  for (int descriptor = 0; descriptor <= 2; ++descriptor) {
    if (::fcntl(descriptor, F_GETFD) < 0) ::open("/dev/null", O_RDWR);
  }
}

void define(CLI::App& app, Options& options) {
  app.name("eventd");
  app.description("The event queues of a deduplicating storage server, as a service over HTTP.");
  app.set_version_flag("--version", std::string("eventd ") + kVersion,
                       "print the version and exit");
  app.add_option("--home", options.home, "directory of configuration and data")->type_name("DIR");
  app.add_option("--config", options.configuration, "instead of HOME/eventd.ini")
      ->type_name("FILE");
  app.add_option("--listen", options.listen, "TCP address to listen at, as 127.0.0.1:8780")
      ->type_name("HOST:PORT");
  app.add_flag("--check-config", options.checkOnly,
               "read the configuration, say what is wrong with it, and exit");
  app.footer(
      "It stays in the foreground and stops with SIGTERM or SIGINT: what was accepted is\n"
      "finished. SIGHUP makes it read tokens and certificates again. Exit status: 0 stopped,\n"
      "1 failed, 2 wrong usage or configuration.");
}

// Until a signal asks for the end.
void serve(Daemon& daemon, const Signals& signals) {
  constexpr std::chrono::milliseconds kLong(3600000);
  const auto watchdog = Systemd::watchdogInterval();
  Systemd::tellReady("listens on " + daemon.addresses());
  while (true) {
    if (watchdog && daemon.makesProgress()) Systemd::tellAlive();
    const auto signal = signals.wait(watchdog.value_or(kLong));
    if (!signal) continue;
    if (*signal != SIGHUP) break;
    Systemd::tellReloading();
    daemon.reload();
    Systemd::tellReady("listens on " + daemon.addresses());
  }
  Systemd::tellStopping();
}

std::filesystem::path homeOf(const Options& options) {
  return options.home.empty() ? EventSystemHost::defaultHome()
                              : std::filesystem::path(options.home);
}

// What is known before anything is opened.
struct Setup {
  Configuration configuration;
  HostOptions host;
  std::filesystem::path log;
};

void listenAt(const std::string& address, Configuration& configuration) {
  configuration.tcp.listen = parseListenAddress(address);
  if (configuration.tcp.listen) return;
  throw Failure("--listen: '" + address +
                "' is not an address and a port, as 127.0.0.1:8780 or [::1]:8780");
}

Setup setUp(const Options& options, bool hasSockets) {
  Setup setup;
  Configuration& configuration = setup.configuration;
  configuration = loadConfiguration(homeOf(options), options.configuration);
  if (!options.listen.empty()) listenAt(options.listen, configuration);
  requireSafe(configuration, TokenFile::load(configuration.tokensFile));
  requireSomewhere(configuration, hasSockets);
  const auto& tls = configuration.tls;
  if (tls.listen) Http::loadTlsContext({tls.certificateFile, tls.keyFile, tls.clientAuthority});
  setup.host.home = configuration.home;
  setup.host.durability = EventSystemHost::Durability::kGroup;
  setup.host.reserveBytes = kReserveBytes;
  setup.log = EventSystemHost::effectiveConfiguration(setup.host).logFile;
  return setup;
}

// To whoever started it: the service manager's journal, or the person at the terminal.
void announce(const std::string& message, const Journal& journal) {
  if (journal.isThere()) {
    journal.tell(EventSystemHost::LogLevel::kInfo, message);
  } else if (!Systemd::hasManager()) {
    complain(message);
  }
}

int run(const Setup& setup, const std::vector<int>& sockets) {
  const Signals signals;
  const Journal journal(setup.log);
  Daemon daemon(setup.configuration, setup.host, sockets);
  announce("listens on " + daemon.addresses() + "; the log is " +
               (setup.log == "-" ? "here" : setup.log.string()),
           journal);
  serve(daemon, signals);
  return kDone;
}

// Runs what returns an exit status; `otherwise` is that of its failure.
template <typename Run>
int guarded(ExitStatus otherwise, Run run) {
  try {
    return run();
  } catch (const std::exception& problem) {
    complain(problem.what());
    return otherwise;
  }
}

int runProgram(const Options& options) {
  std::vector<int> sockets;
  Setup setup;
  const int status = guarded(kUsage, [&] {
    sockets = Systemd::takeSockets();
    setup = setUp(options, !sockets.empty());
    return kDone;
  });
  if (status != kDone) return status;
  if (!options.checkOnly) return guarded(kFailed, [&] { return run(setup, sockets); });
  std::printf("%s: nothing is wrong\n", setup.configuration.file.c_str());
  return kDone;
}

int parseAndRun(int argc, char** argv) {
  CLI::App app;
  Options options;
  define(app, options);
  try {
    app.parse(argc, argv);
  } catch (const CLI::Success& wanted) {
    return app.exit(wanted);
  } catch (const CLI::ParseError& problem) {
    complain(problem.what());
    complain("see eventd --help");
    return kUsage;
  }
  return runProgram(options);
}

}  // namespace

// Running out of memory here ends the program before anything is open.
// NOLINTNEXTLINE(bugprone-exception-escape)
int main(int argc, char** argv) {
  occupyStandardDescriptors();
  std::setlocale(LC_CTYPE, "C.UTF-8");
  std::signal(SIGPIPE, SIG_IGN);
  ::umask(S_IRWXG | S_IRWXO);
  return parseAndRun(argc, argv);
}
