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
  explicit DaemonClient(const DaemonAddress& address) : m_name(address.name()), m_http(address) {}

  // What the daemon answers; null for an answer without a body. Throws NoAnswer or DaemonProblem.
  nlohmann::json call(const HttpRequest& request);
  // The same; nothing when it was given up.
  std::optional<nlohmann::json> call(const HttpRequest& request,
                                     const HttpClient::Interruption& interruption);

  // The same for what changes nothing when it is done twice: while there is no answer it is sent
  // again and again, for a while. A daemon that was never reached is not waited for.
  nlohmann::json settle(const HttpRequest& request);

 private:
  nlohmann::json read(const HttpAnswer& answer);
  [[noreturn]] void refuse(const HttpAnswer& answer, const nlohmann::json& problem) const;

  std::string m_name;
  HttpClient m_http;
  bool m_reached = false;  // at least once
};

}  // namespace EventApps

#endif
