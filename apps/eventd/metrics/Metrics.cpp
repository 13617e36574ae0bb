#include "apps/eventd/metrics/Metrics.h"

#include <prometheus/counter.h>
#include <prometheus/histogram.h>
#include <prometheus/registry.h>
#include <prometheus/text_serializer.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <ctime>
#include <sstream>
#include <utility>
#include <vector>

#include "apps/common/EventKinds.h"
#include "apps/eventd/metrics/ProcessFigures.h"

namespace EventApps {
namespace {

using prometheus::ClientMetric;
using prometheus::MetricFamily;
using prometheus::MetricType;
using Families = std::vector<MetricFamily>;
using Labels = std::vector<ClientMetric::Label>;

// From what memory answers to what a slow disk needs; waiting goes up to a minute.
const std::vector<double> kBuckets = {0.0001, 0.00025, 0.0005, 0.001, 0.0025, 0.005,
                                      0.01,   0.025,   0.05,   0.1,   0.25,   0.5,
                                      1,      2.5,     5,      10,    30,     60};

// The family that was made last, while values are added to it.
class Family {
 public:
  Family(Families& families, MetricType type, const char* name, const char* help)
      : m_families(families), m_type(type) {
    families.push_back({name, help, type, {}});
  }

  template <typename Number>
  Family& add(Number value, Labels labels = {}) {
    ClientMetric metric;
    metric.label = std::move(labels);
    double& slot = m_type == MetricType::Counter ? metric.counter.value : metric.gauge.value;
    slot = static_cast<double>(value);
    m_families.back().metric.push_back(std::move(metric));
    return *this;
  }

 private:
  Families& m_families;
  MetricType m_type;
};

Family gauge(Families& families, const char* name, const char* help) {
  return {families, MetricType::Gauge, name, help};
}

Family counter(Families& families, const char* name, const char* help) {
  return {families, MetricType::Counter, name, help};
}

double ageOf(const QueueFigures& queue) {
  if (queue.count == 0) return 0;
  return std::max(0.0, static_cast<double>(std::time(nullptr)) - static_cast<double>(queue.oldest));
}

// One value of every queue.
template <typename Value>
void addOfQueues(Families& families, const char* name, const char* help, const Figures& queues,
                 Value value) {
  Family family = gauge(families, name, help);
  for (const auto& [dsid, queue] : queues) {
    family.add(value(queue), {{"dsid", std::to_string(dsid)}});
  }
}

void addQueues(Families& families, const Figures& queues) {
  addOfQueues(families, "eventd_queue_length", "Events in the queue", queues,
              [](const QueueFigures& queue) { return queue.count; });
  addOfQueues(families, "eventd_queue_oldest_age_seconds",
              "Age of the oldest event in the queue; 0 when it is empty", queues, ageOf);
  addOfQueues(families, "eventd_queue_highest_id", "The highest id that the queue has given",
              queues, [](const QueueFigures& queue) { return queue.highestId; });
  addOfQueues(families, "eventd_queue_damaged", "Rows of the queue that cannot be read", queues,
              [](const QueueFigures& queue) { return queue.damaged; });
  Family kinds = gauge(families, "eventd_events", "Events in the queue, by kind");
  for (const auto& [dsid, queue] : queues) {
    for (const auto& [type, count] : queue.countByType) {
      kinds.add(count, {{"dsid", std::to_string(dsid)}, {"kind", kindName(type)}});
    }
  }
}

void addFigures(Families& families, const FiguresSnapshot& figures) {
  if (!figures.problem.empty()) return;
  addQueues(families, figures.queues);
  gauge(families, "eventd_figures_time_seconds", "When the queues were so, since 1970")
      .add(std::chrono::system_clock::to_time_t(figures.time));
}

void addCounters(Families& families, const ServiceCounters& counters) {
  Family written = counter(families, "eventd_events_written_total", "Events stored for clients");
  for (const EventKind& kind : eventKinds()) {
    const auto found = counters.written.find(kind.number);
    written.add(found == counters.written.end() ? 0 : found->second, {{"kind", kind.name}});
  }
  counter(families, "eventd_events_deleted_total", "Events deleted for clients")
      .add(counters.deleted);
  Family refused = counter(families, "eventd_writes_refused_total",
                           "Events that the queues did not take, by reason");
  for (const auto& [reason, count] : counters.refused) refused.add(count, {{"reason", reason}});
  counter(families, "eventd_audit_imports_total", "Audit records taken in")
      .add(counters.auditImports);
  counter(families, "eventd_flushes_total", "Flushes of the database").add(counters.flushes);
  counter(families, "eventd_flushes_failed_total", "Flushes of the database that failed")
      .add(counters.failedFlushes);
}

void addClients(Families& families, const MetricsSnapshot& snapshot) {
  const ServiceCounters& counters = snapshot.counters;
  gauge(families, "eventd_connections", "Open connections")
      .add(snapshot.connections.connectionsOpen);
  counter(families, "eventd_connections_refused_total", "Connections refused for one too many")
      .add(snapshot.connections.connectionsRefused);
  gauge(families, "eventd_waiting_readers", "Readers that wait for an event, streams included")
      .add(counters.waitingReaders);
  gauge(families, "eventd_streams", "Open streams of events").add(counters.subscribers);
  counter(families, "eventd_failed_logins_total", "Requests with credentials that are not good")
      .add(snapshot.failedLogins);
}

void addState(Families& families, const MetricsSnapshot& snapshot) {
  gauge(families, "eventd_count_limit", "Most events of the global queue; 0: no limit")
      .add(snapshot.countLimit);
  gauge(families, "eventd_idempotency_keys", "Rows of idempotency keys")
      .add(snapshot.counters.keyRows);
  gauge(families, "eventd_database_bytes", "Size of the database file and its log")
      .add(snapshot.disk.database + snapshot.disk.wal);
  gauge(families, "eventd_disk_free_bytes", "Free space where the database is")
      .add(snapshot.disk.free);
  gauge(families, "eventd_ready", "Whether queues can be read and written")
      .add(snapshot.readiness.ready() ? 1 : 0);
  gauge(families, "eventd_ready_for_reads", "Whether queues can be read, and events be deleted")
      .add(snapshot.readiness.reads ? 1 : 0);
  gauge(families, "eventd_ready_for_writes", "Whether queues take events")
      .add(snapshot.readiness.writes ? 1 : 0);
  gauge(families, "eventd_build_info", "The version that runs")
      .add(1, {{"version", snapshot.version}});
}

// There is nothing to tell of a check before the first.
void addCheck(Families& families, const std::optional<LastCheck>& check) {
  if (!check) return;
  gauge(families, "eventd_check_findings", "What the last check found").add(check->findings);
  gauge(families, "eventd_check_remaining", "Problems that the last check left")
      .add(check->remaining);
  gauge(families, "eventd_check_last_time_seconds", "When the last check was, since 1970")
      .add(std::chrono::system_clock::to_time_t(check->time));
}

void addProcess(Families& families) {
  const ProcessFigures process = processFigures();
  counter(families, "process_cpu_seconds_total", "Processor time used").add(process.cpuSeconds);
  gauge(families, "process_resident_memory_bytes", "Resident memory").add(process.residentBytes);
  gauge(families, "process_virtual_memory_bytes", "Virtual memory").add(process.virtualBytes);
  gauge(families, "process_open_fds", "Open file descriptors").add(process.openFiles);
  gauge(families, "process_max_fds", "Most file descriptors").add(process.mostOpenFiles);
  gauge(families, "process_threads", "Threads").add(process.threads);
  static const double start = processStartTime();
  gauge(families, "process_start_time_seconds", "When the process was started, since 1970")
      .add(start);
}

// The names that dashboards know.
std::string_view operationName(std::string_view name) {
  if (name == "store") return "post";
  if (name == "remove" || name == "remove_up_to") return "delete";
  return name;
}

std::string_view knownMethod(std::string_view method) {
  constexpr std::array<std::string_view, 5> kKnown = {"GET", "HEAD", "POST", "PUT", "DELETE"};
  return std::find(kKnown.begin(), kKnown.end(), method) == kKnown.end() ? "other" : method;
}

}  // namespace

class Metrics::Parts {
 public:
  Parts() {
    for (const char* const name : {"post", "read", "find", "delete", "check", "wait"}) {
      m_operations.Add({{"operation", name}}, kBuckets);
    }
  }

