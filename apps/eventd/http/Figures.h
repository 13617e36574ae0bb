// What a server has counted since it was made.
//
// Thread safety: plain values.

#ifndef EVENTSYSTEM_APPS_EVENTD_HTTP_FIGURES_H
#define EVENTSYSTEM_APPS_EVENTD_HTTP_FIGURES_H

#include <cstdint>

namespace EventApps::Http {

struct Figures {
  std::uint64_t connectionsOpen = 0;     // now
  std::uint64_t connectionsOpened = 0;   // with those that are closed by now
  std::uint64_t connectionsRefused = 0;  // for one too many
  std::uint64_t acceptFailures = 0;      // the system had no descriptor or no memory for one
  std::uint64_t handshakesFailed = 0;    // of TLS
  std::uint64_t requests = 0;            // that reached the handler
  std::uint64_t requestsRefused = 0;     // that did not
  std::uint64_t bytesIn = 0;             // of requests; with TLS, inside it
  std::uint64_t bytesOut = 0;            // of responses; likewise
};

}  // namespace EventApps::Http

#endif
