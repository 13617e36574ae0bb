#include "apps/eventd/api/Problem.h"

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>

#include "apps/common/Display.h"
#include "apps/common/EventView.h"

namespace EventApps::Api {
namespace {

using enum ProblemKind;

constexpr std::array<ProblemText, 24> kTexts = {{
    {kBadRequest, "bad-request", 400, "The request is wrong"},
    {kUnauthorized, "unauthorized", 401, "Who is asking is not known"},
    {kForbidden, "forbidden", 403, "The role does not allow this"},
    {kNotFound, "not-found", 404, "There is no such thing"},
    {kMethodNotAllowed, "method-not-allowed", 405, "This cannot be done here"},
    {kNotAcceptable, "not-acceptable", 406, "The answer has none of the types accepted"},
    {kRequestTimeout, "request-timeout", 408, "The request took too long to arrive"},
    {kConflict, "conflict", 409, "The present state does not allow this"},
    {kPayloadTooLarge, "payload-too-large", 413, "The body is too large"},
    {kUnsupportedMediaType, "unsupported-media-type", 415, "The body's type is not taken here"},
    {kExpectationFailed, "expectation-failed", 417, "What is expected cannot be done"},
    {kInvalidEvent, "invalid-event", 422, "An event cannot be stored as it is"},
    {kIdempotencyMismatch, "idempotency-mismatch", 422, "The key belongs to another request"},
    {kTooManyRequests, "too-many-requests", 429, "Too many requests"},
    {kHeadersTooLarge, "headers-too-large", 431, "The request's head is too large"},
    {kInternalError, "internal-error", 500, "The daemon has failed"},
    {kStoreFailed, "store-failed", 500, "The store has failed"},
    {kNotImplemented, "not-implemented", 501, "This is not known here"},
    {kUnavailable, "unavailable", 503, "The daemon does not serve at the moment"},
    {kTooManyWaiting, "too-many-waiting", 503, "Too many readers wait already"},
    {kNoMajority, "no-majority", 503, "The cluster has no majority"},
    {kVersionNotSupported, "version-not-supported", 505, "This version of HTTP is not spoken"},
    {kQueueFull, "queue-full", 507, "The queue is full"},
    {kUnknownDataSelection, "unknown-data-selection", 404, "There is no such data selection"},
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
