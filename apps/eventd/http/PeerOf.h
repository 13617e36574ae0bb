// Who has connected.
//
// Thread safety: pure functions of what the system says.

#ifndef EVENTSYSTEM_APPS_EVENTD_HTTP_PEEROF_H
#define EVENTSYSTEM_APPS_EVENTD_HTTP_PEEROF_H

#include <sys/socket.h>

#include <string>

#include "apps/eventd/http/Peer.h"

namespace EventApps::Http {

// Of a connected socket and its peer's address; not whether there is TLS on it.
Peer peerOf(int descriptor, const sockaddr_storage& address);

// What all addresses of one client have in common: the address, or the /64 network with IPv6, as
// text. Empty: a Unix socket.
std::string networkOf(const sockaddr_storage& address);

}  // namespace EventApps::Http

#endif
