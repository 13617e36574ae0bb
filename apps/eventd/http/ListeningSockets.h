// Sockets that listen.
//
// Thread safety: none; looking up hosts and groups blocks.

#ifndef EVENTSYSTEM_APPS_EVENTD_HTTP_LISTENINGSOCKETS_H
#define EVENTSYSTEM_APPS_EVENTD_HTTP_LISTENINGSOCKETS_H

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "apps/etcd_nodes/Descriptor.h"

namespace EventApps::Http {

using EtcdNodes::Descriptor;

// As Server::listenUnix().
Descriptor listenOnUnixSocket(const std::filesystem::path& path, unsigned mode,
                              const std::string& group);

// One for each address of the host that this machine has, all on one port; never empty.
std::vector<Descriptor> listenOnTcp(const std::string& host, std::uint16_t port);

// Throws ServerError when it is no stream socket that listens, Unix or TCP.
void checkListening(int descriptor);

std::uint16_t portOf(int descriptor);

}  // namespace EventApps::Http

#endif
