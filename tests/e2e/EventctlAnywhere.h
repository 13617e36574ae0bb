// A home whose queues eventctl opens itself in one round of a test, and reaches through eventd in
// the other: what a command does and prints is the same.
//
// Thread safety: none; used by the thread of the test.

#ifndef EVENTSYSTEM_TESTS_E2E_EVENTCTLANYWHERE_H
#define EVENTSYSTEM_TESTS_E2E_EVENTCTLANYWHERE_H

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "tests/e2e/EventctlHome.h"
#include "tests/e2e/Program.h"

namespace EventSystemTest {

enum class Where { kDirect, kDaemon };

class EventctlAnywhere : public EventctlHome, public ::testing::WithParamInterface<Where> {
 protected:
  EventctlAnywhere() = default;
  ~EventctlAnywhere() override;

  // The daemon is started by the first command, so that a test can configure it before.
  Arguments at(Arguments arguments) const override;

 private:
  void serve() const;

  mutable std::unique_ptr<Program> m_daemon;
};

inline std::string nameOfWhere(const ::testing::TestParamInfo<Where>& where) {
  return where.param == Where::kDirect ? "Direct" : "Daemon";
}

// Runs the tests of a suite in both ways.
#define EVENTCTL_ANYWHERE(Suite) \
  INSTANTIATE_TEST_SUITE_P(, Suite, ::testing::Values(Where::kDirect, Where::kDaemon), nameOfWhere)

}  // namespace EventSystemTest

#endif
