#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <thread>
#include <vector>

#include "tests/cluster/EtcdCluster.h"
#include "tests/cluster/Eventually.h"
#include "tests/cluster/LogCapture.h"
#include "tests/cluster/QueueReader.h"
#include "tests/cluster/TestThread.h"

namespace EventSystemTest {
namespace {

using EventSystemHost::ClusterClient;
using EventSystemHost::ClusterConfiguration;
using testing::AllOf;
using testing::HasSubstr;

// etcd makes each password cost a tenth of a second otherwise.
constexpr char kCheapPasswords[] = "--bcrypt-cost=4";

std::string startFailure(const ClusterConfiguration& configuration) {
  try {
    const ClusterClient client(configuration);
  } catch (const std::runtime_error& failure) {
    return failure.what();
  }
  return "";
}

class ClusterAuthentication : public testing::Test {
 protected:
  ClusterAuthentication() {
    addUser("root", "root");
    etcd.etcdctl({"role", "add", "eventsystem"});
    etcd.etcdctl(
        {"role", "grant-permission", "eventsystem", "--prefix=true", "readwrite", "/eventsystem/"});
    addUser("server", "eventsystem");
    etcd.etcdctl({"role", "add", "nothing"});
    addUser("guest", "nothing");
  }

  void addUser(const std::string& name, const std::string& role) {
    etcd.etcdctl({"user", "add", name + ":password of " + name});
    if (role == "root") etcd.etcdctl({"role", "add", role});
    etcd.etcdctl({"user", "grant-role", name, role});
  }

  void enable() { etcd.etcdctl({"auth", "enable"}); }

  // A restart alone is not sure to: etcd may read the log-in once more from its journal.
  void forgetTokens() {
    etcd.etcdctl({"--user=root:password of root", "auth", "disable"});
    enable();
  }

  ClusterConfiguration as(const std::string& user) const {
    ClusterConfiguration configuration = etcd.configuration();
    configuration.user = user;
    configuration.password = "password of " + user;
    return configuration;
  }

  EtcdCluster etcd{EtcdOptions{1, {kCheapPasswords}, nullptr}};
};

TEST_F(ClusterAuthentication, LetsTheRightUserWork) {
  enable();
  ClusterClient client(as("server"));
  EXPECT_EQ(store(client, "event"), 1u);
  EXPECT_EQ(store(client, "copy", 5), 5u);
  EXPECT_EQ(eventAfter(client, 0).text, "event");
  EXPECT_EQ(client.deleteEventById("events", 1, 0), 0u);
  const auto report = client.report();
  EXPECT_EQ(report.failure, "");
  EXPECT_EQ(report.members.at(0).name, "node0");
}

TEST_F(ClusterAuthentication, SaysThatAPasswordIsWrong) {
  enable();
  ClusterConfiguration configuration = as("server");
  configuration.password = "guess";
  EXPECT_THAT(startFailure(configuration),
              AllOf(HasSubstr("etcd user \"server\" cannot log in"),
                    HasSubstr("invalid user ID or password"), HasSubstr(etcd.endpoint(0)),
                    testing::Not(HasSubstr("guess"))));
}

TEST_F(ClusterAuthentication, SaysThatAUserIsMissing) {
  enable();
  EXPECT_THAT(startFailure(etcd.configuration()), HasSubstr("user name is empty"));
}

TEST_F(ClusterAuthentication, SaysThatAUserMayNotDoThis) {
  enable();
  EXPECT_THAT(startFailure(as("guest")), HasSubstr("permission denied"));
}

TEST_F(ClusterAuthentication, LogsInAgainWhenEtcdHasForgottenTheToken) {
  enable();
  ClusterClient client(as("server"));
  for (unsigned long id = 1; id <= 3; ++id) {
    ASSERT_EQ(store(client, "event"), id);
    etcd.kill(0);
    etcd.start(0);
    etcd.waitUntilServing(as("server"));
  }
  EXPECT_EQ(eventAfter(client, 2).id, 3u);
}

TEST_F(ClusterAuthentication, LogsInAgainForSeveralThreadsAtOnce) {
  enable();
  ClusterClient client(as("server"));
  std::array<std::atomic<unsigned long>, 4> reads{};
  std::vector<std::jthread> threads;
  for (auto& count : reads) {
    threads.push_back(testThread([&](const std::stop_token& stop) {
      for (; !stop.stop_requested(); ++count) eventAfter(client, 0);
    }));
  }
  const auto allReadMore = [&] {
    return std::all_of(reads.begin(), reads.end(), [](const auto& count) {
      const unsigned long goal = count + 10;
      return eventually([&] { return count >= goal; });
    });
  };
  ASSERT_TRUE(allReadMore());
  forgetTokens();
  EXPECT_TRUE(allReadMore()) << "a thread reads no more since etcd has forgotten the token";
}

TEST_F(ClusterAuthentication, MayBeEnabledWhileTheServiceRuns) {
  clearLog();
  ClusterClient client(as("server"));
  EXPECT_THAT(logged(), HasSubstr("authentication is not enabled"));
  EXPECT_EQ(store(client, "event"), 1u);
  enable();
  EXPECT_EQ(store(client, "event"), 2u);
  EXPECT_EQ(eventAfter(client, 1).id, 2u);
}

// A token that lives for a second runs out while nothing is sent.
TEST(ClusterToken, IsReplacedWhenItHasRunOut) {
  EtcdCluster etcd({1, {"--auth-token-ttl=1", kCheapPasswords}, nullptr});
  etcd.etcdctl({"user", "add", "root:secret"});
  etcd.etcdctl({"role", "add", "root"});
  etcd.etcdctl({"user", "grant-role", "root", "root"});
  etcd.etcdctl({"auth", "enable"});
  ClusterConfiguration configuration = etcd.configuration();
  configuration.user = "root";
  configuration.password = "secret";
  ClusterClient client(configuration);
  ASSERT_EQ(store(client, "event"), 1u);
  unsigned long trips = 0;
  for (auto rest = std::chrono::milliseconds(1000); trips <= 1 && rest < std::chrono::seconds(20);
       rest *= 2) {
    std::this_thread::sleep_for(rest);
    const unsigned long before = client.roundTrips();
    ASSERT_NE(store(client, "event"), 0u);
    trips = client.roundTrips() - before;
  }
  EXPECT_GT(trips, 1u) << "the token did not run out";
}

}  // namespace
}  // namespace EventSystemTest
