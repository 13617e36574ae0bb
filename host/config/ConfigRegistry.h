// What the host puts behind the library's view of the configuration while a Host lives.
//
// Thread safety: called from the thread that creates and destroys the Host; the calls of
// EventSystem/platform/HostConfig.h may come from any thread.

#ifndef EVENTSYSTEM_HOST_CONFIG_CONFIGREGISTRY_H
#define EVENTSYSTEM_HOST_CONFIG_CONFIGREGISTRY_H

#include "host/config/HostConfiguration.h"

namespace EventSystemHost {

// Fills configManager and makes the ini calls answer for the Host's files.
void publishConfiguration(const HostConfiguration& configuration);

// Empties configManager and forgets every loaded file.
void withdrawConfiguration();

}  // namespace EventSystemHost

#endif