  void observe(std::string_view operation, double seconds) {
    m_operations.Add({{"operation", std::string(operation)}}, kBuckets).Observe(seconds);
  }
  void observeFlush(double seconds) { m_flush.Observe(seconds); }
  void count(std::string_view method, unsigned status) {
    m_requests.Add({{"method", std::string(method)}, {"status", std::to_string(status)}})
        .Increment();
  }
  Families collect() const { return m_registry.Collect(); }

 private:
  prometheus::Registry m_registry;
  prometheus::Family<prometheus::Counter>& m_requests =
      prometheus::BuildCounter()
          .Name("eventd_requests_total")
          .Help("Requests answered, by method and status")
          .Register(m_registry);
  prometheus::Family<prometheus::Histogram>& m_operations =
      prometheus::BuildHistogram()
          .Name("eventd_operation_seconds")
          .Help("From a request to its answer; wait: for an event")
          .Register(m_registry);
  prometheus::Histogram& m_flush = prometheus::BuildHistogram()
                                       .Name("eventd_flush_seconds")
                                       .Help("Flushes of the database")
                                       .Register(m_registry)
                                       .Add({}, kBuckets);
};

Metrics::Metrics() : m_parts(std::make_unique<Parts>()) {}
Metrics::~Metrics() = default;

void Metrics::onOperation(std::string_view name, double seconds) {
  m_parts->observe(operationName(name), seconds);
}

void Metrics::onFlush(double seconds) {
  m_parts->observeFlush(seconds);
}

void Metrics::onWait(double seconds) {
  m_parts->observe("wait", seconds);
}

void Metrics::onRequest(std::string_view method, unsigned status) {
  m_parts->count(knownMethod(method), status);
}

std::string Metrics::text(const MetricsSnapshot& snapshot) const {
  Families families = m_parts->collect();
  if (snapshot.figures) addFigures(families, *snapshot.figures);
  addCounters(families, snapshot.counters);
  addClients(families, snapshot);
  addState(families, snapshot);
  addCheck(families, snapshot.counters.lastCheck);
  addProcess(families);
  std::ostringstream text;
  prometheus::TextSerializer().Serialize(text, families);
  return text.str();
}

}  // namespace EventApps
