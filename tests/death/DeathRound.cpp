#include "tests/death/DeathRound.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>

#include <chrono>
#include <fstream>
#include <utility>

#include "tests/death/StoredFiles.h"
#include "tests/death/Worker.h"
#include "tests/support/ForkedProcess.h"

namespace EventSystemTest {
namespace {

using Kind = Message::Kind;
using End = LifePlan::End;

// Waits without sleeping: a sleep would be longer than most of the delays.
void spin(std::chrono::microseconds delay) {
  const auto end = std::chrono::steady_clock::now() + delay;
  while (std::chrono::steady_clock::now() < end) continue;
}

bool isStep(Kind kind) {
  return kind == Kind::kWillAdd || kind == Kind::kAdded || kind == Kind::kWillDelete ||
         kind == Kind::kDeleted;
}

std::string endText(int status) {
  if (WIFSIGNALED(status)) return "by signal " + std::to_string(WTERMSIG(status));
  return "with status " + std::to_string(WEXITSTATUS(status));
}

}  // namespace

DeathRound::DeathRound(std::uint64_t seed, std::uint64_t round)
    : m_plan(planRound(seed, round)),
      m_directory(TempDir::inMemory()),
      m_home(m_directory.path() / "home"),
      m_audit(m_home / "audit" / "audit.db"),
      m_random(seed, ~round) {
  std::filesystem::create_directory(m_home);
  std::ofstream(m_home / "host.ini")
      << "[log]\nlevel = warning\n[database]\ndurability = " << m_plan.durability << "\n";
}

bool DeathRound::run() {
  for (const LifePlan& plan : m_plan.lives) {
    ++m_life;
    try {
      live(plan);
    } catch (const std::exception& problem) {
      fail(plan, problem.what());
    }
    if (!m_failures.empty()) return false;
  }
  return true;
}

void DeathRound::live(const LifePlan& plan) {
  m_stage = Stage::kBorn;
  m_steps = 0;
  m_killed = false;
  for (unsigned int i = 0; i < plan.auditRowsBefore; ++i) m_ledger.addAuditRow(m_audit.add());
  int status = 0;
  {
    ForkedProcess process([&](int output) { runWorker(m_home, plan, output); });
    watch(plan, process);
    status = process.wait();
  }
  judgeEnd(plan, status);
  m_ledger.endLife(readStoredFiles(m_home), m_stage == Stage::kQueueClosed);
  for (const std::string& what : m_ledger.failures()) fail(plan, what);
  readLog(plan);
}

// Reads to the end what the worker tells, also what it told before it was killed.
void DeathRound::watch(const LifePlan& plan, ForkedProcess& process) {
  MessageReader reader(process);
  while (const std::optional<Message> message = reader.next()) {
    if (message->kind == Kind::kStage) m_stage = static_cast<Stage>(message->number);
    if (isStep(message->kind)) ++m_steps;
    m_ledger.take(*message);
    if (!m_killed) afterMessage(plan, *message, process);
  }
}

void DeathRound::afterMessage(const LifePlan& plan, const Message& message,
                              const ForkedProcess& process) {
  const bool stageReached =
      plan.end == End::kAfterStage && message.kind == Kind::kStage && m_stage == plan.stage;
  const bool stepsDone = plan.end == End::kAfterMessage && m_steps == plan.steps;
  if (stageReached || stepsDone) {
    spin(plan.delay);
    process.kill();
    m_killed = true;
  } else if (plan.auditRowsMeanwhile && message.kind == Kind::kAdded && m_random.oneIn(16)) {
    m_ledger.addAuditRow(m_audit.add());
  }
}

void DeathRound::judgeEnd(const LifePlan& plan, int status) {
  const bool mayDie =
      m_killed || plan.end == End::kDuringFileCall || plan.end == End::kAfterCpuTime;
  const bool died = WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
  const bool closed = WIFEXITED(status) && WEXITSTATUS(status) == 0;
  if (died && mayDie) {
    ++m_deaths[m_stage];
    if (plan.end == End::kDuringFileCall) ++m_fileCallDeaths;
  } else if (!closed) {
    fail(plan, "the worker ended " + endText(status));
  }
}

// Nothing that happens here is worth a warning: whatever is in the log speaks of damage.
void DeathRound::readLog(const LifePlan& plan) {
  std::ifstream log(m_home / "log" / "eventsystem.log");
  std::string line;
  for (std::uint64_t number = 0; std::getline(log, line); ++number) {
    if (number < m_logLines) continue;
    ++m_logLines;
    fail(plan, "the log: " + line);
  }
}

void DeathRound::fail(const LifePlan& plan, const std::string& what) {
  m_failures.push_back("life " + std::to_string(m_life) + ", " + m_plan.durability + ", " +
                       plan.text() + ": " + what);
}

std::vector<std::pair<std::string, std::uint64_t>> DeathRound::figures() const {
  const auto deaths = [&](std::initializer_list<Stage> stages) {
    std::uint64_t sum = 0;
    for (const Stage stage : stages) {
      const auto found = m_deaths.find(stage);
      if (found != m_deaths.end()) sum += found->second;
    }
    return sum;
  };
  const Ledger::Tally& tally = m_ledger.tally();
  return {{"rounds", 1},
          {"deaths while the host opens", deaths({Stage::kBorn})},
          {"deaths during repair and import", deaths({Stage::kHostOpen})},
          {"deaths at work", deaths({Stage::kQueueOpen, Stage::kWorking})},
          {"deaths during close", deaths({Stage::kClosing, Stage::kQueueClosed})},
          {"of these in a chosen file call", m_fileCallDeaths},
          {"acknowledged events", tally.acknowledgedEvents},
          {"acknowledged deletions", tally.acknowledgedDeletions},
          {"calls under way at a death", tally.unknownEvents + tally.unknownDeletions},
          {"audit records", tally.auditRows},
          {"audit records queued again", tally.auditCopies},
          {"events lost, doubled or changed", m_failures.size()}};
}

}  // namespace EventSystemTest
