// The values of eventd.ini, checked, with defaults filled in.
//
// Thread safety: plain values; the functions read files.

#ifndef EVENTSYSTEM_APPS_EVENTD_CONFIGURATION_H
#define EVENTSYSTEM_APPS_EVENTD_CONFIGURATION_H

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>

#include "apps/common/Role.h"
#include "apps/common/TokenFile.h"
#include "apps/eventd/ListenAddress.h"

namespace EventApps {

struct Configuration {
  std::filesystem::path home;
  std::filesystem::path file;  // eventd.ini, whether or not it exists

  struct Unix {
    bool enabled = true;         // "enabled": 0 or 1
    std::filesystem::path path;  // "path"; default home/eventd.sock
    unsigned int mode = 0660;    // "mode", octal: who may connect
    std::string group;           // "group" of the socket file; empty: that of the process
    Role role = Role::kWrite;    // "role" of peers other than root and the daemon's own user
  } unixSocket;                  // [unix]

  struct Tcp {
    std::optional<ListenAddress> listen;  // "listen"
  } tcp;                                  // [tcp]

  struct Tls {
    std::optional<ListenAddress> listen;
    std::filesystem::path certificateFile;  // PEM, the chain that clients are shown
    std::filesystem::path keyFile;
    std::filesystem::path clientAuthority;  // "client_ca_file"; empty: no client certificates
    Role clientRole = Role::kRead;          // of whoever shows a certificate of that authority
  } tls;                                    // [tls]

  std::filesystem::path tokensFile;  // [access] tokens_file; default home/eventd.tokens

  bool publicMetrics = false;  // [metrics] public: without a token on loopback and Unix sockets

  struct Limits {
    std::size_t bodyBytes = 8u << 20;
    std::size_t connections = 4096;
    std::size_t connectionsPerAddress = 2048;
    std::size_t waiting = 10000;       // readers that wait, streams among them
    double requestsPerSecond = 10000;  // of one token, certificate or user; 0: no limit
    double burst = 20000;              // so many at once
    std::size_t batchEvents = 10000;   // of one request
    std::chrono::hours idempotency{24};
    std::size_t streamBacklogBytes = 1u << 20;
    std::chrono::milliseconds heartbeat{15000};  // "heartbeat_ms" of streams
    std::chrono::seconds grace{10};              // for requests in work when the daemon stops
  } limits;                                      // [limits]
};

// Reads `file`, or home/eventd.ini, which may be missing, when `file` is empty. Throws Failure,
// naming file, section and entry, for an entry that is unknown or has a value that is not allowed.
Configuration loadConfiguration(const std::filesystem::path& home,
                                const std::filesystem::path& file);

// Throws Failure for what would let somebody in, or nobody at all: a connection in the clear that
// leaves the machine, or a TCP address with neither tokens nor client certificates.
void requireSafe(const Configuration& configuration, const TokenFile& tokens);

// Throws Failure when the daemon would listen nowhere.
void requireSomewhere(const Configuration& configuration, bool hasSockets);

// The same as requireSafe() for a TCP socket in the clear that somebody else has opened.
void requireSafe(const ListenAddress& adopted, const Configuration& configuration,
                 const TokenFile& tokens);

}  // namespace EventApps

#endif
