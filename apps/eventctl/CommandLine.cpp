#include "apps/eventctl/CommandLine.h"

#include <CLI/CLI.hpp>
#include <cmath>
#include <cstdlib>
#include <map>
#include <string>
#include <utility>

#include "apps/common/Output.h"
#include "apps/eventctl/ExitStatus.h"

namespace EventApps {
namespace {

using EventSystemHost::LogLevel;

const std::map<std::string, LogLevel> kLogLevels = {{"off", LogLevel::kOff},
                                                    {"error", LogLevel::kError},
                                                    {"warning", LogLevel::kWarning},
                                                    {"info", LogLevel::kInfo},
                                                    {"trace", LogLevel::kTrace}};

void define(CLI::Option& option, const std::string& type, Need need) {
  option.type_name(type);
  if (need == Need::kRequired) option.required();
}

void refuse(const std::string& name, const std::string& problem) {
  if (!problem.empty()) throw CLI::ValidationError(name, problem);
}

std::string readSeconds(const std::string& text, std::chrono::milliseconds& target) {
  constexpr double kLongest = 86400;
  char* end = nullptr;
  const double seconds = std::strtod(text.c_str(), &end);
  if (text.empty() || *end != '\0' || std::isnan(seconds)) return "'" + text + "' is not a number";
  if (seconds < 0 || seconds > kLongest) return "'" + text + "' is not in the range 0 to 86400";
  target = std::chrono::milliseconds(static_cast<long>(seconds * 1000));
  return {};
}

std::string readLogLevel(const std::string& text, std::optional<LogLevel>& level) {
  const auto known = kLogLevels.find(text);
  if (known == kLogLevels.end()) {
    return "'" + text + "' is not one of off, error, warning, info, trace";
  }
  level = known->second;
  return {};
}

template <typename Text>
Command::Reader readNotEmpty(const std::string& what, Text& target) {
  return [what, &target](const std::string& text) {
    if (text.empty()) return "the name of the " + what + " is empty";
    target = text;
    return std::string();
  };
}

void defineDaemonOptions(Command& eventctl, CLI::App& app, DaemonOptions& options) {
  eventctl.value("--socket", "FILE", "the daemon's Unix socket",
                 readNotEmpty("socket", options.socket));
  eventctl.value("--url", "URL", "the daemon's address, https://HOST:PORT",
                 readNotEmpty("address", options.url));
  eventctl.value("--token-file", "FILE", "file with the token to show (or EVENTD_TOKEN)",
                 readNotEmpty("file", options.tokenFile));
  eventctl.text("--token", "TOKEN", "the token itself; others may see it", options.token);
  eventctl.value("--ca-file", "FILE", "authority of the daemon's certificate",
                 readNotEmpty("file", options.authority));
  eventctl.value(
      "--timeout", "SECONDS", "how long the daemon may say nothing (default: 30)",
      [&options](const std::string& text) { return readSeconds(text, options.timeout); });
  eventctl.flag("--direct", "open the queues without a daemon", options.direct);
  for (const char* name :
       {"--socket", "--url", "--token-file", "--token", "--ca-file", "--timeout", "--direct"}) {
    app.get_option(name)->group("Daemon");
  }
}

void defineGlobalOptions(Command& eventctl, CLI::App& app, GlobalOptions& options) {
  eventctl.value("--home", "DIR", "directory of configuration and data",
                 readNotEmpty("directory", options.home));
  eventctl.number("--dsid", "data selection; 0 is the global queue (default)", options.dsid);
  eventctl.value("--wait", "SECONDS",
                 "wait so long while another process holds the\ndatabase (default: 2)",
                 [&options](const std::string& text) { return readSeconds(text, options.wait); });
  eventctl.flag("--json", "print one JSON object a line, for programs", options.json);
  eventctl.flag("--verbose", "log to standard error", options.verbose);
  eventctl.value(
      "--log-level", "LEVEL", "off, error, warning, info or trace",
      [&options](const std::string& text) { return readLogLevel(text, options.logLevel); });
  defineDaemonOptions(eventctl, app, options.daemon);
}

void defineEventctl(CLI::App& app) {
  app.description("The event queues of a deduplicating storage server.");
  app.name("eventctl");
  app.fallthrough();
  app.set_version_flag("--version", "eventctl " EVENTCTL_VERSION, "print the version and exit");
  app.get_formatter()->column_width(28);
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

std::function<int()> wrongUsage(const CLI::App& app, const CLI::ParseError& error) {
  return [problem = describe(app, error), command = commandPath(&reached(app))] {
    complain(problem);
    complain("see " + command + " --help");
    return kUsage;
  };
}

// `wanted` is thrown for help and for the version.
std::function<int()> print(const CLI::App& app, const CLI::Success& wanted) {
  const bool version = dynamic_cast<const CLI::CallForVersion*>(&wanted) != nullptr;
  return [text = version ? wanted.what() + std::string("\n") : app.help()] {
    Output& output = standardOutput();
    output.write(text);
    output.flush();
    return kDone;
  };
}

}  // namespace

Command Command::add(const std::string& name, const std::string& description,
                     const std::string& example) {
  CLI::App* const command = m_app->add_subcommand(name, description);
  command->footer("Example:\n  eventctl " + example +
                  "\n\nThe options of eventctl --help work here, too: --home, --dsid, --json ...");
  return {*command, *m_line};
}

void Command::requireCommand() {
  m_app->require_subcommand(1);
}

void Command::value(const std::string& name, const std::string& type, const std::string& help,
                    Reader read, Need need) {
  define(*m_app->add_option_function<std::string>(
             name,
             [first = name.substr(0, name.find(',')),
              read = std::move(read)](const std::string& text) { refuse(first, read(text)); },
             help),
         type, need);
}

void Command::values(const std::string& name, const std::string& type, const std::string& help,
                     ListReader read, Need need) {
  define(*m_app->add_option_function<std::vector<std::string>>(
             name,
             [name, read = std::move(read)](const std::vector<std::string>& texts) {
               refuse(name, read(texts));
             },
             help),
         type, need);
}

void Command::flag(const std::string& names, const std::string& help, bool& target) {
  m_app->add_flag(names, target, help);
}

void Command::runs(std::function<int()> run, Check check) {
  m_app->callback([line = m_line, run = std::move(run), check = std::move(check)] {
    const std::string problem = check ? check() : std::string();
    if (!problem.empty()) throw CLI::ValidationError(problem);
    line->run = run;
  });
}

void parseCommandLine(int argc, char** argv, const std::function<void(Command)>& define,
                      CommandLine& line) {
  CLI::App app;
  defineEventctl(app);
  Command eventctl(app, line);
  eventctl.requireCommand();
  defineGlobalOptions(eventctl, app, line.global);
  define(eventctl);
  try {
    app.parse(argc, argv);
  } catch (const CLI::Success& wanted) {
    line.run = print(app, wanted);
  } catch (const CLI::ParseError& error) {
    line.run = wrongUsage(app, error);
  }
}

}  // namespace EventApps
