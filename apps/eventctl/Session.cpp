#include "apps/eventctl/Session.h"

#include <string>
#include <thread>
#include <utility>

#include "EventSystem/ResultCode.h"
#include "EventSystem/platform/HostConfig.h"
#include "apps/eventctl/ClusterQueueReader.h"
#include "apps/eventctl/CommandError.h"
#include "apps/eventctl/DatabaseQueueReader.h"

namespace EventCtl {

using EventSystemHost::Access;
using EventSystemHost::Host;
using EventSystemHost::HostOptions;

namespace {

// One host lives at a time.
struct DamageRecord {
  Host* open = nullptr;
  std::string met;

  void update() {
    if (open != nullptr && met.empty()) met = open->damage();
  }
};

DamageRecord& damageRecord() {
  static DamageRecord record;
  return record;
}

}  // namespace

void HostCloser::operator()(Host* host) const {
  damageRecord().update();
  damageRecord().open = nullptr;
  delete host;
}

std::string damageMet() {
  damageRecord().update();
  return damageRecord().met;
}

HostOptions hostOptions(const GlobalOptions& options, Access access) {
  HostOptions host;
  host.home = options.home;
  host.access = access;
  host.logLevel = options.logLevel;
  if (options.verbose) host.logFile = "-";
  // A reader shows what is wrong with a row itself; its log would be standard error.
  const bool quiet = access == Access::kReadOnly && !options.verbose && !options.logLevel;
  if (quiet) host.logLevel = EventSystemHost::LogLevel::kOff;
  return host;
}

OpenHost openHost(const HostOptions& options, std::chrono::milliseconds wait,
                  const StopAsked& stop) {
  constexpr std::chrono::milliseconds kPause(20);
  const auto end = std::chrono::steady_clock::now() + wait;
  while (true) {
    try {
      OpenHost host(std::make_unique<Host>(options).release());
      damageRecord().open = host.get();
      return host;
    } catch (const EventSystemHost::DatabaseBusy&) {
      if (std::chrono::steady_clock::now() >= end || (stop && stop())) throw;
    }
    std::this_thread::sleep_for(kPause);
  }
}

void requireDataSelection(unsigned int dsid) {
  if (isGlobalQueue(dsid) || QMDSIDValidate(dsid) != 0) return;
  const std::string number = std::to_string(dsid);
  throw CommandError("data selection " + number +
                     " does not exist in the dataselection table; add it with: "
                     "eventctl dataselection add " +
                     number);
}

std::string queueName(unsigned int dsid) {
  if (isGlobalQueue(dsid)) return "the global queue";
  return "the queue of data selection " + std::to_string(dsid);
}

QueueSession::QueueSession(OpenHost host) : m_host(std::move(host)) {}

QueueSession::QueueSession(const GlobalOptions& options)
    : QueueSession(openHost(hostOptions(options, Access::kReadWrite), options.wait)) {
  requireDataSelection(options.dsid);
}

void QueueSession::leaveDatabase(const GlobalOptions& options) {
  m_host.reset();
  m_host = openHost(hostOptions(options, Access::kServiceOnly), options.wait);
}

int QueueSession::store(EventSystem::Event& event, unsigned int dsid, unsigned long& id) {
  const int result = m_manager.newEvent(&event, dsid);
  if (result == 0) id = isClustered() ? m_host->lastClusterCall().newId : event.getId();
  return result;
}

std::unique_ptr<EventSystem::Event> QueueSession::next(unsigned long afterId, unsigned int dsid) {
  while (true) {
    EventSystem::Event* event = nullptr;
    const int result = m_manager.getNextEvent(afterId, &event, dsid);
    std::unique_ptr<EventSystem::Event> owner(event);
    if (result == 0) return owner;
    // The cluster stores tell of an unreadable event once, when they have removed it.
    const bool removed = isClustered() && result == EventSystem::kGeneralFailure &&
                         m_host->lastClusterCall().failure.empty();
    if (removed) continue;
    throw CommandError("cannot read " + queueName(dsid) + " after event " +
                       std::to_string(afterId) + " (result " + std::to_string(result) + "); " +
                       whyFailed());
  }
}

// The manager only logs a failure to delete, so the table is asked, or the service's last word.
void QueueSession::remove(unsigned long id, unsigned int dsid) {
  m_manager.deleteEvent(id, dsid);
  if (isClustered() ? m_host->lastClusterCall().failure.empty()
                    : !DatabaseQueueReader().find(id, dsid)) {
    return;
  }
  throw CommandError("event " + std::to_string(id) + " could not be deleted from " +
                     queueName(dsid) + "; " + whyFailed());
}

void QueueSession::makeDurable() {
  const int status = m_host->waitDurable();
  if (status == 0) return;
  throw CommandError("the database could not be made durable (status " + std::to_string(status) +
                     "): what was just done may not survive power loss; " + seeLog());
}

Destination QueueSession::destination(unsigned int dsid) const {
  // The cluster stores hand in the event string as it is, without an id.
  if (isClustered()) return {dsid, 0, false};
  return {dsid, DatabaseQueueReader().highestId(dsid) + 1, true};
}

std::string QueueSession::whyFailed() const {
  const std::string reason = isClustered() ? m_host->lastClusterCall().failure : "";
  return reason.empty() ? seeLog() : reason + "; " + kClusterAdvice;
}

std::string QueueSession::limitsFile() const {
  return m_host->configuration().limitsFile.string();
}

std::string QueueSession::seeLog() const {
  const auto& file = m_host->configuration().logFile;
  return file == "-" ? "the log says why" : "the log says why: " + file.string();
}

}  // namespace EventCtl
