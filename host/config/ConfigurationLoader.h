// Reads host.ini and OrbCentral.ini into a HostConfiguration.
//
// Thread safety: pure functions of the files.

#ifndef EVENTSYSTEM_HOST_CONFIG_CONFIGURATIONLOADER_H
#define EVENTSYSTEM_HOST_CONFIG_CONFIGURATIONLOADER_H

#include <filesystem>

#include "host/config/HostConfiguration.h"

namespace EventSystemHost {

// Both files are optional; `durability` is in force unless host.ini says another. Throws HostError
// for an entry that is unknown or has a bad value.
HostConfiguration loadConfiguration(const std::filesystem::path& home, Durability durability);

}  // namespace EventSystemHost

#endif
