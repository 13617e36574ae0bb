#include "apps/eventctl/CommandLine.h"

#include <cmath>
#include <cstdlib>
#include <map>
#include <string>

#include "apps/eventctl/NumberOption.h"

namespace EventApps {
namespace {

using EventSystemHost::LogLevel;

const std::map<std::string, LogLevel> kLogLevels = {{"off", LogLevel::kOff},
                                                    {"error", LogLevel::kError},
                                                    {"warning", LogLevel::kWarning},
                                                    {"info", LogLevel::kInfo},
                                                    {"trace", LogLevel::kTrace}};

void defineWait(CLI::App& app, GlobalOptions& options) {
  app.add_option_function<double>(
         "--wait",
         [&options](double seconds) {
           options.wait = std::chrono::milliseconds(static_cast<long>(seconds * 1000));
         },
         "wait so long while another process holds the\ndatabase (default: 2)")
      ->type_name("SECONDS")
      ->check(CLI::Range(0.0, 86400.0).description(""))
      ->check([](const std::string& text) {  // no number, but in no range a number is out of
        return std::isnan(std::strtod(text.c_str(), nullptr)) ? "'" + text + "' is not a number"
                                                              : std::string();
      });
}

void defineLogLevel(CLI::App& app, GlobalOptions& options) {
  app.add_option_function<std::string>(
         "--log-level",
         [&options](const std::string& name) { options.logLevel = kLogLevels.at(name); },
         "off, error, warning, info or trace")
      ->type_name("LEVEL")
      ->check(CLI::Validator(
          [](std::string& name) {
            return kLogLevels.contains(name)
                       ? std::string()
                       : "'" + name + "' is not one of off, error, warning, info, trace";
          },
          "", "log level"));
}

CLI::Validator notEmpty(const char* what) {
  const std::string problem = std::string("the name of the ") + what + " is empty";
  return {[problem](const std::string& text) { return text.empty() ? problem : std::string(); }, "",
          what};
}

void defineDaemonOptions(CLI::App& app, DaemonOptions& options) {
  app.add_option("--socket", options.socket, "the daemon's Unix socket")
      ->type_name("FILE")
      ->check(notEmpty("socket"))
      ->group("Daemon");
  app.add_option("--url", options.url, "the daemon's address, https://HOST:PORT")
      ->type_name("URL")
      ->check(notEmpty("address"))
      ->group("Daemon");
  app.add_option("--token-file", options.tokenFile, "file with the token to show (or EVENTD_TOKEN)")
      ->type_name("FILE")
      ->check(notEmpty("file"))
      ->group("Daemon");
  app.add_option("--token", options.token, "the token itself; others may see it")
      ->type_name("TOKEN")
      ->group("Daemon");
  app.add_option("--ca-file", options.authority, "authority of the daemon's certificate")
      ->type_name("FILE")
      ->check(notEmpty("file"))
      ->group("Daemon");
  app.add_flag("--direct", options.direct, "open the queues without a daemon")->group("Daemon");
}

}  // namespace

void defineGlobalOptions(CLI::App& app, GlobalOptions& options) {
  app.add_option("--home", options.home, "directory of configuration and data")
      ->type_name("DIR")
      ->check([](const std::string& directory) {
        return directory.empty() ? "the name of the directory is empty" : "";
      });
  addNumber(app, "--dsid", options.dsid, "data selection; 0 is the global queue (default)");
  defineWait(app, options);
  app.add_flag("--json", options.json, "print one JSON object a line, for programs");
  app.add_flag("--verbose", options.verbose, "log to standard error");
  defineLogLevel(app, options);
  defineDaemonOptions(app, options.daemon);
}

CLI::App* defineCommand(CLI::App& parent, const char* name, const char* description,
                        const std::string& example) {
  CLI::App* const command = parent.add_subcommand(name, description);
  command->footer("Example:\n  eventctl " + example +
                  "\n\nThe options of eventctl --help work here, too: --home, --dsid, --json ...");
  return command;
}

}  // namespace EventApps
