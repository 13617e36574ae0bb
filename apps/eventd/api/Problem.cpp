#include "apps/eventd/api/Problem.h"

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>

#include "apps/common/Display.h"
#include "apps/common/EventView.h"

namespace EventApps::Api {
namespace {

using enum ProblemKind;

constexpr std::array<ProblemText, 25> kTexts = {{
    {kBadRequest, "bad-request", 400, "The request is wrong",
     "The request cannot be understood: its path, a parameter, a header or its body. The detail "
     "says which; send it otherwise."},
    {kUnauthorized, "unauthorized", 401, "Who is asking is not known",
     "Nobody is known by the credentials shown, or none were shown. Send Authorization: Bearer "
     "TOKEN; eventctl token add makes tokens."},
    {kForbidden, "forbidden", 403, "The role does not allow this",
     "Who asks is known and has too low a role: read, write or admin. Use a token of the role that "
     "the detail names."},
    {kNotFound, "not-found", 404, "There is no such thing",
     "There is no event or page of that name. An event may have been deleted: by whoever consumed "
     "it, or by an age limit."},
    {kMethodNotAllowed, "method-not-allowed", 405, "This cannot be done here",
     "There is something at this path, but not with this method. The header Allow has those that "
     "there are."},
    {kNotAcceptable, "not-acceptable", 406, "The answer has none of the types accepted",
     "The header Accept takes none of the types that this is answered in. Leave it out, or take "
     "application/json."},
    {kRequestTimeout, "request-timeout", 408, "The request took too long to arrive",
     "The whole request must arrive within 30 seconds. Send it again, over a connection that is "
     "fast enough."},
    {kConflict, "conflict", 409, "The present state does not allow this",
     "The queues are in a state that does not allow this, as where a data selection that is to be "
     "removed holds events."},
    {kPayloadTooLarge, "payload-too-large", 413, "The body is too large",
     "The body has more bytes or more events than body_bytes and batch_events of eventd.ini allow. "
     "Send it in several requests."},
    {kUnsupportedMediaType, "unsupported-media-type", 415, "The body's type is not taken here",
     "Bodies are taken as application/json; events also as application/x-ndjson and text/plain. "
     "Name one in Content-Type."},
    {kExpectationFailed, "expectation-failed", 417, "What is expected cannot be done",
     "The header Expect asks for something else than 100-continue. Leave it out."},
    {kInvalidEvent, "invalid-event", 422, "An event cannot be stored as it is",
     "The event cannot be stored as it is, and nothing of the request was. The detail says why, "
     "index and field say where; GET /v1/limits has the fields of each kind."},
    {kIdempotencyMismatch, "idempotency-mismatch", 422, "The key belongs to another request",
     "This Idempotency-Key came with another request before. A repeated request is the same, byte "
     "for byte; another one has a key of its own."},
    {kTooManyRequests, "too-many-requests", 429, "Too many requests",
     "More requests, or more bad credentials, came than are allowed. Try again after the seconds "
     "in Retry-After."},
    {kHeadersTooLarge, "headers-too-large", 431, "The request's head is too large",
     "The request line and the headers together have more than 16 KiB."},
    {kInternalError, "internal-error", 500, "The daemon has failed",
     "The daemon failed where it should not. Its log says more."},
    {kStoreFailed, "store-failed", 500, "The store has failed",
     "The database or the cluster did not take or give what was asked for; the detail and the log "
     "say why. Of a write, ids has those that were stored; where it is missing, it is not known "
     "which were."},
    {kNotImplemented, "not-implemented", 501, "This is not known here",
     "The request uses a method or an encoding that is not known here."},
    {kUnavailable, "unavailable", 503, "The daemon does not serve at the moment",
     "The daemon cannot do this now: it starts or stops, has too much to do, or cannot reach its "
     "queues. Try again later, after the seconds in Retry-After where it is there."},
    {kTooManyWaiting, "too-many-waiting", 503, "Too many readers wait already",
     "As many readers wait as waiting of eventd.ini allows. Ask without waiting, or try again "
     "later."},
    {kNoMajority, "no-majority", 503, "The cluster has no majority",
     "Too few members of the cluster can be reached to decide anything. Try again after the "
     "seconds "
     "in Retry-After. Of a write, ids has the events that were stored; where it is missing, it is "
     "not known which were."},
    {kVersionNotSupported, "version-not-supported", 505, "This version of HTTP is not spoken",
     "HTTP/1.1 and HTTP/1.0 are spoken here."},
    {kQueueFull, "queue-full", 507, "The queue is full",
     "The queue holds as many events as count_limit of OrbCentral.ini allows, and nothing was "
     "stored. Consume or delete events, or raise the limit."},
    {kUnknownDataSelection, "unknown-data-selection", 404, "There is no such data selection",
     "No data selection has this number. PUT /v1/queues/NUMBER, or eventctl dataselection add "
     "NUMBER, makes it known."},
    {kDiskFull, "disk-full", 507, "The disk is full",
     "The disk of the database has no room for this. Make some there, or delete events: room is "
     "kept back for that. Of a write, ids has the events that were stored; where it is missing, it "
     "is not known which were."},
}};

const ProblemText& textOf(ProblemKind kind) {
  return kTexts[static_cast<std::size_t>(kind)];
}

constexpr bool areInOrder() {
  for (std::size_t i = 0; i < kTexts.size(); ++i) {
    if (static_cast<std::size_t>(kTexts[i].kind) != i) return false;
  }
  return true;
}
static_assert(areInOrder());

}  // namespace

std::span<const ProblemText> problemTexts() {
  return kTexts;
}

std::string quotedStart(std::string_view sent) {
  constexpr std::size_t kColumns = 60;
  return "\"" + displayStart(sent, kColumns) + "\"";
}

unsigned Problem::status() const {
  return textOf(kind).status;
}

Http::Response responseTo(const Problem& problem, const std::string& instance) {
  const ProblemText& text = textOf(problem.kind);
  nlohmann::ordered_json object = {{"type", std::string("/problems/") + text.name},
                                   {"title", text.title},
                                   {"status", text.status},
                                   {"detail", problem.detail}};
  if (!instance.empty()) object["instance"] = instance;
  for (const auto& [name, value] : problem.members.items()) object[name] = value;
  return {text.status, "application/problem+json", jsonLine(object) + "\n", problem.headers};
}

Problem problemOfStatus(unsigned status, std::string detail) {
  const auto found = std::find_if(kTexts.begin(), kTexts.end(),
                                  [&](const ProblemText& text) { return text.status == status; });
  const ProblemKind other = status < 500 ? kBadRequest : kInternalError;
  return {.kind = found == kTexts.end() ? other : found->kind, .detail = std::move(detail)};
}

}  // namespace EventApps::Api
