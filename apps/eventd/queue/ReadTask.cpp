#include "apps/eventd/queue/ReadTask.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <utility>

#include "EventSystem/ResultCode.h"
#include "apps/eventd/queue/Core.h"

namespace EventApps {

ReadTask::ReadTask(Core& core, Request request, Done done)
    : m_core(core), m_request(std::move(request)), m_done(std::move(done)) {
  m_read.seenTo = m_request.after;
}

bool ReadTask::step() {
  m_read.shown = m_core.library.highest(m_request.dsid);
  const bool atEnd = walk();
  // What the library took in meanwhile has arrived for others, too.
  if (m_walkedTo > m_read.shown) m_core.library.discover(m_request.dsid);
  if (atEnd) m_read.seenTo = std::max(m_read.seenTo, m_read.shown);
  m_read.complete = atEnd || m_read.events.size() == m_request.limit;
  if (!m_read.complete && m_request.goesOn()) return false;
  m_core.health.worked(Health::Matter::kRead);
  answer();
  return true;
}

// The slice begins with the first event: where the queue is at a cluster, many come at once, after
// a while.
bool ReadTask::walk() {
  std::optional<Slice> slice;
  return m_core.library.walk(m_request.dsid, m_read.seenTo, m_request.types,
                             [&](unsigned long id, const EventPtr& event) {
                               if (!slice) slice.emplace();
                               m_read.seenTo = id;
                               m_walkedTo = id;
                               if (event) m_read.events.push_back(event);
                               return m_read.events.size() < m_request.limit && !slice->isOver();
                             });
}

void ReadTask::fail(const std::exception& problem) {
  m_core.health.failed(Health::Matter::kRead, problem.what());
  m_read.events.clear();
  m_read.code = codeOf(problem);
  m_read.problem = problem.what();
  answer();
}

void ReadTask::answer() {
  m_core.answer([self = shared_from_this(), this](int status) {
    if (status != 0 && m_read.code == 0) {
      m_read = {
          {}, m_request.after, 0, false, EventSystem::kStoreFailure, m_core.flushProblem(status)};
    }
    m_done(std::move(m_read));
  });
}

}  // namespace EventApps
