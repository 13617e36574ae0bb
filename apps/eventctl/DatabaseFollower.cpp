#include "apps/eventctl/DatabaseFollower.h"

#include <chrono>
#include <utility>

#include "apps/common/DatabaseQueueReader.h"
#include "apps/common/FileSignature.h"
#include "apps/common/Output.h"
#include "apps/eventctl/DirectQueues.h"

namespace EventApps {

using EventSystemHost::Access;

DatabaseFollower::DatabaseFollower(const GlobalOptions& global, const StopSignals& stop,
                                   Consumer& consumer,
                                   const EventSystemHost::HostConfiguration& configuration)
    : m_global(global),
      m_stop(stop),
      m_consumer(consumer),
      m_auditFile(configuration.auditDirectory / "audit.db"),
      m_auditBefore(fileSignature(m_auditFile)),
      m_watch(configuration.databaseFile, m_auditFile) {}

void DatabaseFollower::run(OpenHost host) {
  while (host && drainRound(std::move(host)) && waitForMore()) host = openForRound();
}

bool DatabaseFollower::drainRound(OpenHost host) {
  DirectQueues queues(std::move(host));
  queues.requireQueue(m_global.dsid);
  m_consumer.drain(queues, [this] { return m_stop.arrived(); });
  m_leftOver = DatabaseQueueReader().highestRowId(m_global.dsid);
  return !m_consumer.finished() && !m_stop.arrived() && damageMet().empty();
}

// Waits for as long as another process has the database. Null when a stop is asked for meanwhile.
// What an audit service may have changed is judged by the state before the round, whose own import
// changes the file once more at most.
OpenHost DatabaseFollower::openForRound() {
  m_auditBefore = fileSignature(m_auditFile);
  try {
    return openHost(hostOptions(m_global, Access::kReadWrite), std::chrono::hours(24 * 365),
                    [this] { return m_stop.arrived(); });
  } catch (const EventSystemHost::DatabaseBusy&) {
    return nullptr;
  }
}

// Changes after forget() wake the wait, changes before it are seen by hasMore(): none is lost.
bool DatabaseFollower::waitForMore() {
  constexpr std::chrono::seconds kBound(2);
  m_watch.forget();
  while (damageMet().empty() && !hasMore()) {
    const Listener listener{m_stop.descriptor(), standardOutput().descriptor()};
    const Woken woken = m_watch.wait(listener, kBound);
    if (woken == Woken::kStopped) return false;
    if (woken == Woken::kOutputClosed) throw readerHasGone();
  }
  return damageMet().empty();
}

bool DatabaseFollower::hasMore() const {
  if (fileSignature(m_auditFile) != m_auditBefore) return true;
  const auto host = openHost(hostOptions(m_global, Access::kReadOnly), m_global.wait);
  return DatabaseQueueReader().highestRowId(m_global.dsid) > m_leftOver;
}

}  // namespace EventApps
