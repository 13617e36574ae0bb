#include "apps/eventctl/DaemonFollower.h"

#include <utility>

#include "apps/common/Output.h"

namespace EventApps {
namespace {

constexpr int kPauseMilliseconds = 250;

}  // namespace

DaemonFollower::DaemonFollower(const GlobalOptions& global, const StopSignals& stop,
                               Consumer& consumer, const DaemonAddress& address)
    : m_global(global),
      m_stop(stop),
      m_consumer(consumer),
      m_queues(address),
      m_listener{stop.descriptor(), standardOutput().descriptor()} {}

void DaemonFollower::run() {
  m_queues.requireQueue(m_global.dsid);
  do {
    round();
  } while (!m_consumer.finished() && !m_stop.arrived() && waitForMore());
}

void DaemonFollower::round() {
  try {
    m_consumer.drain(m_queues, [this] { return m_stop.arrived(); });
    if (std::exchange(m_failing, false)) complain("the daemon answers again");
  } catch (const NoAnswer& problem) {
    tell(problem.what());
  } catch (const DaemonProblem& problem) {
    if (!problem.isPassing()) throw;
    tell(problem.what());
  }
}

// Once for each time that the daemon is away.
void DaemonFollower::tell(const std::string& failure) {
  if (!std::exchange(m_failing, true)) complain(failure + "; trying again");
}

// False when a stop is asked for.
bool DaemonFollower::waitForMore() {
  Woken woken = Woken::kMaybeMore;
  try {
    woken = m_failing ? m_listener.wait(-1, kPauseMilliseconds)
                      : m_queues.waitForMore(m_global.dsid, m_consumer.after(), m_listener);
  } catch (const NoAnswer& problem) {
    tell(problem.what());
  } catch (const DaemonProblem& problem) {
    if (!problem.isPassing()) throw;
    tell(problem.what());
  }
  if (woken == Woken::kOutputClosed) throw readerHasGone();
  return woken != Woken::kStopped;
}

}  // namespace EventApps
