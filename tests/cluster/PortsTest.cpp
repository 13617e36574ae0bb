#include <gtest/gtest.h>

#include <set>

#include "apps/etcd_nodes/Ports.h"

namespace EventSystemTest {
namespace {

TEST(Ports, AreDifferentAndNoneThatAnotherHasClaimed) {
  std::set<unsigned short> numbers;
  {
    const auto ports = EtcdNodes::freePorts(6);
    for (const auto& port : ports) {
      EXPECT_TRUE(numbers.insert(port.number).second);
      EXPECT_LT(EtcdNodes::claimPort(port.number).get(), 0) << "it could be claimed twice";
    }
  }
  for (const unsigned short number : numbers) {
    EXPECT_GE(EtcdNodes::claimPort(number).get(), 0) << "its claim has outlived its server";
  }
}

}  // namespace
}  // namespace EventSystemTest
