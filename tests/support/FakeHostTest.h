// The fixture of tests that use the fake host: a fresh host before each test, and after it the
// proof that nothing the library took from the host is still held.
//
// Thread safety: as FakeHost.

#ifndef EVENTSYSTEM_TESTS_SUPPORT_FAKEHOSTTEST_H
#define EVENTSYSTEM_TESTS_SUPPORT_FAKEHOSTTEST_H

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/FakeHost.h"

namespace EventSystemTest {

class FakeHostTest : public ::testing::Test {
 protected:
  void SetUp() override { host().reset(); }

  void TearDown() override {
    EXPECT_EQ(0, host().liveHandles()) << "a table handle was not released";
    EXPECT_EQ(0, host().heldConfigurationLocks()) << "the configuration mutex is still held";
  }
};

}  // namespace EventSystemTest

#endif
