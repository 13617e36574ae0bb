// The HTTP API: from a request to its handler, past everything that can refuse it.
//
// Thread safety: any thread.

#ifndef EVENTSYSTEM_APPS_EVENTD_API_API_H
#define EVENTSYSTEM_APPS_EVENTD_API_API_H

#include <memory>
#include <optional>
#include <string>

#include "apps/eventd/access/RateLimit.h"
#include "apps/eventd/api/RequestLog.h"
#include "apps/eventd/api/Router.h"
#include "apps/eventd/api/Services.h"
#include "apps/eventd/http/Exchange.h"

namespace EventApps::Api {

class Api {
 public:
  // The services outlive it.
  explicit Api(Services& services);

  // Whether a request may go on whose body has not been read yet: its answer when it may not.
  // Nobody fills memory with a body that would be refused.
  std::optional<Http::Response> admit(const Http::Request& head);

  void handle(const std::shared_ptr<Http::Exchange>& exchange);

  // The answer to what never became a request.
  Http::Response refuse(unsigned status, const std::string& detail);

 private:
  struct Permission {
    Match match;
    std::optional<Identity> identity;
  };

  std::optional<Identity> identify(const Http::Request& request);
  Permission permit(const Http::Request& request, std::optional<Identity> identity) const;
  void requireRole(const Route& route, const Http::Request& request,
                   const std::optional<Identity>& identity) const;
  void limitRate(const Http::Request& request, const std::optional<Identity>& identity);

  Services& m_services;
  RequestLog m_log;
  RateLimit m_rate;
};

}  // namespace EventApps::Api

#endif
