// Where a TCP socket listens: a numeric address and a port, as in "127.0.0.1:8780".
//
// Thread safety: pure functions of their arguments.

#ifndef EVENTSYSTEM_APPS_EVENTD_LISTENADDRESS_H
#define EVENTSYSTEM_APPS_EVENTD_LISTENADDRESS_H

#include <sys/socket.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace EventApps {

struct ListenAddress {
  std::string host;        // numeric, without brackets
  std::uint16_t port = 0;  // 0: any that is free
  bool isLoopback = false;
};

// The address that the text spells: IPV4:PORT, [IPV6]:PORT or localhost:PORT; names are not looked
// up, because what they stand for can change.
std::optional<ListenAddress> parseListenAddress(std::string_view text);

// "127.0.0.1:8780" or "[::1]:8780".
std::string textOf(const ListenAddress& address);

// Of a socket that is bound; nothing for one that is not TCP.
std::optional<ListenAddress> addressOf(const sockaddr_storage& bound);

}  // namespace EventApps

#endif
