// Why a request does not reach the handler.
//
// Thread safety: plain values.

#ifndef EVENTSYSTEM_APPS_EVENTD_HTTP_REFUSEDREQUEST_H
#define EVENTSYSTEM_APPS_EVENTD_HTTP_REFUSEDREQUEST_H

#include <stdexcept>
#include <string>

namespace EventApps::Http {

class RefusedRequest : public std::runtime_error {
 public:
  RefusedRequest(unsigned status, const std::string& detail)
      : std::runtime_error(detail), m_status(status) {}

  unsigned status() const { return m_status; }

 private:
  unsigned m_status;
};

}  // namespace EventApps::Http

#endif
