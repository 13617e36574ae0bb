#include "apps/eventd/access/AccessControl.h"

#include <strings.h>
#include <unistd.h>

#include <cmath>

#include "EventSystem/platform/HostLog.h"
#include "apps/eventd/api/Parameters.h"
#include "apps/eventd/api/Problem.h"

namespace EventApps {
namespace {

using Api::Problem;
using Api::ProblemKind;
using Api::Refused;

// Whoever tries tokens learns nothing by it; this keeps the log readable.
constexpr double kFailuresPerSecond = 0.5;
constexpr double kFailuresAtOnce = 10;

constexpr std::string_view kScheme = "bearer ";

std::string_view tokenIn(std::string_view authorization) {
  if (authorization.size() <= kScheme.size() ||
      ::strncasecmp(authorization.data(), kScheme.data(), kScheme.size()) != 0) {
    return {};
  }
  return authorization.substr(kScheme.size());
}

std::string whereFrom(const Http::Peer& peer) {
  if (peer.via != Http::Peer::Via::kUnix) return peer.network;
  return "user " + std::to_string(peer.uid);
}

}  // namespace

AccessControl::AccessControl(const Configuration& configuration, const TokenStore& tokens)
    : m_configuration(configuration),
      m_tokens(tokens),
      m_failures(kFailuresPerSecond, kFailuresAtOnce) {}

std::optional<Identity> AccessControl::identify(const Http::Request& request) {
  const auto authorization = Api::onlyHeader(request, "Authorization");
  return authorization ? ofToken(request, *authorization) : ofPeer(*request.peer);
}

Identity AccessControl::ofToken(const Http::Request& request, std::string_view authorization) {
  const std::string_view token = tokenIn(authorization);
  if (token.empty()) {
    refuse(*request.peer, "the header Authorization does not read \"Bearer TOKEN\"");
  }
  const auto found = m_tokens.find(token);
  if (!found) refuse(*request.peer, "the token is not known here");
  return {found->role, "token", found->name};
}

std::optional<Identity> AccessControl::ofPeer(const Http::Peer& peer) const {
  if (peer.via == Http::Peer::Via::kUnix) {
    const bool isKnown = peer.uid != static_cast<uid_t>(-1);
    const bool isAdmin = isKnown && (peer.uid == 0 || peer.uid == ::geteuid());
    const Role role = isAdmin ? Role::kAdmin : m_configuration.unixSocket.role;
    return Identity{role, "unix", isKnown ? std::to_string(peer.uid) : "unknown"};
  }
  if (peer.certificate.empty()) return std::nullopt;
  return Identity{m_configuration.tls.clientRole, "certificate", peer.certificate};
}

void AccessControl::refuse(const Http::Peer& peer, const char* why) {
  ++m_failedLogins;
  const RateLimit::Seconds wait = m_failures.take(whereFrom(peer));
  if (wait.count() > 0) {
    throw Refused(Problem{
        .kind = ProblemKind::kTooManyRequests,
        .detail = "too many attempts with credentials that are not good",
        .headers = {{"Retry-After", std::to_string(std::lround(std::ceil(wait.count())))}}});
  }
  WarningA(0, "eventd: refused credentials from %s (%s): %s", peer.address.c_str(),
           whereFrom(peer).c_str(), why);
  throw Refused(Problem{
      .kind = ProblemKind::kUnauthorized,
      .detail = std::string(why) + "; make a token with: eventctl token add NAME --role ROLE",
      .headers = {{"WWW-Authenticate", "Bearer error=\"invalid_token\""}}});
}

}  // namespace EventApps
