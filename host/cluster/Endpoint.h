// "host:port", as the configuration names a member of the etcd cluster.
//
// Thread safety: a pure function.

#ifndef EVENTSYSTEM_HOST_CLUSTER_ENDPOINT_H
#define EVENTSYSTEM_HOST_CLUSTER_ENDPOINT_H

#include <string>

namespace EventSystemHost {

// Throws std::runtime_error when the text is neither "host:port" nor "[IPv6]:port".
void checkEndpoint(const std::string& text);

}  // namespace EventSystemHost

#endif
