// What a server grants its clients.
//
// Thread safety: plain values.

#ifndef EVENTSYSTEM_APPS_EVENTD_HTTP_LIMITS_H
#define EVENTSYSTEM_APPS_EVENTD_HTTP_LIMITS_H

#include <chrono>
#include <cstddef>

namespace EventApps::Http {

struct Limits {
  std::size_t headerBytes = 16384;        // request line and headers; more: 431
  std::size_t bodyBytes = 8u << 20;       // of one request; more: 413
  std::size_t bodiesBytes = 256u << 20;   // of all requests in work; more: 503
  std::size_t answersBytes = 256u << 20;  // of all answers that are being sent; more: 503
  std::size_t takenInTime = 64u << 10;    // bytes that a client takes in `writeTime` at least
  // Open at once; more: 503. A sixteenth of them is kept for the Unix socket, so that whoever
  // looks after the server gets in when the network does not.
  std::size_t connections = 4096;
  std::size_t connectionsOfOnePeer = 2048;  // of one TCP address (IPv6: one /64 network)
  std::size_t streamBacklog = 1u << 20;     // unsent bytes of one stream

  std::chrono::milliseconds idle = std::chrono::seconds(75);           // between requests
  std::chrono::milliseconds requestTime = std::chrono::seconds(30);    // a whole request; then 408
  std::chrono::milliseconds writeTime = std::chrono::seconds(30);      // for `takenInTime`
  std::chrono::milliseconds handshakeTime = std::chrono::seconds(10);  // of TLS
  // How long a client that was told that the connection ends may take to end it, too. Until then
  // what it still sends is read: a socket closed with bytes unread may take the answer along.
  std::chrono::milliseconds lingerTime = std::chrono::seconds(2);
};

}  // namespace EventApps::Http

#endif
