// The lines that requests leave in the log, and their number in the metrics.
//
// Thread safety: any thread.

#ifndef EVENTSYSTEM_APPS_EVENTD_API_REQUESTLOG_H
#define EVENTSYSTEM_APPS_EVENTD_API_REQUESTLOG_H

#include <cstddef>
#include <optional>

#include "apps/eventd/access/AccessControl.h"
#include "apps/eventd/http/Request.h"
#include "apps/eventd/metrics/Metrics.h"

namespace EventApps::Api {

class RequestLog {
 public:
  // `metrics` outlives it.
  explicit RequestLog(Metrics& metrics) : m_metrics(metrics) {}

  struct Outcome {
    unsigned status = 0;
    std::size_t bytes = 0;  // of the answer's body
    double seconds = 0;     // until the answer
  };

  // At level info. Neither the query nor any header is in the line.
  void write(const Http::Request& request, const std::optional<Identity>& who,
             const Outcome& outcome);

  // The same for a request that never was complete.
  void writeRefusal(unsigned status, const std::string& detail);

 private:
  Metrics& m_metrics;
};

}  // namespace EventApps::Api

#endif
