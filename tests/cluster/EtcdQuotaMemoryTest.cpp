// Reading a quota while memory is short. The program replaces operator new, so it holds nothing
// else.

#include <gtest/gtest.h>

#include <new>

#include "host/cluster/EtcdQuota.h"
#include "tests/cluster/EtcdCluster.h"
#include "tests/fault/FailingNew.h"

namespace EventSystemTest {
namespace {

using EventSystemHost::readQuota;

TEST(EtcdQuota, IsNotToldWhereMemoryIsWantedInVain) {
  const EtcdCluster etcd(1);
  const EventSystemHost::ClusterConfiguration configuration = etcd.configuration();
  const std::string endpoint = etcd.endpoint(0);
  const std::int64_t quota = readQuota(configuration, endpoint);
  ASSERT_GT(quota, 0);
  std::size_t failed = 1;
  for (std::size_t n = 1; failed > 0; ++n) {
    std::int64_t told = 0;
    const FailingNew failing(n);
    try {
      told = readQuota(configuration, endpoint);
    } catch (const std::bad_alloc&) {
    }
    failed = failing.failed();
    const AllocationPause pause;
    EXPECT_TRUE(told == 0 || told == quota) << "allocation " << n;
  }
}

}  // namespace
}  // namespace EventSystemTest
