// One request on its way through a handler: who asks, what for, and how it is answered. However it
// ends, it is counted and stands in the log.
//
// Thread safety: any thread; of several answers the first counts.

#ifndef EVENTSYSTEM_APPS_EVENTD_API_CALL_H
#define EVENTSYSTEM_APPS_EVENTD_API_CALL_H

#include <atomic>
#include <chrono>
#include <map>
#include <memory>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <utility>

#include "apps/eventd/access/AccessControl.h"
#include "apps/eventd/api/Problem.h"
#include "apps/eventd/api/RequestLog.h"
#include "apps/eventd/http/Exchange.h"

namespace EventApps::Api {

// What stands for the names in braces of a route's pattern.
using PathArguments = std::map<std::string, std::string, std::less<>>;

class Call {
 public:
  // `log` outlives it.
  Call(std::shared_ptr<Http::Exchange> exchange, RequestLog& log, std::optional<Identity> identity,
       PathArguments arguments);

  Call(const Call&) = delete;
  Call& operator=(const Call&) = delete;

  const Http::Request& request() const { return m_exchange->request(); }
  Http::Exchange& exchange() const { return *m_exchange; }

  // Nobody where the route needs no credentials and none were shown.
  const std::optional<Identity>& identity() const { return m_identity; }

  // Empty when the route's pattern has no such name.
  const std::string& argument(std::string_view name) const;

  void answer(Http::Response response);
  void answerJson(unsigned status, const nlohmann::ordered_json& object);
  void fail(const Problem& problem);
  void fail(ProblemKind kind, std::string detail) {
    fail({.kind = kind, .detail = std::move(detail)});
  }

  // Instead of an answer; see Http::Exchange.
  void startStream(Http::Response head);

 private:
  bool isFirst(unsigned status, std::size_t bytes);

  const std::shared_ptr<Http::Exchange> m_exchange;
  RequestLog& m_log;
  const std::optional<Identity> m_identity;
  const PathArguments m_arguments;
  const std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
  std::atomic<bool> m_answered{false};
};

using CallPtr = std::shared_ptr<Call>;

// A response with the headers that every answer has.
Http::Response finished(Http::Response response);

}  // namespace EventApps::Api

#endif
