#include <gtest/gtest.h>

#include <chrono>
#include <nlohmann/json.hpp>
#include <optional>
#include <sstream>

#include "tests/cluster/EtcdCluster.h"
#include "tests/cluster/Eventually.h"
#include "tests/cluster/QueueReader.h"

namespace EventSystemTest {
namespace {

using EventSystemHost::ClusterClient;
using EventSystemHost::ClusterConfiguration;
using nlohmann::json;

constexpr std::chrono::seconds kTtl{3};
constexpr std::chrono::seconds kMore{2};  // etcd is in no hurry to end a lease

class ClusterLease : public testing::Test {
 protected:
  static ClusterConfiguration shortLived(ClusterConfiguration configuration) {
    configuration.leaseTtl = kTtl;
    return configuration;
  }

  json ask(std::vector<std::string> question) const {
    question.insert(question.end(), {"-w", "json"});
    return json::parse(etcd.etcdctl(question));
  }

  // The lease of the token of the only producer; 0 when there is no token.
  std::int64_t tokensLease() const {
    const json found = ask({"get", "--prefix", "/eventsystem/events/0000000000/last/"});
    return found.contains("kvs") ? found["kvs"].at(0).value("lease", std::int64_t{0}) : 0;
  }

  // In whole seconds; -1 when the lease is gone.
  long remaining(std::int64_t lease) const {
    std::ostringstream hexadecimal;
    hexadecimal << std::hex << lease;
    return ask({"lease", "timetolive", hexadecimal.str()})["ttl"].get<long>();
  }

  EtcdCluster etcd{1};
};

TEST_F(ClusterLease, IsRenewedForAsLongAsTheClientLives) {
  std::optional<ClusterClient> client(shortLived(etcd.configuration()));
  ASSERT_EQ(store(*client, "event"), 1u);
  const std::int64_t lease = tokensLease();
  ASSERT_NE(lease, 0);
  const auto end = std::chrono::steady_clock::now() + kTtl + kMore;
  EXPECT_TRUE(
      eventually([&] { return std::chrono::steady_clock::now() > end || remaining(lease) < 0; }));
  EXPECT_GE(remaining(lease), 1) << "no more is left of it than if nobody had renewed it";
  EXPECT_EQ(tokensLease(), lease) << "the token did not outlive the first term of its lease";
  client.reset();
  EXPECT_EQ(tokensLease(), 0) << "the token outlived its client";
}

}  // namespace
}  // namespace EventSystemTest
