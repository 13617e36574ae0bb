#include "apps/eventd/queue/RemoveTask.h"

#include <utility>

#include "EventSystem/ResultCode.h"
#include "apps/common/DatabaseQueueReader.h"

namespace EventApps {

RemoveTask::RemoveTask(Core& core, unsigned int dsid, std::vector<unsigned long> ids, Done done)
    : m_core(core), m_dsid(dsid), m_ids(std::move(ids)), m_done(std::move(done)) {}

bool RemoveTask::step() {
  const Slice slice;
  while (m_next < m_ids.size()) {
    remove(m_ids[m_next++]);
    if (slice.isOver() && m_next < m_ids.size()) return false;
  }
  answer();
  return true;
}

void RemoveTask::remove(unsigned long id) {
  if (!m_core.library.has(id, m_dsid)) return;
  m_core.keys.beforeRemoval(queueOf(m_dsid), id);
  m_core.library.remove(id, m_dsid);
  if (isGlobalQueue(m_dsid)) m_core.health.worked(Health::Matter::kFullQueue);
  m_removed.emplace_back(queueOf(m_dsid), id);
  ++m_result.deleted;
  m_result.last = id;
}

void RemoveTask::fail(const std::exception& problem) {
  m_result.code = codeOf(problem);
  m_result.problem = problem.what();
  answer();
}

void RemoveTask::answer() {
  const auto self = std::static_pointer_cast<RemoveTask>(shared_from_this());
  m_core.answer(
      [self](int status) {
        RemoveUpToResult& result = self->m_result;
        self->m_core.tally.note([&](ServiceCounters& all) { all.deleted += result.deleted; });
        if (status != 0 && result.code == 0) {
          result.code = EventSystem::kStoreFailure;
          result.problem = self->m_core.flushProblem(status);
        }
        self->m_done(result);
      },
      std::move(m_removed));
}

std::vector<unsigned long> idsUpTo(EventSystemHost::Host& host, unsigned int dsid,
                                   unsigned long upTo) {
  std::vector<unsigned long> ids;
  const auto take = [&](unsigned long id) {
    if (id > upTo) return false;
    ids.push_back(id);
    return true;
  };
  if (host.cluster() == nullptr) {
    DatabaseQueueReader().forEachId(dsid, [&](unsigned int, unsigned long id) { return take(id); });
    requireNoDamage(host);
  } else {
    readerOf(host)->forEach(queueOf(dsid), 0,
                            [&](const EventView& event) { return take(event.id); });
  }
  return ids;
}

}  // namespace EventApps
