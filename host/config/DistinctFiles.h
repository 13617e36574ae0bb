// The files that a host uses must be different ones: a log in the place of the database would
// write over it.
//
// Thread safety: a pure function of the configuration and the file system.

#ifndef EVENTSYSTEM_HOST_CONFIG_DISTINCTFILES_H
#define EVENTSYSTEM_HOST_CONFIG_DISTINCTFILES_H

#include "host/config/HostConfiguration.h"

namespace EventSystemHost {

// Throws HostError, naming the entries and both uses, when two of the files are one.
void requireDistinctFiles(const HostConfiguration& configuration);

}  // namespace EventSystemHost

#endif
