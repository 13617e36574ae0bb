// Who is at the other end of a connection, as the system vouches for it.
//
// Thread safety: plain values.

#ifndef EVENTSYSTEM_APPS_EVENTD_HTTP_PEER_H
#define EVENTSYSTEM_APPS_EVENTD_HTTP_PEER_H

#include <sys/types.h>

#include <string>

namespace EventApps::Http {

struct Peer {
  enum class Via { kUnix, kTcp, kTls };
  Via via = Via::kUnix;
  bool loopback = false;    // a loopback address, or the Unix socket
  std::string address;      // "127.0.0.1:5000", "[::1]:5000", "unix"
  uid_t uid = uid_t(-1);    // Unix socket: of the process that connected, at that time;
  gid_t gid = gid_t(-1);    // -1 with TCP, and where the system does not tell
  pid_t pid = 0;            // 0 likewise
  std::string certificate;  // the common name of a verified client certificate; else empty
  std::string network;      // that one client has to itself: "127.0.0.1", "2001:db8::/64"; or empty
};

}  // namespace EventApps::Http

#endif
