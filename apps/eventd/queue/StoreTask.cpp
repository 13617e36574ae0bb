#include "apps/eventd/queue/StoreTask.h"

#include <utility>

#include "EventSystem/ResultCode.h"
#include "apps/common/EventLimits.h"
#include "apps/eventd/queue/Core.h"
#include "apps/eventd/queue/Digest.h"

namespace EventApps {

StoreTask::StoreTask(Core& core, OperationPtr operation, Events events, unsigned int dsid,
                     std::optional<IdempotencyKey> key, QueueService::Stored done)
    : m_core(core),
      m_operation(std::move(operation)),
      m_events(std::move(events)),
      m_dsid(dsid),
      m_key(std::move(key)),
      m_done(std::move(done)) {}

bool StoreTask::step() {
  if (!m_begun) {
    const Begin next = begin();
    if (next == Begin::kWait) return true;
    m_begun = true;
    if (next == Begin::kAnswer) m_next = m_events.size();
  }
  const Slice slice;
  while (m_next < m_events.size() && storeNext()) {
    if (slice.isOver() && m_next < m_events.size()) return false;
  }
  answer();
  return true;
}

StoreTask::Begin StoreTask::begin() {
  if (!m_core.selections.hasQueue(m_dsid)) {
    refuse(EventSystem::kNoDataSelection, "unknown-data-selection",
           "data selection " + std::to_string(m_dsid) + " does not exist; add it first");
    return Begin::kAnswer;
  }
  if (!m_key) return Begin::kGoOn;
  if (!m_core.keys.isSupported()) {
    refuse(EventSystem::kGeneralFailure, "key", "idempotency keys are not taken in cluster mode");
    return Begin::kAnswer;
  }
  m_request = m_core.keys.claim(*m_key, m_dsid,
                                [&core = m_core, self = shared_from_this()] { core.run(self); });
  if (m_request == nullptr) return Begin::kWait;
  if (m_request->body != digestOf(m_key->body) || m_request->rows.size() > m_events.size()) {
    m_result.keyMismatch = true;
    refuse(EventSystem::kGeneralFailure, "key-mismatch",
           "the idempotency key was used for another request; take a new one");
    return Begin::kAnswer;
  }
  m_result.ids = m_request->eventIds;
  m_next = m_first = m_result.ids.size();
  m_result.replayed = !m_events.empty() && m_next == m_events.size();
  return Begin::kGoOn;
}

// False when the rest is not stored.
bool StoreTask::storeNext() {
  EventSystem::Event& event = *m_events[m_next];
  Library& library = m_core.library;
  const unsigned long expected =
      m_request != nullptr ? library.expectedId(m_dsid) : library.likelyId(m_dsid);
  const std::string why = whyNotStorable(event, {m_dsid, expected, !library.isClustered()});
  if (!why.empty()) {
    return refuse(EventSystem::kGeneralFailure, "invalid",
                  "event " + std::to_string(m_next) + " of the request cannot be stored: " + why);
  }
  if (m_request != nullptr) m_core.keys.expect(*m_request, event, expected);
  unsigned long id = 0;
  const int code = library.store(event, m_dsid, id);
  if (code != 0) {
    notStored(code);
    return false;
  }
  m_result.ids.push_back(id);
  ++m_next;
  m_core.health.worked(Health::Matter::kStore);
  if (isGlobalQueue(m_dsid)) m_core.health.worked(Health::Matter::kFullQueue);
  if (m_request != nullptr) m_core.keys.confirm(*m_request, id);
  return true;
}

bool StoreTask::refuse(int code, const char* why, const std::string& problem) {
  m_core.tally.refused(why, m_events.size() - m_next);
  m_result.code = code;
  m_result.problem = problem;
  return false;
}

void StoreTask::notStored(int code) {
  HostQueues& queues = m_core.library.queues();
  if (code == EventSystem::kStorageLimits) {
    refuse(code, "full", m_core.library.whyFull());
    m_core.health.failed(Health::Matter::kFullQueue, m_result.problem);
  } else {
    m_result.unsettled = queues.isOpen();
    refuseForStore(queues.lacksMajority() ? kNoMajority : code,
                   whatFailed(code) + "; " + queues.whyFailed());
  }
  if (m_request != nullptr) m_core.keys.withdraw(*m_request);
}

void StoreTask::refuseForStore(int code, const std::string& problem) {
  const std::string lack = m_core.host.lackOfSpace();
  m_result.diskFull = !lack.empty();
  if (m_result.diskFull) {
    refuse(code, "disk-full", lack + "; delete events, or make room on it");
  } else {
    refuse(code, "failed", problem);
  }
  m_core.health.failed(Health::Matter::kStore, m_result.problem);
}

std::string StoreTask::whatFailed(int code) const {
  const std::string event = "event " + std::to_string(m_next) + " of the request";
  if (!m_result.unsettled) {
    return event + " could not be stored (result " + std::to_string(code) + ")";
  }
  const char* const others =
      m_events.size() == 1 ? "" : " (those before it are, those behind it are not)";
  return "whether " + event + " is stored is not known" + others;
}

void StoreTask::fail(const std::exception& problem) {
  if (m_result.code == 0) refuseForStore(codeOf(problem), problem.what());
  answer();
}

void StoreTask::answer() {
  if (m_request != nullptr) m_core.keys.tidy(2 * (m_next - m_first) + 1);
  m_core.answer([self = std::static_pointer_cast<StoreTask>(shared_from_this())](int status) {
    self->answered(status);
  });
}

void StoreTask::answered(int status) {
  if (status != 0 && !m_result.ids.empty()) {
    m_core.tally.refused("failed", m_result.ids.size());
    m_result = {.code = EventSystem::kStoreFailure,
                .ids = {},
                .problem = m_core.flushProblem(status),
                .diskFull = !m_core.host.lackOfSpace().empty(),
                .unsettled = true};
  }
  count();
  if (m_result.unsettled) m_result.ids.clear();
  m_done(std::move(m_result));
  if (m_request == nullptr) {
    m_operation.reset();
    return;
  }
  m_core.onQueueThread([self = std::static_pointer_cast<StoreTask>(shared_from_this())] {
    self->m_core.keys.release(*self->m_request);
    self->m_operation.reset();
  });
}

void StoreTask::count() const {
  m_core.tally.note([&](ServiceCounters& all) {
    for (std::size_t i = m_first; i < m_result.ids.size(); ++i) {
      ++all.written[m_events[i]->getType()];
    }
  });
}

}  // namespace EventApps
