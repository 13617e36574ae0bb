// What the daemon tells Prometheus.
//
// Thread safety: any thread.

#ifndef EVENTSYSTEM_APPS_EVENTD_METRICS_METRICS_H
#define EVENTSYSTEM_APPS_EVENTD_METRICS_METRICS_H

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "apps/eventd/http/Figures.h"
#include "apps/eventd/metrics/DiskFigures.h"
#include "apps/eventd/queue/ServiceObserver.h"
#include "apps/eventd/queue/ServiceRequests.h"

namespace EventApps {

// What is so at the moment, gathered when somebody asks.
struct MetricsSnapshot {
  FiguresPtr figures;
  ServiceCounters counters;
  Readiness readiness;
  Http::Figures connections;
  DiskFigures disk;
  std::uint64_t failedLogins = 0;
  int countLimit = 0;  // 0: no limit
  std::string version;
};

class Metrics : public ServiceObserver {
 public:
  Metrics();
  ~Metrics() override;

  Metrics(const Metrics&) = delete;
  Metrics& operator=(const Metrics&) = delete;

  void onOperation(std::string_view name, double seconds) override;
  void onFlush(double seconds) override;

  // How long a reader waited for an event, or in vain.
  void onWait(double seconds);

  // Methods that nobody uses are counted together: who asks must not make new series.
  void onRequest(std::string_view method, unsigned status);

  // All of them, as Prometheus reads them (text format 0.0.4).
  std::string text(const MetricsSnapshot& snapshot) const;

 private:
  class Parts;
  std::unique_ptr<Parts> m_parts;
};

constexpr const char* kMetricsType = "text/plain; version=0.0.4; charset=utf-8";

}  // namespace EventApps

#endif
