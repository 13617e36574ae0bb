#include "apps/eventctl/DaemonQueues.h"

#include <sys/random.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <nlohmann/json.hpp>
#include <system_error>

#include "apps/common/Display.h"
#include "apps/common/Output.h"
#include "apps/common/QueueNames.h"
#include "apps/eventctl/DaemonJson.h"

namespace EventApps {
namespace {

using nlohmann::json;

constexpr unsigned int kPageEvents = 1000;
constexpr unsigned int kLongPollSeconds = 50;
constexpr unsigned long kLongestId = 10'000'000'000'000'000'000U;  // the first of 20 digits

std::string queuePath(unsigned int dsid) {
  return "/v1/queues/" + std::to_string(queueOf(dsid));
}

std::string eventsPath(unsigned int dsid) {
  return queuePath(dsid) + "/events";
}

std::string eventPath(unsigned long id, unsigned int dsid) {
  return eventsPath(dsid) + "/" + std::to_string(id);
}

std::string pagePath(unsigned int dsid, unsigned long after, unsigned int limit) {
  return eventsPath(dsid) + "?after=" + std::to_string(after) + "&limit=" + std::to_string(limit);
}

// What is not as the interface has it comes from another release, or from another program.
template <class Work>
auto understood(const Work& work) {
  try {
    return work();
  } catch (const json::exception& problem) {
    throw Failure(std::string("the daemon's answer is not as this eventctl expects it: ") +
                  problem.what());
  }
}

std::string randomHex() {
  std::array<char, 16> bytes{};
  if (::getrandom(bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size())) {
    throw std::system_error(errno, std::generic_category(), "getrandom");
  }
  return hexOfBytes({bytes.data(), bytes.size()});
}

HttpRequest postRequest(std::string target, const std::string& type, std::string body) {
  return {.method = "POST",
          .target = std::move(target),
          .body = std::move(body),
          .headers = {"Content-Type: " + type}};
}

std::vector<unsigned long> idsIn(const json& object) {
  const auto found = object.find("ids");
  return found == object.end() ? std::vector<unsigned long>()
                               : found->get<std::vector<unsigned long>>();
}

Failure notKnown(const Failure& problem) {
  return Failure(std::string(problem.what()) +
                 "; whether the events were stored is not known: eventctl list shows them");
}

// Whether the queues have failed, not the request.
bool isFailure(const DaemonProblem& problem) {
  const std::string& kind = problem.kind();
  return kind == "store-failed" || kind == "disk-full" || kind == "no-majority";
}

// The daemon speaks of itself, and to programs; here a person is told what to type.
bool isUnknownSelection(const DaemonProblem& problem) {
  return problem.kind() == "unknown-data-selection";
}

}  // namespace

DaemonQueues::DaemonQueues(const DaemonAddress& address)
    : m_client(address), m_keyPrefix("eventctl-" + randomHex() + "-") {}

bool DaemonQueues::hasQueue(unsigned int dsid) {
  if (isGlobalQueue(dsid)) return true;
  try {
    m_client.call({.target = pagePath(dsid, 0, 1)});
    return true;
  } catch (const DaemonProblem& problem) {
    if (isUnknownSelection(problem)) return false;
    throw;
  }
}

void DaemonQueues::forEach(unsigned int dsid, unsigned long after, const EventKind* kind,
                           const Visitor& visit) {
  const std::string filter = kind == nullptr ? "" : std::string("&type=") + kind->name;
  while (true) {
    const json page = m_client.call({.target = pagePath(dsid, after, kPageEvents) + filter});
    const bool isWanted = understood([&] {
      const json& events = page.at("events");
      for (const json& event : events) {
        if (!visit(eventFrom(event))) return false;
      }
      after = page.at("last").get<unsigned long>();
      return !events.empty();
    });
    if (!isWanted) return;
  }
}

std::optional<EventView> DaemonQueues::find(unsigned long id, unsigned int dsid) {
  try {
    const json event = m_client.call({.target = eventPath(id, dsid)});
    return understood([&] { return eventFrom(event); });
  } catch (const DaemonProblem& problem) {
    if (problem.kind() == "not-found") return std::nullopt;
    throw;
  }
}

std::vector<std::pair<DataSelection, unsigned long>> DaemonQueues::selections() {
  const json answer = m_client.call({.target = "/v1/queues"});
  return understood([&] {
    std::vector<std::pair<DataSelection, unsigned long>> found;
    for (const json& queue : answer.at("queues")) {
      const DataSelection selection = selectionFrom(queue);
      if (isGlobalQueue(selection.id) || !queue.at("known").get<bool>()) continue;
      found.emplace_back(selection, queue.at("count").get<unsigned long>());
    }
    return found;
  });
}

Statistics DaemonQueues::statistics() {
  try {
    const json stats = m_client.call({.target = "/v1/stats"});
    return understood([&] { return statisticsFrom(stats); });
  } catch (const DaemonProblem& problem) {
    if (!isFailure(problem)) throw;
    return withoutFigures(problem);
  }
}

// A cluster that cannot be read is shown as it is.
Statistics DaemonQueues::withoutFigures(const DaemonProblem& problem) {
  const json cluster = m_client.call({.target = "/v1/cluster"});
  return understood([&] {
    if (!cluster.at("clustered").get<bool>()) throw problem;
    Statistics statistics;
    statistics.cluster = clusterFrom(cluster);
    if (statistics.cluster->failure.empty()) statistics.cluster->failure = problem.what();
    return statistics;
  });
}

Woken DaemonQueues::waitForMore(unsigned int dsid, unsigned long after, const Listener& listener) {
  const std::string target = pagePath(dsid, after, 1) + "&wait=" + std::to_string(kLongPollSeconds);
  Woken woken = Woken::kMaybeMore;
  HttpClient::Interruption interruption;
  interruption.descriptor = listener.stop;
  interruption.wanted = [&] {
    woken = listener.look();
    return woken != Woken::kMaybeMore;
  };
  m_client.callAtLength({.target = target}, std::move(interruption));
  return woken;
}

// Which id it will be costs the daemon a count of all queues. The longest one will do for an event
// that fits with it.
Destination DaemonQueues::destination(unsigned int dsid, bool exact) {
  if (!exact) return {dsid, kLongestId, true};
  const Statistics now = statistics();
  if (now.cluster) return {dsid, 0, false};
  const auto queue = now.figures->find(queueOf(dsid));
  return {dsid, (queue == now.figures->end() ? 0 : queue->second.highestId) + 1, true};
}

StoreOutcome DaemonQueues::store(Events events, unsigned int dsid) {
  try {
    const json answer = post(events, dsid);
    return understood([&] { return StoreOutcome{.ids = idsIn(answer)}; });
  } catch (const DaemonProblem& problem) {
    return refusalOf(problem, events, dsid);
  }
}

StoreOutcome DaemonQueues::refusalOf(const DaemonProblem& problem, Events events,
                                     unsigned int dsid) {
  using Refusal = StoreOutcome::Refusal;
  StoreOutcome outcome{.ids = understood([&] { return idsIn(problem.members()); }),
                       .refusal = Refusal::kRejected,
                       .reason = problem.what()};
  const std::string& kind = problem.kind();
  if (isUnknownSelection(problem)) throw Failure(noSuchSelection(dsid));
  if (kind == "payload-too-large" && events.size() > 1) {
    return store(events.first(events.size() / 2), dsid);
  }
  if (kind == "queue-full") {
    outcome.refusal = Refusal::kFull;
    outcome.reason =
        "consume or delete events, or raise count_limit in OrbCentral.ini of the "
        "daemon's home";
  } else if (isFailure(problem)) {
    if (!problem.members().contains("ids")) throw notKnown(problem);
    outcome.refusal = Refusal::kFailed;
    outcome.reason = "by the daemon: " + outcome.reason;
  } else if (kind == "invalid-event") {
    // Nothing is stored of a body in which one event is wrong; what stands before it is right.
    const auto wrong = problem.members().value("index", std::size_t{0});
    if (outcome.ids.empty() && wrong > 0 && wrong < events.size()) {
      return store(events.first(wrong), dsid);
    }
  } else if (kind != "payload-too-large") {
    throw problem;
  }
  return outcome;
}

json DaemonQueues::post(Events events, unsigned int dsid) {
  std::string lines;
  for (const auto& event : events) lines.append(eventStringOf(*event)).append("\n");
  HttpRequest request = postRequest(eventsPath(dsid), "text/plain", std::move(lines));
  if (!m_keysAreTaken) return postWithoutKey(request);
  HttpRequest keyed = request;
  keyed.headers.push_back("Idempotency-Key: " + nextKey());
  try {
    return m_client.settle(keyed);
  } catch (const DaemonProblem& problem) {
    if (problem.kind() != "bad-request") throw;
    const json cluster = m_client.call({.target = "/v1/cluster"});
    if (!cluster.is_object() || !cluster.value("clustered", false)) throw;
  }
  m_keysAreTaken = false;
  return postWithoutKey(request);
}

json DaemonQueues::postWithoutKey(const HttpRequest& request) {
  try {
    return m_client.call(request);
  } catch (const NoAnswer& problem) {
    if (!problem.reached()) throw;
    throw notKnown(problem);
  }
}

std::string DaemonQueues::nextKey() {
  return m_keyPrefix + std::to_string(++m_keys);
}

std::optional<EventView> DaemonQueues::next(unsigned long after, unsigned int dsid) {
  const json page = m_client.call({.target = pagePath(dsid, after, 1)});
  return understood([&]() -> std::optional<EventView> {
    if (page.at("events").empty()) return std::nullopt;
    return eventFrom(page.at("events").front());
  });
}

bool DaemonQueues::remove(unsigned long id, unsigned int dsid) {
  try {
    m_client.call({.method = "DELETE", .target = eventPath(id, dsid)});
    return true;
  } catch (const DaemonProblem& problem) {
    if (problem.kind() == "not-found") return false;
    throw;
  }
}

// Done again, it finds nothing to do.
void DaemonQueues::discard(unsigned long id, unsigned int dsid) {
  try {
    m_client.settle({.method = "DELETE", .target = eventPath(id, dsid)});
  } catch (const DaemonProblem& problem) {
    if (problem.kind() != "not-found") throw;
  }
}

unsigned long DaemonQueues::removeUpTo(unsigned long upTo, unsigned int dsid) {
  const auto answer = m_client.callAtLength(
      {.method = "DELETE", .target = eventsPath(dsid) + "?upto=" + std::to_string(upTo)});
  return understood([&] { return answer.value().at("deleted").get<unsigned long>(); });
}

void DaemonQueues::addSelection(const DataSelection& selection) {
  const nlohmann::ordered_json body = {{"name", selection.name}, {"type", selection.type}};
  m_client.call({.method = "PUT",
                 .target = "/v1/queues/" + std::to_string(selection.id),
                 .body = jsonLine(body),
                 .headers = {"Content-Type: application/json"}});
}

void DaemonQueues::removeSelection(unsigned int dsid) {
  try {
    m_client.call({.method = "DELETE", .target = "/v1/queues/" + std::to_string(dsid)});
  } catch (const DaemonProblem& problem) {
    if (!isUnknownSelection(problem)) throw;
    throw Failure("data selection " + std::to_string(dsid) + " does not exist");
  }
}

CheckReport DaemonQueues::check(bool fix) {
  const auto report = m_client.callAtLength(
      postRequest("/v1/check", "application/json", json({{"fix", fix}}).dump()));
  return understood([&] { return checkReportFrom(report.value()); });
}

}  // namespace EventApps
