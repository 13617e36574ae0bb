#include "apps/eventd/queue/FiguresCache.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "apps/common/Failure.h"
#include "apps/common/HostQueues.h"
#include "apps/common/QueueReader.h"

namespace EventApps {

FiguresCache::FiguresCache(EventSystemHost::Host& host, const ServiceLimits& limits, Worker& walker,
                           Worker& answers)
    : m_host(host), m_limits(limits), m_walker(walker), m_answers(answers) {}

FiguresPtr FiguresCache::latest() const {
  const std::lock_guard lock(m_mutex);
  return m_latest;
}

void FiguresCache::readAnew() {
  noteChange();
  const std::lock_guard lock(m_mutex);
  m_nextReading = {};
}

// At the cluster service others change the queues, too.
bool FiguresCache::isFresh() const {
  if (Clock::now() < m_nextReading) return true;
  return m_host.cluster() == nullptr && m_readAt == m_changes;
}

void FiguresCache::get(Done done) {
  const std::lock_guard lock(m_mutex);
  if (!m_reading && isFresh()) {
    m_answers.post([done = std::move(done), latest = m_latest] { done(latest); });
    return;
  }
  m_waiting.push_back(std::move(done));
  if (!std::exchange(m_reading, true)) m_walker.post([this] { refresh(); });
}

void FiguresCache::refresh() {
  const std::uint64_t changes = m_changes;
  const Clock::time_point begin = Clock::now();
  const FiguresPtr figures = std::make_shared<FiguresSnapshot>(read());
  const Clock::time_point end = Clock::now();
  const auto share = std::chrono::duration_cast<Clock::duration>(
      std::chrono::duration<double>(end - begin) / m_limits.figuresShare);
  const std::lock_guard lock(m_mutex);
  m_latest = figures;
  m_readAt = figures->problem.empty() ? changes : 0;
  m_nextReading = std::max<Clock::time_point>(begin + share, end + m_limits.figuresAge);
  if (!figures->problem.empty()) {
    m_nextReading = std::min<Clock::time_point>(m_nextReading, end + m_limits.figuresRetry);
  }
  m_reading = false;
  m_answers.post([figures, waiting = std::exchange(m_waiting, {})] {
    for (const Done& done : waiting) done(figures);
  });
}

// What has been counted is told when it survives power loss.
FiguresSnapshot FiguresCache::read() const {
  try {
    FiguresSnapshot found;
    found.queues = readFigures(*readerOf(m_host));
    found.selections = dataSelections();
    requireNoDamage(m_host);
    if (const int status = m_host.waitDurable(); status != 0) {
      throw Failure("a flush failed (status " + std::to_string(status) + "); the log says why");
    }
    return found;
  } catch (const std::exception& problem) {
    return {{}, {}, problem.what(), codeOf(problem)};
  }
}

}  // namespace EventApps
