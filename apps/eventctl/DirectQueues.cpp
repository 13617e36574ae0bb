#include "apps/eventctl/DirectQueues.h"

#include <algorithm>

#include "EventSystem/ResultCode.h"
#include "EventSystem/platform/HostConfig.h"
#include "apps/common/Failure.h"
#include "apps/common/QueueFigures.h"
#include "apps/common/QueueNames.h"

namespace EventApps {

template <class Interface>
const QueueReader& HostReading<Interface>::reader() {
  if (!m_reader) m_reader = readerOf(openedHost());
  return *m_reader;
}

template <class Interface>
bool HostReading<Interface>::hasQueue(unsigned int dsid) {
  return isGlobalQueue(dsid) || QMDSIDValidate(dsid) != 0;
}

template <class Interface>
void HostReading<Interface>::forEach(unsigned int dsid, unsigned long after, const EventKind* kind,
                                     const ReadableQueues::Visitor& visit) {
  reader().forEach(dsid, after, [&](const EventView& event) {
    return (kind != nullptr && event.type != kind->number) || visit(event);
  });
}

template <class Interface>
std::optional<EventView> HostReading<Interface>::find(unsigned long id, unsigned int dsid) {
  return reader().find(id, dsid);
}

template <class Interface>
std::vector<std::pair<DataSelection, unsigned long>> HostReading<Interface>::selections() {
  std::vector<std::pair<DataSelection, unsigned long>> found;
  for (const DataSelection& selection : dataSelections()) {
    found.emplace_back(selection, countEvents(reader(), selection.id));
  }
  return found;
}

// A cluster that cannot be read is shown as it is. The limits are the database's: the cluster
// service has none.
template <class Interface>
Statistics HostReading<Interface>::statistics() {
  const auto& configuration = openedHost().configuration();
  Statistics statistics{configuration.home.string(),
                        configuration.databaseFile.string(),
                        configuration.countLimit,
                        configuration.ageLimitDays,
                        {},
                        {}};
  if (openedHost().cluster() == nullptr) {
    statistics.figures = readFigures(reader());
    return statistics;
  }
  statistics.countLimit = statistics.ageLimitDays = 0;
  auto& cluster = statistics.cluster.emplace(openedHost().cluster()->report());
  if (!cluster.failure.empty()) return statistics;
  try {
    statistics.figures = readFigures(reader());
  } catch (const Failure& problem) {
    cluster.failure = problem.what();
  }
  return statistics;
}

template <class Interface>
Woken HostReading<Interface>::waitForMore(unsigned int dsid, unsigned long after,
                                          const Listener& listener) {
  constexpr std::chrono::milliseconds kBound(2000);
  constexpr std::chrono::milliseconds kServiceInterval(250);
  const auto& configuration = openedHost().configuration();
  if (!m_watch) {
    m_watch = std::make_unique<ChangeWatch>(configuration.databaseFile,
                                            configuration.auditDirectory / "audit.db");
  }
  // A change after this wakes the wait, one before it is seen by the reader.
  m_watch->forget();
  bool hasMore = false;
  reader().forEach(dsid, after, [&](const EventView&) { return !(hasMore = true); });
  if (hasMore) return listener.look();
  return m_watch->wait(listener, configuration.clusterMode ? kServiceInterval : kBound);
}

template class HostReading<ReadableQueues>;
template class HostReading<WritableQueues>;

HostQueues& DirectQueues::queues() {
  if (!m_queues) m_queues.emplace(*m_host);
  return *m_queues;
}

Destination DirectQueues::destination(unsigned int dsid, bool) {
  return queues().destination(dsid);
}

StoreOutcome DirectQueues::store(Events events, unsigned int dsid) {
  using Refusal = StoreOutcome::Refusal;
  StoreOutcome outcome;
  for (const auto& event : events) {
    unsigned long id = 0;
    const int result = queues().store(*event, dsid, id);
    if (result == EventSystem::kStorageLimits) {
      outcome.refusal = Refusal::kFull;
      outcome.reason = "consume or delete events, or raise count_limit in " + queues().limitsFile();
      return outcome;
    }
    if (result != 0) {
      outcome.refusal = queues().isOpen() ? Refusal::kUnknown : Refusal::kFailed;
      outcome.reason = "(result " + std::to_string(result) + "); " + queues().whyFailed();
      return outcome;
    }
    outcome.ids.push_back(id);
  }
  return outcome;
}

std::optional<EventView> DirectQueues::next(unsigned long after, unsigned int dsid) {
  const auto event = queues().next(after, dsid);
  if (!event) return std::nullopt;
  return viewOf(*event, dsid);
}

// The manager is content with the service's word that it has deleted an event. Here it is looked.
bool DirectQueues::remove(unsigned long id, unsigned int dsid) {
  HostQueues& writer = queues();
  if (!reader().find(id, dsid)) return false;
  writer.remove(id, dsid);
  if (!reader().find(id, dsid)) return true;
  throw Failure("event " + std::to_string(id) + " is still in " + queueName(dsid) +
                " after it was deleted");
}

void DirectQueues::discard(unsigned long id, unsigned int dsid) {
  queues().remove(id, dsid);
}

unsigned long DirectQueues::removeUpTo(unsigned long upTo, unsigned int dsid) {
  HostQueues& writer = queues();
  std::vector<unsigned long> ids;
  reader().forEach(dsid, 0, [&](const EventView& event) {
    if (event.id <= upTo) ids.push_back(event.id);
    return event.id <= upTo;
  });
  for (const unsigned long id : ids) writer.remove(id, dsid);
  return ids.size();
}

void DirectQueues::addSelection(const DataSelection& selection) {
  addDataSelection(*m_host, selection);
}

void DirectQueues::removeSelection(unsigned int dsid) {
  removeDataSelection(*m_host, dsid);
}

void DirectQueues::makeDurable() {
  queues().makeDurable();
}

void DirectQueues::leaveDatabase(const GlobalOptions& options) {
  HostQueues& left = queues();
  forgetReader();
  m_host.reset();
  m_host = openHost(hostOptions(options, EventSystemHost::Access::kServiceOnly), options.wait);
  left.moveTo(*m_host);
}

}  // namespace EventApps
