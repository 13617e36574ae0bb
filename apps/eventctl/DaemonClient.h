// The daemon's interface as calls that return JSON or throw what went wrong as a sentence.
//
// Thread safety: none; used by the main thread.

#ifndef EVENTSYSTEM_APPS_EVENTCTL_DAEMONCLIENT_H
#define EVENTSYSTEM_APPS_EVENTCTL_DAEMONCLIENT_H

#include <chrono>
#include <memory>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>

#include "apps/eventctl/HttpClient.h"

namespace EventApps {

// The daemon's answer that something could not be done.
class DaemonProblem : public Failure {
 public:
  DaemonProblem(const std::string& message, const HttpAnswer& answer,
                const nlohmann::json& problem);

  // "queue-full", or empty for an answer that is no problem document.
  const std::string& kind() const { return m_kind; }
  // All of the document.
  const nlohmann::json& members() const { return *m_members; }
  // Whether the same request can succeed a little later, and when to try.
  bool isPassing() const { return m_passing; }
  std::chrono::milliseconds pause() const { return m_pause; }

 private:
  std::shared_ptr<const nlohmann::json> m_members;  // never null
  std::string m_kind;
  bool m_passing;
  std::chrono::milliseconds m_pause;
};

class DaemonClient {
 public:
  explicit DaemonClient(const DaemonAddress& address) : m_address(address), m_http(address) {}

  // What the daemon answers; null for an answer without a body. Throws NoAnswer or DaemonProblem.
  nlohmann::json call(const HttpRequest& request);
  // The same for what may take any time: when the time limit is over, the daemon is asked whether
  // it lives, and waited for again. Nothing when it was given up.
  std::optional<nlohmann::json> callAtLength(const HttpRequest& request,
                                             HttpClient::Interruption interruption = {});

  // The same for what changes nothing when it is done twice: while there is no answer it is sent
  // again and again, until the time limit is over. A daemon that was never reached is not waited
  // for.
  nlohmann::json settle(const HttpRequest& request);

 private:
  void requireAlive() const;
  nlohmann::json read(const HttpAnswer& answer);
  [[noreturn]] void refuse(const HttpAnswer& answer, const nlohmann::json& problem) const;

  DaemonAddress m_address;
  HttpClient m_http;
  bool m_reached = false;  // at least once
};

}  // namespace EventApps

#endif
