// Who is asking, and what they may do.
//
// Thread safety: any thread.

#ifndef EVENTSYSTEM_APPS_EVENTD_ACCESS_ACCESSCONTROL_H
#define EVENTSYSTEM_APPS_EVENTD_ACCESS_ACCESSCONTROL_H

#include <atomic>
#include <cstdint>
#include <optional>
#include <string>

#include "apps/common/Role.h"
#include "apps/eventd/Configuration.h"
#include "apps/eventd/access/RateLimit.h"
#include "apps/eventd/access/TokenStore.h"
#include "apps/eventd/http/Request.h"

namespace EventApps {

struct Identity {
  Role role = Role::kRead;
  std::string via;   // "unix", "token" or "certificate"
  std::string name;  // the user, the token's or the certificate's name

  // Distinguishes it from every other one: "token:dashboard".
  std::string key() const { return via + ":" + name; }
};

class AccessControl {
 public:
  // Both outlive it.
  AccessControl(const Configuration& configuration, const TokenStore& tokens);

  // Nothing for somebody who shows no credentials. A token that is shown decides, whatever else is
  // known of the sender. Throws Api::Refused for credentials that are not good, and then when
  // somebody tries too many of them; logs those without the credentials.
  std::optional<Identity> identify(const Http::Request& request);

  std::uint64_t failedLogins() const { return m_failedLogins; }

 private:
  Identity ofToken(const Http::Request& request, std::string_view authorization);
  std::optional<Identity> ofPeer(const Http::Peer& peer) const;
  [[noreturn]] void refuse(const Http::Peer& peer, const char* why);

  const Configuration& m_configuration;
  const TokenStore& m_tokens;
  RateLimit m_failures;
  std::atomic<std::uint64_t> m_failedLogins{0};
};

}  // namespace EventApps

#endif
