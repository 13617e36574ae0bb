// All public operations from 16 threads at once in cluster mode, at a real etcd server.

#include <gmock/gmock.h>

#include "tests/cluster/EtcdCluster.h"
#include "tests/threads/ThreadsRound.h"

namespace EventSystemTest {
namespace {

TEST(AllOperationsInClusterMode, KeepEveryEvent) {
  const EtcdCluster etcd(1);
  const Ledger ledger = runThreads(clusterPlan(1, 0, etcd.endpoint(0)));
  EXPECT_THAT(ledger.failures, testing::IsEmpty());
  EXPECT_GT(ledger.counts.at("acknowledged events"), 100u);
}

}  // namespace
}  // namespace EventSystemTest
