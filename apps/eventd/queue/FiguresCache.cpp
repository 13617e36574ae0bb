#include "apps/eventd/queue/FiguresCache.h"

#include <algorithm>
#include <exception>
#include <string>
#include <utility>

#include "EventSystem/ResultCode.h"
#include "apps/common/Failure.h"
#include "apps/common/HostQueues.h"

namespace EventApps {

FiguresCache::FiguresCache(EventSystemHost::Host& host, const ServiceLimits& limits, Worker& walker,
                           Flusher& flusher, std::function<void(Job)> onQueueThread)
    : m_host(host),
      m_limits(limits),
      m_walker(walker),
      m_flusher(flusher),
      m_onQueueThread(std::move(onQueueThread)),
      m_reader(readerOf(host)) {}

void FiguresCache::added(unsigned int queue, const EventView& event) {
  Change change{queue, {}, false};
  change.event.id = event.id;
  change.event.type = event.type;
  change.event.date = event.date;
  note(change);
}

void FiguresCache::removed(unsigned int queue, unsigned long id, int type) {
  Change change{queue, {}, true};
  change.event.id = id;
  change.event.type = type;
  note(change);
}

void FiguresCache::note(const Change& change) {
  if (isClustered()) return;
  const std::lock_guard lock(m_mutex);
  if (m_walking) m_since.push_back(change);
  apply(m_current.queues, change);
}

// Ids grow: what is not above the highest one was counted when that was, be it that a walk has met
// a row before the event was noted.
void FiguresCache::apply(Figures& figures, const Change& change) {
  QueueFigures& queue = figures[change.queue];
  const bool isCounted = change.event.id <= queue.highestId;
  if (change.isRemoval && isCounted) queue.remove(change.event.type);
  if (!change.isRemoval && !isCounted) queue.add(change.event);
}

void FiguresCache::readAnew() {
  noteChange();
  const std::lock_guard lock(m_mutex);
  m_readAnew = true;
}

bool FiguresCache::isDue() const {
  if (m_readAnew) return true;
  return Clock::now() >= m_nextWalk && (isClustered() || m_readAt != m_changes);
}

void FiguresCache::get(Done done) {
  const std::lock_guard lock(m_mutex);
  if (!m_walking && !isDue()) return tell({std::move(done)});
  m_waiting.push_back(std::move(done));
  if (std::exchange(m_walking, true)) return;
  m_readAnew = false;
  m_walkBegan = m_changes;
  if (isClustered()) {
    m_walker.post([this] { walk([this] { return readFigures(*m_reader); }); });
  } else {
    m_onQueueThread([this] { beginWalk(); });
  }
}

// On the queue thread: what has changed until now is in the walk, and what changes later is not.
void FiguresCache::beginWalk() {
  {
    const std::lock_guard lock(m_mutex);
    m_since.clear();
    m_walkBegan = m_changes;
  }
  try {
    const auto reading = std::make_shared<FiguresReading>(*m_reader);
    m_walker.post([this, reading] { walk([reading] { return reading->finish(); }); });
  } catch (const std::exception& problem) {
    walked({{}, {}, problem.what(), codeOf(problem)}, Clock::now());
  }
}

void FiguresCache::walk(const std::function<Figures()>& count) {
  const Clock::time_point begin = Clock::now();
  FiguresSnapshot found;
  try {
    found.queues = count();
    found.selections = dataSelections();
    requireNoDamage(m_host);
  } catch (const std::exception& problem) {
    found = {{}, {}, problem.what(), codeOf(problem)};
  }
  walked(std::move(found), begin);
}

void FiguresCache::walked(FiguresSnapshot found, Clock::time_point begin) {
  const Clock::time_point end = Clock::now();
  const auto share = std::chrono::duration_cast<Clock::duration>(
      std::chrono::duration<double>(end - begin) / m_limits.figuresShare);
  const std::lock_guard lock(m_mutex);
  const bool worked = found.problem.empty();
  if (worked) {
    for (const Change& change : m_since) apply(found.queues, change);
  }
  m_since.clear();
  m_current = std::move(found);
  m_readAt = worked ? m_walkBegan : 0;
  m_nextWalk = std::max<Clock::time_point>(begin + share, end + m_limits.figuresAge);
  if (!worked) m_nextWalk = std::min<Clock::time_point>(m_nextWalk, end + m_limits.figuresRetry);
  m_walking = false;
  tell(std::exchange(m_waiting, {}));
}

// What has been counted is told when it survives power loss.
void FiguresCache::tell(std::vector<Done> waiting) {
  if (!isClustered()) m_current.time = std::chrono::system_clock::now();
  const auto figures = std::make_shared<FiguresSnapshot>(m_current);
  m_flusher.whenDurable([figures, waiting = std::move(waiting)](int status) {
    if (status != 0 && figures->problem.empty()) {
      *figures = {{},
                  {},
                  "a flush failed (status " + std::to_string(status) + "); the log says why",
                  EventSystem::kStoreFailure};
    }
    for (const Done& done : waiting) done(figures);
  });
}

}  // namespace EventApps
