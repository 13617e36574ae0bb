#include "apps/eventd/queue/CheckTask.h"

#include <chrono>
#include <exception>
#include <memory>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include "EventSystem/platform/HostLog.h"
#include "host/logging/LogObserver.h"

namespace EventApps {
namespace {

using EventSystemHost::LogLevel;

// The warnings and errors of this thread while it lives: what others log is none of its findings.
class ThreadLog {
 public:
  std::vector<LogLine> take() { return std::exchange(m_lines, {}); }

 private:
  void note(LogLevel level, int code, std::string_view message) {
    if (std::this_thread::get_id() != m_thread) return;
    m_lines.push_back(
        {level == LogLevel::kError ? "error" : "warning", code, std::string(message)});
  }

  const std::thread::id m_thread = std::this_thread::get_id();
  std::vector<LogLine> m_lines;
  const EventSystemHost::LogObserver m_observer{
      [this](LogLevel level, int code, std::string_view message) { note(level, code, message); }};
};

// What cannot be read for another reason is left to the check itself.
bool looksSound() {
  try {
    ThreadLog log;
    return areRowsSound() && log.take().empty();
  } catch (const std::exception&) {
    return false;
  }
}

}  // namespace

CheckTask::CheckTask(Core& core, bool fix, bool isSound, Done done)
    : m_core(core), m_fix(fix), m_isSound(isSound), m_done(std::move(done)) {}

bool CheckTask::step() {
  if (m_isSound) {
    InfoA(0, "eventd: a check has read every event and found nothing");
    m_result.report.fix = m_fix;
    m_result.report.clustered = m_core.library.isClustered();
  } else {
    check();
  }
  answer();
  return true;
}

void CheckTask::check() {
  ThreadLog log;
  m_result.report = QueueCheck(
                        m_core.library.queues(), [&log] { return log.take(); }, m_fix)
                        .run();
  if (m_result.report.result != 0) {
    m_result.problem =
        "the check ended early (result " + std::to_string(m_result.report.result) + ")";
  }
  m_core.library.wrote();
  m_core.library.discoverAll();
  if (m_fix) m_core.figures.readAnew();
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
    if (self->m_fix && !self->m_isSound) self->m_core.audience.forgetKeptEvents();
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

void Checks::check(Core& core, bool fix, CheckTask::Done done) {
  const std::lock_guard lock(m_mutex);
  auto& waiting = m_waiting.at(fix ? 1 : 0);
  waiting.push_back(std::move(done));
  if (waiting.size() == 1) core.walker.post([this, &core, fix] { begin(core, fix); });
}

void Checks::begin(Core& core, bool fix) {
  std::vector<CheckTask::Done> asked;
  {
    const std::lock_guard lock(m_mutex);
    asked.swap(m_waiting.at(fix ? 1 : 0));
  }
  core.run(std::make_shared<CheckTask>(core, fix, looksSound(),
                                       [asked = std::move(asked)](const CheckResult& result) {
                                         for (const CheckTask::Done& done : asked) done(result);
                                       }));
}

}  // namespace EventApps
