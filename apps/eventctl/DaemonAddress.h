// Where a daemon that serves the queues is, and how to make oneself known to it.
//
// Thread safety: plain values; findDaemon() reads files and the environment.

#ifndef EVENTSYSTEM_APPS_EVENTCTL_DAEMONADDRESS_H
#define EVENTSYSTEM_APPS_EVENTCTL_DAEMONADDRESS_H

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>

#include "apps/eventctl/CommandLine.h"

namespace EventApps {

struct DaemonAddress {
  std::filesystem::path socket;  // empty: `url` leads there
  std::string url = "http://localhost";
  std::string token;                // empty: none
  std::filesystem::path authority;  // of the daemon's certificate; empty: those of the system
  std::chrono::milliseconds timeout{30000};  // how long it may say nothing

  // For messages: the socket's path or the URL.
  std::string name() const { return socket.empty() ? url : socket.string(); }
};

// The daemon that the options name; else the one that serves the home, when somebody answers there;
// else, where no home is given, the one of the system. Nothing: the queues are to be opened by this
// process. Throws Failure for options that contradict each other, for an address that cannot be
// one, and for a socket that this user may not use.
std::optional<DaemonAddress> findDaemon(const GlobalOptions& options);

}  // namespace EventApps

#endif
