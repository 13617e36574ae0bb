// What the command line says: the options that every command takes, and the command chosen.
//
// Thread safety: filled and used by the main thread.

#ifndef EVENTSYSTEM_APPS_EVENTCTL_COMMANDLINE_H
#define EVENTSYSTEM_APPS_EVENTCTL_COMMANDLINE_H

#include <CLI/CLI.hpp>
#include <chrono>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>

#include "host/config/HostConfiguration.h"

namespace EventApps {

// Which daemon serves the queues.
struct DaemonOptions {
  std::filesystem::path socket;  // of a Unix socket
  std::string url;
  std::string token;
  std::filesystem::path tokenFile;
  std::filesystem::path authority;  // of the daemon's certificate
  bool direct = false;              // none, even if one runs
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

// Adds the options that work before and after every command.
void defineGlobalOptions(CLI::App& app, GlobalOptions& options);

// A subcommand whose help ends in an example, given without "eventctl".
CLI::App* defineCommand(CLI::App& parent, const char* name, const char* description,
                        const std::string& example);

}  // namespace EventApps

#endif
