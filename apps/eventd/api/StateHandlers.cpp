// How the daemon and its queues are.

#include <algorithm>
#include <chrono>
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
      {"time", std::chrono::system_clock::to_time_t(figures.time)},
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

MetricsSnapshot snapshotOf(const Services& services, const FiguresPtr& figures,
                           const Readiness& readiness) {
  const auto& host = services.host.configuration();
  return {.figures = figures,
          .counters = services.queues.counters(),
          .readiness = readiness,
          .connections = services.connections(),
          .disk = diskFiguresOf(host.databaseFile),
          .failedLogins = services.access.failedLogins(),
          .countLimit = limitOf(services, host.countLimit),
          .version = kVersion};
}

// Which of the two states is asked for; both, when nothing is said.
bool forReadsOnly(const std::string* purpose) {
  if (purpose == nullptr || *purpose == "writes") return false;
  if (*purpose == "reads") return true;
  throw Refused(ProblemKind::kBadRequest, "the parameter for takes reads or writes");
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
  const bool readsAreEnough = forReadsOnly(Parameters(call->request(), {"for"}).find("for"));
  services.queues.readiness([call, readsAreEnough](const Readiness& readiness) {
    const bool isEnough = readsAreEnough ? readiness.reads : readiness.ready();
    const ordered_json states = {{"reads", readiness.reads}, {"writes", readiness.writes}};
    if (!isEnough) {
      return call->fail(
          {.kind = ProblemKind::kUnavailable, .detail = readiness.why, .members = states});
    }
    ordered_json answer = {{"status", "ready"}};
    answer.update(states);
    if (!readiness.why.empty()) answer["why"] = readiness.why;
    call->answerJson(200, answer);
  });
}

// Metrics are told also while the queues cannot be read: then most of all.
void showMetrics(Services& services, const CallPtr& call) {
  services.queues.readiness([&services, call](const Readiness& readiness) {
    services.queues.figures([&services, call, readiness](const FiguresPtr& figures) {
      later(services, call, [&services, call, figures, readiness] {
        call->answer({200,
                      kMetricsType,
                      services.metrics.text(snapshotOf(services, figures, readiness)),
                      {}});
      });
    });
  });
}

// Where the types of problems lead.
void showProblem(Services&, const CallPtr& call) {
  const auto texts = problemTexts();
  const auto found = std::find_if(texts.begin(), texts.end(), [&](const ProblemText& text) {
    return text.name == call->argument("name");
  });
  if (found == texts.end()) return call->fail(ProblemKind::kNotFound, "no problem has this name");
  call->answerJson(200, {{"type", call->request().path},
                         {"title", found->title},
                         {"status", found->status},
                         {"explanation", found->explanation}});
}

void showOpenApi(Services&, const CallPtr& call) {
  call->answer({200, "application/json", openApiDescription(), {}});
}

}  // namespace EventApps::Api
