#include "tests/e2e/EventctlAnywhere.h"

#include <csignal>
#include <stdexcept>
#include <utility>

#include "tests/eventd/program/NotifySocket.h"

namespace EventSystemTest {
namespace {

constexpr int kPatience = 120000;  // milliseconds

}  // namespace

EventctlAnywhere::~EventctlAnywhere() {
  if (!m_daemon) return;
  m_daemon->signal(SIGTERM);
  const Outcome outcome = m_daemon->wait();
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(outcome.err, "");
}

Arguments EventctlAnywhere::at(Arguments arguments) const {
  if (GetParam() == Where::kDaemon && !m_daemon) serve();
  return EventctlHome::at(std::move(arguments));
}

void EventctlAnywhere::serve() const {
  std::filesystem::create_directories(home());
  NotifySocket notifications(home() / "notify");
  m_daemon = std::make_unique<Program>(
      std::vector<std::string>{"--home", home().string()},
      Surroundings{.program = EVENTD_PROGRAM,
                   .environment = {"NOTIFY_SOCKET=" + notifications.path().string()}});
  if (!notifications.next(kPatience).starts_with("READY=1\n")) {
    throw std::runtime_error("eventd does not start: " + m_daemon->wait().err);
  }
}

}  // namespace EventSystemTest
