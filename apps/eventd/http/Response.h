// One answer.
//
// Thread safety: plain values.

#ifndef EVENTSYSTEM_APPS_EVENTD_HTTP_RESPONSE_H
#define EVENTSYSTEM_APPS_EVENTD_HTTP_RESPONSE_H

#include <string>
#include <utility>
#include <vector>

namespace EventApps::Http {

struct Response {
  unsigned status = 200;    // 200 to 599
  std::string contentType;  // empty: no such header
  std::string body;
  // More headers. Those about the connection and about how the body is sent (Connection,
  // Content-Length, Date, Keep-Alive, Transfer-Encoding) are the server's and are passed over here.
  // A name that is no token, or a value with a control character, makes the answer a 500.
  std::vector<std::pair<std::string, std::string>> headers;
};

}  // namespace EventApps::Http

#endif
