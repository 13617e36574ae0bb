// Whom eventd takes a caller for.

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <unistd.h>

#include <string>

#include "apps/eventd/access/AccessControl.h"
#include "apps/eventd/api/Problem.h"
#include "apps/eventd/http/PeerOf.h"
#include "tests/support/TempDir.h"

namespace EventSystemTest {
namespace {

using EventApps::AccessControl;
using EventApps::Identity;
using EventApps::Role;
namespace Http = EventApps::Http;

class Caller : public ::testing::Test {
 protected:
  Caller() {
    m_configuration.tokensFile = m_directory.path() / "eventd.tokens";
    EventApps::TokenFile::change(m_configuration.tokensFile, [&](EventApps::TokenFile& tokens) {
      m_token = tokens.add("reader", Role::kRead);
    });
  }

  std::optional<Identity> identify(const Http::Peer& peer, const std::string& token = "") {
    const EventApps::TokenStore tokens(m_configuration.tokensFile);
    AccessControl access(m_configuration, tokens);
    Http::Request request;
    request.peer = &peer;
    if (!token.empty()) request.headers.emplace_back("Authorization", "Bearer " + token);
    return access.identify(request);
  }

  // Over the Unix socket.
  Identity ofUser(uid_t uid, const std::string& token = "") {
    Http::Peer peer;
    peer.uid = uid;
    return identify(peer, token).value();
  }

  static uid_t somebodyElse() { return ::geteuid() + 1000; }

  TempDir m_directory;
  EventApps::Configuration m_configuration;
  std::string m_token;
};

TEST_F(Caller, OverTheUnixSocketHasTheRoleOfTheConfiguration) {
  EXPECT_EQ(ofUser(somebodyElse()).role, Role::kWrite);
  for (const Role role : {Role::kRead, Role::kWrite, Role::kAdmin}) {
    m_configuration.unixSocket.role = role;
    const Identity who = ofUser(somebodyElse());
    EXPECT_EQ(who.role, role);
    EXPECT_EQ(who.key(), "unix:" + std::to_string(somebodyElse()));
  }
}

TEST_F(Caller, OverTheUnixSocketIsAdminAsRootAndAsTheUserOfTheDaemon) {
  m_configuration.unixSocket.role = Role::kRead;
  EXPECT_EQ(ofUser(0).role, Role::kAdmin);
  EXPECT_EQ(ofUser(::geteuid()).role, Role::kAdmin);
}

TEST_F(Caller, WhoseUserTheSystemDoesNotTellIsNobodySpecial) {
  m_configuration.unixSocket.role = Role::kRead;
  const Identity who = ofUser(static_cast<uid_t>(-1));
  EXPECT_EQ(who.role, Role::kRead);
  EXPECT_EQ(who.name, "unknown");
}

TEST_F(Caller, WhoShowsATokenIsTakenForItsOwnerWhoeverTheUserIs) {
  for (const uid_t uid : {uid_t{0}, somebodyElse()}) {
    const Identity who = ofUser(uid, m_token);
    EXPECT_EQ(who.role, Role::kRead);
    EXPECT_EQ(who.key(), "token:reader");
    EXPECT_THROW(ofUser(uid, m_token + "x"), EventApps::Api::Refused);
  }
}

TEST_F(Caller, OverTheNetworkIsKnownByTokenOrCertificateOnly) {
  Http::Peer peer;
  peer.via = Http::Peer::Via::kTls;
  peer.address = "127.0.0.1:5000";
  EXPECT_FALSE(identify(peer));
  EXPECT_EQ(identify(peer, m_token)->key(), "token:reader");
  peer.certificate = "node1";
  EXPECT_EQ(identify(peer)->key(), "certificate:node1");
  EXPECT_EQ(identify(peer)->role, Role::kRead);
  m_configuration.tls.clientRole = Role::kAdmin;
  EXPECT_EQ(identify(peer)->role, Role::kAdmin);
  EXPECT_EQ(identify(peer, m_token)->role, Role::kRead);
}

// Whoever has one address of a network of IPv6 has all of them; the next network is another's.
TEST_F(Caller, WithBadTokensIsLimitedByItsNetwork) {
  const EventApps::TokenStore tokens(m_configuration.tokensFile);
  AccessControl access(m_configuration, tokens);
  const auto statusFrom = [&](const std::string& text) {
    sockaddr_storage address{};
    auto& v6 = reinterpret_cast<sockaddr_in6&>(address);
    v6.sin6_family = AF_INET6;
    ::inet_pton(AF_INET6, text.c_str(), &v6.sin6_addr);
    const Http::Peer peer = Http::peerOf(-1, address);
    Http::Request request;
    request.peer = &peer;
    request.headers.emplace_back("Authorization", "Bearer evt_wrong");
    try {
      access.identify(request);
    } catch (const EventApps::Api::Refused& refused) {
      return refused.problem().status();
    }
    return 200u;
  };
  unsigned last = 0;
  for (int i = 1; i <= 20; ++i) last = statusFrom("2001:db8:0:1::" + std::to_string(i));
  EXPECT_EQ(last, 429u);
  EXPECT_EQ(statusFrom("2001:db8:0:2::1"), 401u);
}

}  // namespace
}  // namespace EventSystemTest
