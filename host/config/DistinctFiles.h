// The files that a host uses. They must be different ones, and nothing else may take their place: a
// log in the place of the database would write over it.
//
// Thread safety: pure functions of the configuration and the file system.

#ifndef EVENTSYSTEM_HOST_CONFIG_DISTINCTFILES_H
#define EVENTSYSTEM_HOST_CONFIG_DISTINCTFILES_H

#include <filesystem>

#include "EventSystem/Export.h"
#include "host/config/HostConfiguration.h"

namespace EventSystemHost {

// Throws HostError, naming the entries and both uses, when two of the files are one.
void requireDistinctFiles(const HostConfiguration& configuration);

// Whether two names lead to one file, also where it does not exist.
EVENTSYSTEM_HOST_API bool isSameFile(const std::filesystem::path& one,
                                     const std::filesystem::path& other);

// Throws HostError when `file` is one that a host with this configuration uses, by whatever name.
EVENTSYSTEM_HOST_API void requireNotInUse(const std::filesystem::path& file,
                                          const HostConfiguration& configuration);

}  // namespace EventSystemHost

#endif
