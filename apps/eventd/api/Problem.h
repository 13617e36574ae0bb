// What went wrong, as clients are told (RFC 9457): a stable name for programs, words for people.
//
// Thread safety: plain values and constant data.

#ifndef EVENTSYSTEM_APPS_EVENTD_API_PROBLEM_H
#define EVENTSYSTEM_APPS_EVENTD_API_PROBLEM_H

#include <exception>
#include <nlohmann/json.hpp>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "apps/eventd/http/Response.h"

namespace EventApps::Api {

enum class ProblemKind {
  kBadRequest,
  kUnauthorized,
  kForbidden,
  kNotFound,
  kMethodNotAllowed,
  kNotAcceptable,
  kRequestTimeout,
  kConflict,
  kPayloadTooLarge,
  kUnsupportedMediaType,
  kExpectationFailed,
  kInvalidEvent,
  kIdempotencyMismatch,
  kTooManyRequests,
  kHeadersTooLarge,
  kInternalError,
  kStoreFailed,
  kNotImplemented,
  kUnavailable,
  kTooManyWaiting,
  kNoMajority,
  kVersionNotSupported,
  kQueueFull,
  kUnknownDataSelection,
  kDiskFull
};

struct ProblemText {
  ProblemKind kind;
  const char* name;  // the end of the problem's type
  unsigned status;
  const char* title;
  const char* explanation;  // what it means, and what to do
};

// In the order of ProblemKind.
std::span<const ProblemText> problemTexts();

struct Problem {
  ProblemKind kind = ProblemKind::kInternalError;
  std::string detail;  // what was wrong, where, what to do
  nlohmann::ordered_json members = nlohmann::ordered_json::object();  // more of them
  std::vector<std::pair<std::string, std::string>> headers = {};

  unsigned status() const;
};

// As a detail repeats what a client has sent, which may be as long as the whole body: its start, in
// quotes.
std::string quotedStart(std::string_view sent);

// A problem that ends the handling of a request.
class Refused : public std::exception {
 public:
  explicit Refused(Problem problem) : m_problem(std::move(problem)) {}
  Refused(ProblemKind kind, std::string detail)
      : m_problem{.kind = kind, .detail = std::move(detail)} {}

  const char* what() const noexcept override { return m_problem.detail.c_str(); }
  const Problem& problem() const { return m_problem; }

 private:
  Problem m_problem;
};

// `instance` is the path of the request.
Http::Response responseTo(const Problem& problem, const std::string& instance);

// What the server itself refuses with a status, before a request is there.
Problem problemOfStatus(unsigned status, std::string detail);

}  // namespace EventApps::Api

#endif
