// One request, read and checked: what a handler sees of it.
//
// Thread safety: plain values.

#ifndef EVENTSYSTEM_APPS_EVENTD_HTTP_REQUEST_H
#define EVENTSYSTEM_APPS_EVENTD_HTTP_REQUEST_H

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "apps/eventd/http/Peer.h"

namespace EventApps::Http {

struct Request {
  using Pairs = std::vector<std::pair<std::string, std::string>>;

  std::string method;          // "GET"
  std::string path;            // decoded, UTF-8, without the query: "/v1/queues/0/events"
  Pairs query;                 // decoded, UTF-8, in order
  Pairs headers;               // in order; without those that follow a chunked body
  std::string body;            // whole, as sent: any bytes
  const Peer* peer = nullptr;  // lives as long as the exchange

  // The first parameter of that name; null when there is none.
  const std::string* find(std::string_view name) const;

  // The value of the first header of that name, in any case; empty when there is none.
  std::string_view header(std::string_view name) const;
};

}  // namespace EventApps::Http

#endif
