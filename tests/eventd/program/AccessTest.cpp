// Who may do what with a running eventd.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <map>
#include <string>
#include <vector>

#include "apps/common/TokenFile.h"
#include "apps/eventd/api/Router.h"
#include "tests/eventd/http/Certificates.h"
#include "tests/eventd/program/DaemonHome.h"

namespace EventSystemTest {
namespace {

using EventApps::Role;
using EventApps::Api::Need;
using EventApps::Api::Route;
using ::testing::HasSubstr;
using ::testing::Not;

class Access : public DaemonHome {
 protected:
  Access() { write("eventd.ini", "[tcp]\nlisten = 127.0.0.1:0\n"); }

  // The path of a route with arguments that lead nowhere harmful.
  static Ask askOf(const Route& route) {
    std::string path(route.pattern);
    for (const auto& [name, value] :
         std::map<std::string, std::string>{{"{dsid}", "0"}, {"{id}", "1"}}) {
      const std::size_t at = path.find(name);
      if (at != std::string::npos) path.replace(at, name.size(), value);
    }
    return {.method = std::string(route.method), .path = path};
  }
};

bool isAllowed(Need need, std::optional<Role> role) {
  switch (need) {
    case Need::kNothing:
      return true;
    case Need::kCredentials:
    case Need::kRead:
    case Need::kMetrics:
      return role.has_value();
    case Need::kWrite:
      return role && *role >= Role::kWrite;
    case Need::kAdmin:
      return role == Role::kAdmin;
  }
  return false;
}

// Every route with every role: what is refused is refused for the role, and nothing else is.
TEST_F(Access, IsByRole) {
  const std::vector<std::pair<std::optional<Role>, std::string>> tokens = {
      {std::nullopt, ""},
      {Role::kRead, makeToken("reader", Role::kRead)},
      {Role::kWrite, makeToken("writer", Role::kWrite)},
      {Role::kAdmin, makeToken("admin", Role::kAdmin)}};
  start();
  for (const auto& [role, token] : tokens) {
    for (const Route& route : EventApps::Api::routes()) {
      if (route.pattern.ends_with("/stream")) continue;  // never ends
      Ask ask = askOf(route);
      ask.token = token;
      const Reply reply = requestTcp(ask);
      const bool isRefused = reply.status == 401 || reply.status == 403;
      EXPECT_EQ(isRefused, !isAllowed(route.need, role))
          << route.method << " " << route.pattern << " " << token << ": " << reply.status;
      if (isRefused) {
        EXPECT_EQ(reply.status, role ? 403U : 401U) << route.pattern;
        EXPECT_EQ(problemName(reply), role ? "forbidden" : "unauthorized");
      }
    }
  }
}

TEST_F(Access, ToAStreamIsByRoleToo) {
  makeToken("reader", Role::kRead);
  start();
  EXPECT_EQ(requestTcp({.path = "/v1/queues/0/events/stream"}).status, 401U);
}

TEST_F(Access, WithoutCredentialsIsToldHowToGetSome) {
  makeToken("reader", Role::kRead);
  start();
  const Reply reply = requestTcp({.path = "/v1/stats"});
  EXPECT_EQ(reply.status, 401U);
  EXPECT_EQ(reply.headers.at("www-authenticate"), "Bearer");
  EXPECT_THAT(reply.body, HasSubstr("eventctl token add"));
}

TEST_F(Access, IsNotGainedByWhatIsNoToken) {
  const std::string token = makeToken("reader", Role::kRead);
  start();
  const auto status = [this](const std::string& value) {
    const Reply reply = requestTcp({.path = "/v1/stats", .headers = {{"Authorization", value}}});
    return reply.status;
  };
  EXPECT_EQ(status("Bearer " + token), 200U);
  EXPECT_EQ(status("bearer " + token), 200U);
  for (const std::string& value :
       {"Bearer " + token + "x", std::string("Bearer"), std::string("Bearer "), token,
        "Basic " + token, "Bearer  " + token}) {
    EXPECT_EQ(status(value), 401U) << value;
  }
  EXPECT_EQ(status("Bearer " + token), 200U);
}

TEST_F(Access, ThatIsTriedTooOftenIsNotLoggedEachTimeAndLeavesOthersAlone) {
  const std::string token = makeToken("reader", Role::kRead);
  start();
  unsigned refused = 0;
  for (int i = 0; i < 40; ++i) {
    const Reply reply = requestTcp({.path = "/v1/stats", .token = "evt_secret-guess"});
    if (reply.status == 429) {
      ++refused;
      EXPECT_EQ(problemName(reply), "too-many-requests");
      EXPECT_GE(std::stoi(reply.headers.at("retry-after")), 1);
    }
  }
  EXPECT_GT(refused, 10U);
  EXPECT_EQ(requestTcp({.path = "/v1/stats", .token = token}).status, 200U);
  stop();
  EXPECT_THAT(log(), HasSubstr("warning 0 eventd: refused credentials from 127.0.0.1:"));
  EXPECT_THAT(log(), Not(HasSubstr("evt_secret-guess")));
}

TEST_F(Access, OverTheUnixSocketIsThatOfTheUser) {
  write("eventd.ini", "");
  start();
  const json me = jsonOf(get("/v1/whoami"));
  EXPECT_EQ(me["via"], "unix");
  EXPECT_EQ(me["role"], "admin");
  EXPECT_EQ(me["name"], std::to_string(::getuid()));
}

// A proxy passes on what its clients show; its own rights are not theirs.
TEST_F(Access, OverTheUnixSocketIsThatOfATokenThatIsShown) {
  const std::string token = makeToken("reader", Role::kRead);
  start();
  EXPECT_EQ(jsonOf(request({.path = "/v1/whoami", .token = token})),
            json::parse(R"({"role":"read","via":"token","name":"reader"})"));
  EXPECT_EQ(request({.path = "/v1/whoami", .token = "evt_x"}).status, 401U);
  EXPECT_EQ(request({.method = "POST", .path = "/v1/check", .token = token}).status, 403U);
}

// Neither a proxy nor a reader of the log may take another header for the one that counts.
TEST_F(Access, IsByOneHeaderAndNoOther) {
  const std::string token = makeToken("reader", Role::kRead);
  start();
  const std::pair<std::string, std::string> good = {"Authorization", "Bearer " + token};
  for (const auto& headers :
       std::vector<decltype(Ask::headers)>{{good, {"authorization", "Bearer evt_x"}},
                                           {good, good},
                                           {{"Authorization", ""}, good},
                                           {good, {"Authorization", ""}}}) {
    EXPECT_EQ(problemName(request({.path = "/v1/whoami", .headers = headers})), "bad-request");
  }
  const Ask empty = {.path = "/v1/whoami", .headers = {{"Authorization", ""}}};
  EXPECT_EQ(request(empty).status, 401U) << "not that of the user";
}

TEST_F(Access, FollowsTheFileOfTokens) {
  const std::string token = makeToken("one", Role::kRead);
  start();
  const std::string added = makeToken("two", Role::kRead);
  while (requestTcp({.path = "/v1/stats", .token = added}).status != 200) {
  }
  EventApps::TokenFile::change(home() / "eventd.tokens",
                               [](EventApps::TokenFile& tokens) { tokens.remove("one"); });
  while (requestTcp({.path = "/v1/stats", .token = token}).status == 200) {
  }
}

TEST_F(Access, StaysAsItWasWhenTheFileOfTokensIsBroken) {
  const std::string token = makeToken("one", Role::kRead);
  start();
  write("eventd.tokens", "[one]\nrole = emperor\n");
  program().signal(SIGHUP);
  while (notifications().next(120000).find("READY=1") == std::string::npos) {
  }
  EXPECT_EQ(requestTcp({.path = "/v1/stats", .token = token}).status, 200U);
  stop();
  EXPECT_THAT(log(), HasSubstr("the tokens stay as they were"));
}

TEST_F(Access, ToMetricsIsFreeOnThisMachineWhereThatIsWanted) {
  makeToken("one", Role::kRead);
  start();
  EXPECT_EQ(requestTcp({.path = "/metrics"}).status, 401U);
  stop();
  write("eventd.ini", "[tcp]\nlisten = 127.0.0.1:0\n[metrics]\npublic = 1\n");
  start();
  EXPECT_EQ(requestTcp({.path = "/metrics"}).status, 200U);
  EXPECT_EQ(requestTcp({.path = "/v1/stats"}).status, 401U);
}

TEST_F(Access, IsLimitedInRateForEachOfThem) {
  write("eventd.ini",
        "[tcp]\nlisten = 127.0.0.1:0\n[limits]\nrequests_per_second = 0.001\nburst = 3\n");
  const std::string one = makeToken("one", Role::kRead);
  const std::string two = makeToken("two", Role::kRead);
  start();
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(requestTcp({.path = "/v1/whoami", .token = one}).status, 200U);
  }
  const Reply fourth = requestTcp({.path = "/v1/whoami", .token = one});
  EXPECT_EQ(fourth.status, 429U);
  EXPECT_EQ(problemName(fourth), "too-many-requests");
  EXPECT_GT(std::stoi(fourth.headers.at("retry-after")), 100);
  EXPECT_EQ(requestTcp({.path = "/v1/whoami", .token = two}).status, 200U);
}

TEST_F(Access, IsLimitedInRateAlsoWhereItIsRefused) {
  write("eventd.ini",
        "[tcp]\nlisten = 127.0.0.1:0\n[limits]\nrequests_per_second = 0.001\nburst = 2\n");
  const std::string token = makeToken("one", Role::kRead);
  start();
  for (const unsigned status : {403U, 403U, 429U}) {
    EXPECT_EQ(requestTcp({.method = "POST", .path = "/v1/check", .token = token}).status, status);
  }
  for (const unsigned status : {401U, 404U, 429U}) {
    EXPECT_EQ(requestTcp({.method = "GET", .path = status == 404U ? "/x" : "/v1/stats"}).status,
              status);
  }
}

TEST_F(Access, ToTheSocketFileIsAsConfigured) {
  write("eventd.ini", "[unix]\nmode = 0600\npath = s.sock\n");
  start();
  struct stat status {};
  ASSERT_EQ(::stat((home() / "s.sock").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777, 0600U);
}

TEST_F(Access, IsInTheLogWithoutQueryAndToken) {
  const std::string token = makeToken("one", Role::kRead);
  write("host.ini", "[log]\nlevel = info\n");
  start();
  requestTcp({.path = "/v1/queues/0/events?limit=471", .token = token});
  stop();
  EXPECT_THAT(log(), HasSubstr(" token:one GET /v1/queues/0/events 200 "));
  EXPECT_THAT(log(), Not(HasSubstr("471")));
  EXPECT_THAT(log(), Not(HasSubstr(token)));
}

TEST_F(Access, IsInTheLogInLinesThatNobodyCanForge) {
  write("eventd.ini", "");
  write("host.ini", "[log]\nlevel = info\n");
  start();
  get("/%20200%205%20bytes%c2%9b31m");
  stop();
  EXPECT_THAT(log(), HasSubstr(" GET /%20200%205%20bytes\\u{9b}31m 404 "));
}

// A page of another server can make a browser send requests with its user's certificate.
TEST_F(Access, ByCertificateIsNotForPagesOfOtherServers) {
  const Certificates certificates;
  certificates.sign("server", "localhost", "serverAuth");
  certificates.sign("client", "somebody", "clientAuth");
  write("eventd.ini", "[tls]\nlisten = 127.0.0.1:0\ncertificate_file = " +
                          certificates.file("server.crt").string() +
                          "\nkey_file = " + certificates.file("server.key").string() +
                          "\nclient_ca_file = " + certificates.authority().string() +
                          "\nclient_role = write\n");
  const std::string token = makeToken("one", Role::kWrite);
  start();
  RawClient client(port("https"));
  ASSERT_TRUE(client.startTls(certificates.authority(), certificates.file("client.crt"),
                              certificates.file("client.key")));
  const auto post = [&](decltype(Ask::headers) headers) {
    client.send(Ask{.method = "POST",
                    .path = "/v1/queues/0/events",
                    .body = statusEvent("n1"),
                    .contentType = "application/json",
                    .headers = std::move(headers)}
                    .text());
    return client.reply();
  };
  EXPECT_EQ(post({}).status, 201U);
  EXPECT_EQ(post({{"Origin", "https://test"}}).status, 201U) << "the name that it is called by";
  const Reply refused = post({{"Origin", "https://elsewhere"}});
  EXPECT_EQ(problemName(refused), "forbidden");
}

}  // namespace
}  // namespace EventSystemTest
