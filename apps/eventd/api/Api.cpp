#include "apps/eventd/api/Api.h"

#include <cmath>
#include <exception>
#include <utility>

#include "EventSystem/platform/HostLog.h"
#include "apps/eventd/api/Handlers.h"
#include "apps/eventd/api/MediaTypes.h"
#include "apps/eventd/http/Characters.h"

namespace EventApps::Api {
namespace {

bool isGet(const Http::Request& request) {
  return request.method == "GET" || request.method == "HEAD";
}

void requireAcceptable(const Route& route, const Http::Request& request) {
  const std::string_view accept = request.header("Accept");
  if (route.produces.empty() || accepts(accept, route.produces)) return;
  throw Refused(ProblemKind::kNotAcceptable, "the header Accept is \"" + std::string(accept) +
                                                 "\", and the answer would be " +
                                                 std::string(route.produces));
}

[[noreturn]] void refuseUnknown() {
  throw Refused(Problem{.kind = ProblemKind::kUnauthorized,
                        .detail =
                            "show a token, in the header \"Authorization: Bearer TOKEN\"; one "
                            "is made with: eventctl token add NAME --role ROLE",
                        .headers = {{"WWW-Authenticate", "Bearer"}}});
}

// A browser shows its user's certificate to us for whatever page asks it to. What a page of another
// server asks for changes nothing here.
void requireOwnPage(const Http::Request& request, const std::optional<Identity>& identity) {
  if (isGet(request) || !identity || identity->via != "certificate") return;
  const std::string_view origin = request.header("Origin");
  if (origin.empty()) return;
  if (Http::equalInAnyCase(origin, "https://" + std::string(request.header("Host")))) return;
  throw Refused(ProblemKind::kForbidden,
                "a page of another server asks for this (the header Origin), with the certificate "
                "of its user; it takes a token to do so");
}

Role roleFor(Need need) {
  return need == Need::kAdmin ? Role::kAdmin : need == Need::kWrite ? Role::kWrite : Role::kRead;
}

}  // namespace

Api::Api(Services& services)
    : m_services(services),
      m_log(services.metrics),
      m_rate(services.configuration.limits.requestsPerSecond, services.configuration.limits.burst) {
}

std::optional<Http::Response> Api::admit(const Http::Request& head) {
  try {
    auto identity = identify(head);
    limitRate(head, identity);
    permit(head, std::move(identity));
    return std::nullopt;
  } catch (const Refused& refused) {
    const Problem& problem = refused.problem();
    m_log.write(head, std::nullopt, {problem.status(), 0, 0});
    return finished(responseTo(problem, head.path));
  }
}

void Api::handle(const std::shared_ptr<Http::Exchange>& exchange) {
  const auto fail = [&](const Problem& problem) {
    Call(exchange, m_log, std::nullopt, {}).fail(problem);
  };
  CallPtr call;
  try {
    Permission permission = permit(exchange->request(), identify(exchange->request()));
    const Route* const route = permission.match.route;
    call = std::make_shared<Call>(exchange, m_log, std::move(permission.identity),
                                  std::move(permission.match.arguments));
    if (route == nullptr) return showAsset(call);
    route->handler(m_services, call);
  } catch (const Refused& refused) {
    call ? call->fail(refused.problem()) : fail(refused.problem());
  } catch (const std::exception& problem) {
    ErrorA(4, "eventd: %s %s failed: %s", exchange->request().method.c_str(),
           exchange->request().path.c_str(), problem.what());
    const Problem failed{.kind = ProblemKind::kInternalError,
                         .detail = "the daemon could not do this; its log says why"};
    call ? call->fail(failed) : fail(failed);
  }
}

Http::Response Api::refuse(unsigned status, const std::string& detail) {
  m_log.writeRefusal(status, detail);
  Http::Response response = responseTo(problemOfStatus(status, detail), "");
  response.status = status;
  return finished(std::move(response));
}

// Who asks is found out before what is there is told.
std::optional<Identity> Api::identify(const Http::Request& request) {
  if (m_services.stopping) {
    throw Refused(Problem{.kind = ProblemKind::kUnavailable,
                          .detail = "the daemon is stopping",
                          .headers = {{"Retry-After", "5"}}});
  }
  return m_services.access.identify(request);
}

Api::Permission Api::permit(const Http::Request& request, std::optional<Identity> identity) const {
  Match match = findRoute(request.method, request.path);
  if (match.route == nullptr) {
    if (!isGet(request)) throw Refused(ProblemKind::kNotFound, "there is nothing at this path");
    return {std::move(match), std::move(identity)};
  }
  requireRole(*match.route, request, identity);
  requireOwnPage(request, identity);
  requireAcceptable(*match.route, request);
  return {std::move(match), std::move(identity)};
}

void Api::requireRole(const Route& route, const Http::Request& request,
                      const std::optional<Identity>& identity) const {
  if (route.need == Need::kNothing) return;
  const bool isOpen = route.need == Need::kMetrics && m_services.configuration.publicMetrics &&
                      request.peer->loopback;
  if (isOpen) return;
  if (!identity) refuseUnknown();
  const Role needed = roleFor(route.need);
  if (route.need == Need::kCredentials || identity->role >= needed) return;
  throw Refused(ProblemKind::kForbidden,
                "this takes the role " + std::string(EventApps::nameOf(needed)) + "; " +
                    identity->name + " has the role " + EventApps::nameOf(identity->role));
}

void Api::limitRate(const Http::Request& request, const std::optional<Identity>& identity) {
  const std::string key = identity ? identity->key() : "network:" + request.peer->network;
  const RateLimit::Seconds wait = m_rate.take(key);
  if (wait.count() <= 0) return;
  const auto seconds = std::lround(std::ceil(wait.count()));
  throw Refused(Problem{.kind = ProblemKind::kTooManyRequests,
                        .detail = "more requests than requests_per_second and burst allow",
                        .headers = {{"Retry-After", std::to_string(seconds)}}});
}

}  // namespace EventApps::Api
