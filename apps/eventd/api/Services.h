// What the handlers work with.
//
// Thread safety: each part as its own header says; the parts outlive all requests.

#ifndef EVENTSYSTEM_APPS_EVENTD_API_SERVICES_H
#define EVENTSYSTEM_APPS_EVENTD_API_SERVICES_H

#include <atomic>
#include <ctime>
#include <functional>

#include "apps/eventd/Configuration.h"
#include "apps/eventd/Workers.h"
#include "apps/eventd/access/AccessControl.h"
#include "apps/eventd/api/EventStreams.h"
#include "apps/eventd/http/Figures.h"
#include "apps/eventd/metrics/Metrics.h"
#include "apps/eventd/metrics/Rates.h"
#include "apps/eventd/queue/QueueService.h"
#include "host/Host.h"

namespace EventApps::Api {

struct Services {
  const Configuration& configuration;
  EventSystemHost::Host& host;
  QueueService& queues;
  AccessControl& access;
  Metrics& metrics;
  Rates& rates;
  Workers& workers;
  EventStreams& streams;
  std::function<Http::Figures()> connections;  // of the server
  std::time_t startTime = std::time(nullptr);
  std::atomic<bool> stopping{false};  // new requests are refused
};

}  // namespace EventApps::Api

#endif
