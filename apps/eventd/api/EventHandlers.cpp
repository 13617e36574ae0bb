// Single events and stretches of them: stored, read, removed.

#include <algorithm>
#include <chrono>
#include <limits>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>

#include "EventSystem/ResultCode.h"
#include "apps/common/Display.h"
#include "apps/common/QueueNames.h"
#include "apps/eventd/api/EventReader.h"
#include "apps/eventd/api/Handlers.h"
#include "apps/eventd/api/MediaTypes.h"
#include "apps/eventd/api/Parameters.h"
#include "apps/eventd/api/Services.h"

namespace EventApps::Api {
namespace {

constexpr unsigned long kHighestId = std::numeric_limits<unsigned long>::max();
constexpr unsigned long kMostRead = 1000;
constexpr unsigned long kUsuallyRead = 100;
constexpr int kLongestWait = 60;
constexpr std::size_t kLongestKey = 128;
constexpr std::size_t kLargestPage = 4u << 20;  // bytes; many times an event's
constexpr std::size_t kSmallBody = 64u << 10;   // is read at once; others may take their time

std::string queuePath(unsigned int dsid) {
  return "/v1/queues/" + std::to_string(dsid) + "/events";
}

unsigned long idIn(const Call& call) {
  return requireNumber(call.argument("id"), kHighestId, "the event's id");
}

// The key of a client is not that of another one who happens to choose the same.
std::optional<IdempotencyKey> keyIn(const Services& services, const Call& call, unsigned int dsid) {
  const auto key = onlyHeader(call.request(), "Idempotency-Key");
  if (!key) return std::nullopt;
  const bool isVisible =
      std::all_of(key->begin(), key->end(), [](char c) { return c > ' ' && c < 0x7f; });
  if (key->empty() || key->size() > kLongestKey || !isVisible) {
    throw Refused(ProblemKind::kBadRequest, "the header Idempotency-Key takes 1 to " +
                                                std::to_string(kLongestKey) +
                                                " visible ASCII characters");
  }
  if (!services.queues.supportsKeys()) {
    throw Refused(ProblemKind::kBadRequest,
                  "the header Idempotency-Key is not taken in cluster mode: the cluster service "
                  "keeps no keys");
  }
  const Http::Request& request = call.request();
  std::string body = std::to_string(dsid).append(" ").append(request.header("Content-Type"));
  return IdempotencyKey{call.identity()->key().append(" ").append(*key),
                        body.append("\n").append(request.body)};
}

Problem problemOf(const StoreResult& result, unsigned int dsid) {
  Problem problem = queueProblem(result.code, result.problem);
  if (result.diskFull) problem.kind = ProblemKind::kDiskFull;
  if (result.code == EventSystem::kStorageLimits) problem.kind = ProblemKind::kQueueFull;
  if (result.code == EventSystem::kGeneralFailure) problem.kind = ProblemKind::kInvalidEvent;
  if (result.code == EventSystem::kNoDataSelection)
    problem.kind = ProblemKind::kUnknownDataSelection;
  if (result.keyMismatch) {
    return {.kind = ProblemKind::kIdempotencyMismatch,
            .detail = "the Idempotency-Key was used with another body; nothing was stored"};
  }
  if (problem.detail.empty()) problem.detail = queueName(dsid) + " does not take the events";
  if (!result.unsettled) problem.members["ids"] = result.ids;
  if (problem.kind == ProblemKind::kInvalidEvent) problem.members["index"] = result.ids.size();
  return problem;
}

void answerStored(const CallPtr& call, unsigned int dsid, const StoreResult& result) {
  if (result.code != 0 || result.keyMismatch) return call->fail(problemOf(result, dsid));
  Http::Response response{201, "application/json", jsonLine({{"ids", result.ids}}) + "\n", {}};
  if (!result.ids.empty()) {
    response.headers.emplace_back("Location",
                                  queuePath(dsid) + "/" + std::to_string(result.ids.front()));
  }
  call->answer(std::move(response));
}

void store(Services& services, const CallPtr& call, unsigned int dsid) {
  const Http::Request& request = call->request();
  auto key = keyIn(services, *call, dsid);
  const bool isDatabase = services.host.cluster() == nullptr;
  Events events =
      Api::readEvents(request.body, mediaTypeOf(request.header("Content-Type")),
                      {{dsid, 0, isDatabase}, services.configuration.limits.batchEvents});
  services.queues.store(
      std::move(events), dsid, std::move(key),
      [call, dsid](const StoreResult& result) { answerStored(call, dsid, result); });
}

// Long events make a short page: who asks on from its last id misses nothing.
std::string bodyOf(const ReadResult& result) {
  std::string body = "{\"events\":[";
  unsigned long last = result.last;
  unsigned long before = last;
  for (const EventPtr& event : result.events) {
    if (body.size() + event->json().size() > kLargestPage) {
      last = before;
      break;
    }
    if (event != result.events.front()) body += ',';
    body += event->json();
    before = event->id();
  }
  return body.append("],\"last\":").append(std::to_string(last)).append("}\n");
}

void answerRead(const CallPtr& call, const ReadResult& result) {
  if (result.code != 0) return call->fail(queueProblem(result.code, result.problem));
  call->answer({200, "application/json", bodyOf(result), {}});
}

// Whoever looks for some kinds only may have to pass over a whole queue: not for a client that has
// gone.
void readNow(Services& services, const CallPtr& call, const ReadRequest& request) {
  const auto reading =
      services.queues.read(request, [call](const ReadResult& result) { answerRead(call, result); });
  if (!reading || request.types.empty()) return;
  call->exchange().onClose([reading = *reading] { reading.cancel(); });
}

// A reader that waits is told at once when the daemon stops; one that has gone waits no more.
void readWaiting(Services& services, const CallPtr& call, const ReadRequest& request) {
  const auto start = std::chrono::steady_clock::now();
  Metrics& metrics = services.metrics;
  const auto waiting =
      services.queues.read(request, [call, start, &metrics](const ReadResult& result) {
        const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
        metrics.onWait(time.count());
        answerRead(call, result);
      });
  if (!waiting) {
    return call->fail(
        {.kind = ProblemKind::kTooManyWaiting,
         .detail = "too many readers wait already; ask again without \"wait\", or later",
         .headers = {{"Retry-After", "1"}}});
  }
  call->exchange().onClose([call, waiting = *waiting, after = request.after] {
    waiting.cancel();
    answerRead(call, {.events = {}, .last = after, .code = 0, .problem = {}});
  });
}

}  // namespace

void postEvents(Services& services, const CallPtr& call) {
  const unsigned int dsid = queueIn(services, *call);
  Parameters(call->request(), {});
  if (call->request().body.size() <= kSmallBody) return store(services, call, dsid);
  const bool isTaken = services.workers.post([&services, call, dsid] {
    try {
      store(services, call, dsid);
    } catch (const Refused& refused) {
      call->fail(refused.problem());
    }
  });
  if (!isTaken)
    throw Refused(ProblemKind::kUnavailable, "too many large bodies are being read; try again");
}

void readEvents(Services& services, const CallPtr& call) {
  const unsigned int dsid = queueIn(services, *call);
  const Parameters parameters(call->request(), {"after", "limit", "wait", "type"});
  ReadRequest request{
      .dsid = dsid,
      .after = parameters.number("after", 0, kHighestId).value_or(0),
      .limit = static_cast<unsigned int>(
          parameters.number("limit", 1, kMostRead).value_or(kUsuallyRead)),
      .types = parameters.kinds("type"),
      .wait = parameters.seconds("wait", kLongestWait).value_or(std::chrono::milliseconds(0))};
  if (request.wait.count() > 0) return readWaiting(services, call, request);
  readNow(services, call, request);
}

void findEvent(Services& services, const CallPtr& call) {
  const unsigned int dsid = queueIn(services, *call);
  const unsigned long id = idIn(*call);
  Parameters(call->request(), {});
  services.queues.find(id, dsid, [call, id, dsid](const FindResult& result) {
    if (result.code != 0) return call->fail(queueProblem(result.code, result.problem));
    if (result.event)
      return call->answer({200, "application/json", result.event->json() + "\n", {}});
    call->fail(ProblemKind::kNotFound,
               "there is no event " + std::to_string(id) + " in " + queueName(dsid));
  });
}

void removeEvent(Services& services, const CallPtr& call) {
  const unsigned int dsid = queueIn(services, *call);
  const unsigned long id = idIn(*call);
  Parameters(call->request(), {});
  services.queues.remove(id, dsid, [call, id, dsid](const RemoveResult& result) {
    if (result.code != 0) return call->fail(queueProblem(result.code, result.problem));
    if (result.found) return call->answer({204, "", "", {}});
    call->fail(ProblemKind::kNotFound,
               "there is no event " + std::to_string(id) + " in " + queueName(dsid));
  });
}

void removeEvents(Services& services, const CallPtr& call) {
  const unsigned int dsid = queueIn(services, *call);
  const Parameters parameters(call->request(), {"upto", "dry_run"});
  const std::string* const upTo = parameters.find("upto");
  if (upTo == nullptr) {
    throw Refused(
        ProblemKind::kBadRequest,
        "the parameter upto is missing: an id up to which events are deleted, or \"all\"");
  }
  std::optional<unsigned long> id;
  if (*upTo != "all") id = parameters.number("upto", 0, kHighestId);
  const bool dryRun = parameters.flag("dry_run", false);
  services.queues.removeUpTo(id, dsid, dryRun, [call](const RemoveUpToResult& result) {
    if (result.code == 0) {
      return call->answerJson(200, {{"deleted", result.deleted}, {"last", result.last}});
    }
    Problem problem = queueProblem(result.code, result.problem);
    problem.members = {{"deleted", result.deleted}, {"last", result.last}};
    call->fail(problem);
  });
}

}  // namespace EventApps::Api
