#include "apps/eventctl/ClusterFollower.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "apps/common/Failure.h"
#include "apps/common/Output.h"
#include "apps/eventctl/DirectQueues.h"
#include "apps/eventctl/Listener.h"

namespace EventApps {
namespace {

constexpr std::chrono::milliseconds kInterval(250);
constexpr std::chrono::milliseconds kPatience(2000);  // of a look, so that a stop is soon seen

EventSystemHost::ClusterConfiguration impatient(EventSystemHost::ClusterConfiguration values) {
  values.deadline = std::min(values.deadline, kPatience);
  return values;
}

}  // namespace

ClusterFollower::ClusterFollower(const GlobalOptions& global, const StopSignals& stop,
                                 Consumer& consumer,
                                 const EventSystemHost::HostConfiguration& configuration)
    : m_global(global),
      m_stop(stop),
      m_consumer(consumer),
      m_service(impatient(configuration.cluster), configuration.clusterQueue),
      m_reader(m_service) {}

void ClusterFollower::run(OpenHost host) {
  DirectQueues queues(std::move(host));
  queues.requireQueue(m_global.dsid);
  queues.leaveDatabase(m_global);
  do {
    round(queues);
  } while (!m_consumer.finished() && !m_stop.arrived() && wait());
}

// Ids are handed out upwards, so nothing is new while the highest one stays. It goes down when the
// queue was removed or restored from a backup.
void ClusterFollower::round(WritableQueues& queues) {
  try {
    const unsigned long highest = m_reader.highestId(m_global.dsid);
    if (m_drainedTo != highest) {
      m_consumer.drain(queues, [this] { return m_stop.arrived(); });
      m_drainedTo = highest;
    }
    if (std::exchange(m_failing, false)) complain("the cluster service answers again");
  } catch (const Failure& problem) {
    tell(problem.what());
  }
}

// Once for each time that the service is away.
void ClusterFollower::tell(const std::string& failure) {
  if (!std::exchange(m_failing, true)) complain(failure + "; trying again");
}

// False when a stop is asked for.
bool ClusterFollower::wait() const {
  const Listener listener{m_stop.descriptor(), standardOutput().descriptor()};
  const Woken woken = listener.wait(-1, static_cast<int>(kInterval.count()));
  if (woken == Woken::kOutputClosed) throw readerHasGone();
  return woken != Woken::kStopped;
}

}  // namespace EventApps
