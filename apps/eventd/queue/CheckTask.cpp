#include "apps/eventd/queue/CheckTask.h"

#include <chrono>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include "host/logging/LogObserver.h"

namespace EventApps {

using EventSystemHost::LogLevel;

CheckTask::CheckTask(Core& core, bool fix, Done done)
    : m_core(core), m_fix(fix), m_done(std::move(done)) {}

bool CheckTask::step() {
  m_result.report = check();
  if (m_result.report.result != 0) {
    m_result.problem =
        "the check ended early (result " + std::to_string(m_result.report.result) + ")";
  }
  m_core.library.wrote();
  m_core.library.discoverAll();
  answer();
  return true;
}

// What other threads log meanwhile is none of its findings.
CheckReport CheckTask::check() {
  std::vector<LogLine> lines;
  const EventSystemHost::LogObserver observer([&lines, thread = std::this_thread::get_id()](
                                                  LogLevel level, int code,
                                                  std::string_view message) {
    if (std::this_thread::get_id() != thread) return;
    lines.push_back({level == LogLevel::kError ? "error" : "warning", code, std::string(message)});
  });
  return QueueCheck(
             m_core.library.queues(), [&lines] { return std::exchange(lines, {}); }, m_fix)
      .run();
}

void CheckTask::fail(const std::exception& problem) {
  m_result.problem = problem.what();
  m_result.code = codeOf(problem);
  answer();
}

void CheckTask::answer() {
  const auto self = std::static_pointer_cast<CheckTask>(shared_from_this());
  m_core.answer([self](int status) {
    if (status != 0) self->m_result.problem = self->m_core.flushProblem(status);
    // Rows may have been filed anew, or removed.
    if (self->m_fix) self->m_core.audience.forgetKeptEvents();
    if (self->m_result.problem.empty()) self->note();
    self->m_done(self->m_result);
  });
}

void CheckTask::note() const {
  m_core.tally.note([this](ServiceCounters& all) {
    all.lastCheck = {std::chrono::system_clock::now(), m_result.report.findings.size(),
                     m_result.report.remaining};
  });
}

}  // namespace EventApps
