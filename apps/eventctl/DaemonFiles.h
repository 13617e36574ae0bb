// Where the daemon of a home has its files: what eventd.ini there names, or the defaults.
//
// Thread safety: any thread; the functions read a file. They throw HostError or Failure.

#ifndef EVENTSYSTEM_APPS_EVENTCTL_DAEMONFILES_H
#define EVENTSYSTEM_APPS_EVENTCTL_DAEMONFILES_H

#include <filesystem>

#include "apps/eventctl/CommandLine.h"

namespace EventApps {

std::filesystem::path homeOf(const GlobalOptions& options);

std::filesystem::path socketOfHome(const std::filesystem::path& home);
std::filesystem::path tokensOfHome(const std::filesystem::path& home);

}  // namespace EventApps

#endif
