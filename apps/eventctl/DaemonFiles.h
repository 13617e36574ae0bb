// Where the daemon of a home has its files: what eventd.ini there names, or the defaults.
//
// Thread safety: any thread; the functions read files. They throw HostError or Failure.

#ifndef EVENTSYSTEM_APPS_EVENTCTL_DAEMONFILES_H
#define EVENTSYSTEM_APPS_EVENTCTL_DAEMONFILES_H

#include <filesystem>

#include "apps/eventctl/CommandLine.h"

namespace EventApps {

std::filesystem::path homeOf(const GlobalOptions& options);

std::filesystem::path socketOfHome(const std::filesystem::path& home);
std::filesystem::path tokensOfHome(const std::filesystem::path& home);

// Throws where a new file would take the place of one that the home's host or daemon uses.
void requireFreeForOutput(const std::filesystem::path& file, const GlobalOptions& options);

}  // namespace EventApps

#endif
