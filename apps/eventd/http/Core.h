// What all connections of a server share. It lives as long as the last of them and of their
// exchanges.
//
// Thread safety: the hooks do not change once the server runs; the counters, `connections` and
// `stopping` may be used from any thread.

#ifndef EVENTSYSTEM_APPS_EVENTD_HTTP_CORE_H
#define EVENTSYSTEM_APPS_EVENTD_HTTP_CORE_H

#include <atomic>
#include <boost/asio/io_context.hpp>
#include <cstdint>
#include <string>

#include "apps/eventd/http/Connections.h"
#include "apps/eventd/http/Limits.h"
#include "apps/eventd/http/Server.h"

namespace EventApps::Http {

struct Core {
  Core(const Limits& given, Server::Handler handler, int threads);

  // The answer to a request that the handler does not answer; never throws.
  Response refusalFor(unsigned status, const std::string& detail) const noexcept;
  void complain(const std::string& message) const noexcept;

  const Limits limits;
  const Server::Handler handle;
  Server::Refusal refuse;
  Server::Admission admit;
  Server::Complaint complaint;

  std::atomic<bool> stopping = false;
  std::atomic<std::size_t> bodies = 0;   // bytes, of all requests in work
  std::atomic<std::size_t> answers = 0;  // bytes, of all answers that are being sent
  std::atomic<std::uint64_t> acceptFailures = 0;
  std::atomic<std::uint64_t> handshakesFailed = 0;
  std::atomic<std::uint64_t> requests = 0;
  std::atomic<std::uint64_t> requestsRefused = 0;
  std::atomic<std::uint64_t> bytesIn = 0;
  std::atomic<std::uint64_t> bytesOut = 0;

  boost::asio::io_context context;
  Connections connections;
};

}  // namespace EventApps::Http

#endif
