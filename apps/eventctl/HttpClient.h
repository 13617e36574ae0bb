// Requests to a daemon, one after the other over one connection.
//
// Thread safety: none; used by the main thread.

#ifndef EVENTSYSTEM_APPS_EVENTCTL_HTTPCLIENT_H
#define EVENTSYSTEM_APPS_EVENTCTL_HTTPCLIENT_H

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "apps/common/Failure.h"
#include "apps/eventctl/DaemonAddress.h"

namespace EventApps {

// No answer came. What was asked for may have been done, unless the daemon was not reached at all.
class NoAnswer : public Failure {
 public:
  NoAnswer(const std::string& message, bool reached) : Failure(message), m_reached(reached) {}
  bool reached() const { return m_reached; }

 private:
  bool m_reached;
};

struct HttpRequest {
  std::string method = "GET";
  std::string target;  // path and query
  std::string body = {};
  std::vector<std::string> headers = {};  // "Name: value"
};

struct HttpAnswer {
  long status = 0;
  std::string body;
  std::chrono::seconds retryAfter{0};
};

class HttpClient {
 public:
  explicit HttpClient(const DaemonAddress& address);
  ~HttpClient();

  HttpClient(const HttpClient&) = delete;
  HttpClient& operator=(const HttpClient&) = delete;

  struct Interruption {
    // Asked from time to time, and soon after `descriptor` has become readable: true gives the
    // request up.
    int descriptor = -1;
    std::function<bool()> wanted;
    // Called when nothing came within the time limit. Where it returns, the request waits for as
    // long again; where there is none, it fails.
    std::function<void()> overdue;
  };

  // The answer, whatever its status; nothing when it was given up. Throws NoAnswer, and what
  // `overdue` throws.
  std::optional<HttpAnswer> send(const HttpRequest& request, const Interruption& interruption);
  HttpAnswer send(const HttpRequest& request);

 private:
  class Handles;

  DaemonAddress m_address;
  std::unique_ptr<Handles> m_handles;
};

}  // namespace EventApps

#endif
