// What the command line says: the options that every command takes, and the command chosen. CLI11
// reads it; only CommandLine.cpp knows that, because every file that includes CLI11 takes seconds
// to compile.
//
// Thread safety: filled and used by the main thread.

#ifndef EVENTSYSTEM_APPS_EVENTCTL_COMMANDLINE_H
#define EVENTSYSTEM_APPS_EVENTCTL_COMMANDLINE_H

#include <chrono>
#include <filesystem>
#include <functional>
#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "apps/common/Numbers.h"
#include "host/config/HostConfiguration.h"

namespace CLI {
class App;
}

namespace EventApps {

// Which daemon serves the queues.
struct DaemonOptions {
  std::filesystem::path socket;  // of a Unix socket
  std::string url;
  std::string token;
  std::filesystem::path tokenFile;
  std::filesystem::path authority;           // of the daemon's certificate
  bool direct = false;                       // none, even if one runs
  std::chrono::milliseconds timeout{30000};  // how long it may say nothing
};

struct GlobalOptions {
  std::filesystem::path home;  // empty: the host's default
  unsigned int dsid = 0;
  std::chrono::milliseconds wait{2000};  // for another process to release the database
  bool json = false;
  bool verbose = false;
  std::optional<EventSystemHost::LogLevel> logLevel;
  DaemonOptions daemon;
};

struct CommandLine {
  GlobalOptions global;
  std::function<int()> run;  // of the command chosen; its exit status
};

enum class Need { kOptional, kRequired };

// A command while it is described: its options, its arguments, and what it does. A name with
// hyphens ("--limit") is an option; one without ("ID") is an argument. Targets must live until the
// command has run; they keep their value where the command line does not give one. A handle: copies
// describe the same command.
class Command {
 public:
  // Takes one value; returns what is wrong with it, or nothing.
  using Reader = std::function<std::string(const std::string& text)>;
  using ListReader = std::function<std::string(const std::vector<std::string>& texts)>;
  // Returns what is wrong with the values together, or nothing.
  using Check = std::function<std::string()>;

  Command(CLI::App& app, CommandLine& line) : m_app(&app), m_line(&line) {}

  // A command below this one. Its help ends in `example`, given without "eventctl".
  Command add(const std::string& name, const std::string& description, const std::string& example);

  // One of the commands below must be chosen.
  void requireCommand();

  // `type` as help shows the value: "FILE", or "" where the name says enough. "--name,--other"
  // takes two names.
  void value(const std::string& name, const std::string& type, const std::string& help, Reader read,
             Need need = Need::kOptional);
  void values(const std::string& name, const std::string& type, const std::string& help,
              ListReader read, Need need = Need::kOptional);
  void flag(const std::string& names, const std::string& help, bool& target);

  template <typename Text>  // std::string or std::filesystem::path
  void text(const std::string& name, const std::string& type, const std::string& help, Text& target,
            Need need = Need::kOptional) {
    value(
        name, type, help,
        [&target](const std::string& text) {
          target = text;
          return std::string();
        },
        need);
  }

  template <typename Number>
  void number(const std::string& name, const std::string& help, Number& target,
              Number least = std::numeric_limits<Number>::min(),
              Number most = std::numeric_limits<Number>::max(), Need need = Need::kOptional) {
    value(
        name, "N", help,
        [&target, least, most](const std::string& text) {
          return readNumber(text, target, least, most);
        },
        need);
  }

  // What the command does when it is chosen, after `check`; the result is the exit status.
  void runs(std::function<int()> run, Check check = {});

  // The options that work with every command, as the command line gives them.
  const GlobalOptions& global() const { return m_line->global; }

  // Returns what is wrong with `text`, or nothing.
  template <typename Number>
  static std::string readNumber(const std::string& text, Number& target, Number least,
                                Number most) {
    const auto number = parseNumber<Number>(text);
    if (!number || *number < least || *number > most) {
      return "'" + text + "' is not a whole number from " + std::to_string(least) + " to " +
             std::to_string(most);
    }
    target = *number;
    return {};
  }

 private:
  CLI::App* m_app;      // owned by the parser of the whole command line
  CommandLine* m_line;  // of it
};

// Reads the arguments of main(), for the commands that `define` adds. line.run is then the command
// chosen, or one that prints help, the version, or what is wrong with the arguments.
void parseCommandLine(int argc, char** argv, const std::function<void(Command)>& define,
                      CommandLine& line);

}  // namespace EventApps

#endif
