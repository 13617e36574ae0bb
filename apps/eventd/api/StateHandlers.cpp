// How the daemon and its queues are.

#include <functional>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>

#include "apps/common/ClusterJson.h"
#include "apps/common/EventKinds.h"
#include "apps/common/EventView.h"
#include "apps/eventd/Version.h"
#include "apps/eventd/api/Handlers.h"
#include "apps/eventd/api/OpenApi.h"
#include "apps/eventd/api/Parameters.h"
#include "apps/eventd/api/QueueJson.h"
#include "apps/eventd/api/Services.h"
#include "apps/eventd/metrics/DiskFigures.h"

namespace EventApps::Api {
namespace {

using EventSystemHost::Durability;
using nlohmann::ordered_json;

const char* nameOf(Durability durability) {
  switch (durability) {
    case Durability::kGroup:
      return "group";
    case Durability::kRelaxed:
      return "relaxed";
    case Durability::kStrict:
      break;
  }
  return "strict";
}

// The limits are the database's: the cluster service has none.
int limitOf(const Services& services, int limit) {
  return services.host.cluster() == nullptr ? limit : 0;
}

unsigned long countOf(const FiguresSnapshot& figures) {
  unsigned long count = 0;
  for (const auto& [dsid, queue] : figures.queues) count += queue.count;
  return count;
}

ordered_json jsonOfRates(const Rates::Values& rates) {
  auto byType = ordered_json::object();
  for (const auto& [type, rate] : rates.writtenByType) byType[kindName(type)] = rate;
  return {{"written", {{"1m", rates.written}}},
          {"deleted", {{"1m", rates.deleted}}},
          {"byType", std::move(byType)}};
}

ordered_json statsOf(const Services& services, const FiguresSnapshot& figures) {
  const auto& configuration = services.host.configuration();
  const DiskFigures disk = diskFiguresOf(configuration.databaseFile);
  const ServiceCounters counters = services.queues.counters();
  ordered_json object = {
      {"version", kVersion},
      {"home", configuration.home.string()},
      {"database", configuration.databaseFile.string()},
      {"durability", nameOf(configuration.durability)},
      {"count", countOf(figures)},
      {"queues", jsonOfQueues(figures)},
      {"countLimit", limitOf(services, configuration.countLimit)},
      {"ageLimitDays", limitOf(services, configuration.ageLimitDays)},
      {"bytes", {{"database", disk.database}, {"wal", disk.wal}, {"diskFree", disk.free}}},
      {"startTime", services.startTime},
      {"waiting", counters.waitingReaders},
      {"connections", services.connections().connectionsOpen},
      {"rates", jsonOfRates(services.rates.values())}};
  if (auto* const cluster = services.host.cluster()) {
    object["cluster"] = jsonOfCluster(cluster->report());
  }
  return object;
}

ordered_json limitsOf(const Services& services, const FiguresSnapshot& figures) {
  const auto& host = services.host.configuration();
  const auto& limits = services.configuration.limits;
  const auto global = figures.queues.find(0);
  return {{"countLimit", limitOf(services, host.countLimit)},
          {"count", global == figures.queues.end() ? 0 : global->second.count},
          {"ageLimitDays", limitOf(services, host.ageLimitDays)},
          {"bodyBytes", limits.bodyBytes},
          {"batchEvents", limits.batchEvents},
          {"connections", limits.connections},
          {"waiting", limits.waiting},
          {"requestsPerSecond", limits.requestsPerSecond},
          {"burst", limits.burst},
          {"kinds", jsonOfKinds()}};
}

MetricsSnapshot snapshotOf(const Services& services, const FiguresPtr& figures) {
  const auto& host = services.host.configuration();
  return {.figures = figures,
          .counters = services.queues.counters(),
          .readiness = services.queues.readiness(),
          .connections = services.connections(),
          .disk = diskFiguresOf(host.databaseFile),
          .failedLogins = services.access.failedLogins(),
          .countLimit = limitOf(services, host.countLimit),
          .version = kVersion};
}

// Runs what may wait for a disk or for other servers.
void later(Services& services, const CallPtr& call, std::function<void()> task) {
  if (services.workers.post(std::move(task))) return;
  call->fail(ProblemKind::kUnavailable, "too many such requests are in work; try again");
}

// Answers with figures that could be read; `answer` may wait.
void withFigures(Services& services, const CallPtr& call,
                 std::function<void(const FiguresPtr&)> answer) {
  services.queues.figures([&services, call, answer = std::move(answer)](const FiguresPtr& figures) {
    if (!figures->problem.empty()) return call->fail(queueProblem(figures->code, figures->problem));
    later(services, call, [answer, figures] { answer(figures); });
  });
}

}  // namespace

void showStats(Services& services, const CallPtr& call) {
  Parameters(call->request(), {});
  withFigures(services, call, [&services, call](const FiguresPtr& figures) {
    call->answerJson(200, statsOf(services, *figures));
  });
}

void showLimits(Services& services, const CallPtr& call) {
  Parameters(call->request(), {});
  withFigures(services, call, [&services, call](const FiguresPtr& figures) {
    call->answerJson(200, limitsOf(services, *figures));
  });
}

void showCluster(Services& services, const CallPtr& call) {
  Parameters(call->request(), {});
  auto* const cluster = services.host.cluster();
  if (cluster == nullptr) return call->answerJson(200, {{"clustered", false}});
  later(services, call, [call, cluster] {
    ordered_json object = {{"clustered", true}};
    object.update(jsonOfCluster(cluster->report()));
    call->answerJson(200, object);
  });
}

void showWhoami(Services&, const CallPtr& call) {
  Parameters(call->request(), {});
  const Identity& who = *call->identity();
  call->answerJson(200,
                   {{"role", EventApps::nameOf(who.role)}, {"via", who.via}, {"name", who.name}});
}

void showHealth(Services&, const CallPtr& call) {
  call->answerJson(200, {{"status", "ok"}});
}

void showReadiness(Services& services, const CallPtr& call) {
  const Readiness readiness = services.queues.readiness();
  if (readiness.ready) return call->answerJson(200, {{"status", "ready"}});
  call->fail(ProblemKind::kUnavailable, readiness.why);
}

// Metrics are told also while the queues cannot be read: then most of all.
void showMetrics(Services& services, const CallPtr& call) {
  services.queues.figures([&services, call](const FiguresPtr& figures) {
    later(services, call, [&services, call, figures] {
      call->answer({200, kMetricsType, services.metrics.text(snapshotOf(services, figures)), {}});
    });
  });
}

void showOpenApi(Services&, const CallPtr& call) {
  call->answer({200, "application/json", openApiDescription(), {}});
}

}  // namespace EventApps::Api
