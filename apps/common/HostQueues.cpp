#include "apps/common/HostQueues.h"

#include <string>

#include "EventSystem/ResultCode.h"
#include "EventSystem/platform/HostConfig.h"
#include "apps/common/ClusterQueueReader.h"
#include "apps/common/DatabaseQueueReader.h"
#include "apps/common/Failure.h"
#include "apps/common/QueueNames.h"

namespace EventApps {

void requireDataSelection(unsigned int dsid) {
  if (isGlobalQueue(dsid) || QMDSIDValidate(dsid) != 0) return;
  throw Failure(noSuchSelection(dsid));
}

void requireNoDamage(const EventSystemHost::Host& host) {
  const std::string damage = host.damage();
  if (!damage.empty()) throw Failure(damage);
}

int HostQueues::store(EventSystem::Event& event, unsigned int dsid, unsigned long& id) {
  const int result = m_manager.newEvent(&event, dsid);
  if (result == 0) id = isClustered() ? m_host->lastClusterCall().newId : event.getId();
  return result;
}

std::unique_ptr<EventSystem::Event> HostQueues::next(unsigned long afterId, unsigned int dsid) {
  while (true) {
    EventSystem::Event* event = nullptr;
    const int result = m_manager.getNextEvent(afterId, &event, dsid);
    std::unique_ptr<EventSystem::Event> owner(event);
    if (result == 0) return owner;
    // The cluster stores tell of an unreadable event once, when they have removed it.
    const bool removed = isClustered() && result == EventSystem::kGeneralFailure &&
                         m_host->lastClusterCall().failure.empty();
    if (removed) continue;
    fail("cannot read " + queueName(dsid) + " after event " + std::to_string(afterId) +
         " (result " + std::to_string(result) + ")");
  }
}

// The manager only logs a failure to delete, so the table is asked, or the service's last word.
void HostQueues::remove(unsigned long id, unsigned int dsid) {
  m_manager.deleteEvent(id, dsid);
  if (isClustered() ? m_host->lastClusterCall().failure.empty()
                    : !DatabaseQueueReader().has(id, dsid)) {
    return;
  }
  const std::string event = "event " + std::to_string(id);
  if (isOpen()) fail("whether " + event + " was deleted from " + queueName(dsid) + " is not known");
  fail(event + " could not be deleted from " + queueName(dsid));
}

void HostQueues::fail(const std::string& what) const {
  const std::string problem = what + "; " + whyFailed();
  if (lacksMajority()) throw NoMajority(problem);
  throw Failure(problem);
}

void HostQueues::makeDurable() {
  const int status = m_host->waitDurable();
  if (status == 0) return;
  throw Failure("the database could not be made durable (status " + std::to_string(status) +
                "): what was just done may not survive power loss; " + seeLog());
}

Destination HostQueues::destination(unsigned int dsid) const {
  // The cluster stores hand in the event string as it is, without an id.
  if (isClustered()) return {dsid, 0, false};
  return {dsid, DatabaseQueueReader().nextId(dsid), true};
}

std::string HostQueues::whyFailed() const {
  if (isClustered()) {
    const std::string reason = m_host->lastClusterCall().failure;
    return reason.empty() ? seeLog() : reason + "; " + kClusterAdvice;
  }
  const std::string lack = m_host->lackOfSpace();
  return lack.empty() ? seeLog() : lack;
}

std::string HostQueues::limitsFile() const {
  return m_host->configuration().limitsFile.string();
}

std::string HostQueues::seeLog() const {
  const auto& file = m_host->configuration().logFile;
  return file == "-" ? "the log says why" : "the log says why: " + file.string();
}

}  // namespace EventApps
