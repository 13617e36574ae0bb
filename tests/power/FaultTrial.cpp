#include "tests/power/FaultTrial.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <set>
#include <utility>

#include "tests/power/Days.h"

namespace EventSystemTest {

namespace {

// What a host has logged.
class LogFile {
 public:
  explicit LogFile(const std::filesystem::path& home) : m_file(home / "log" / "eventsystem.log") {}

  std::string text() const {
    std::ifstream input(m_file, std::ios::binary);
    return {std::istreambuf_iterator<char>(input), std::istreambuf_iterator<char>()};
  }

  // Whether there are lines since it was asked last.
  bool hasGrown() {
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(m_file, error);
    if (error || size == m_seen) return false;
    m_seen = size;
    return true;
  }

 private:
  const std::filesystem::path m_file;
  std::uintmax_t m_seen = 0;
};

// Looks at what each call returns.
class Witness {
 public:
  Witness(Service& service, FaultDisk& disk, LogFile& log, FaultFigures& figures, bool passes)
      : m_service(service), m_disk(disk), m_log(log), m_figures(figures), m_passes(passes) {
    service.returned = [this](const char* call, int result) { returned(call, result); };
    // A store whose start failed does nothing, and says so in the trace alone.
    service.deletionSucceeded = [this] { return !(m_grown = m_log.hasGrown()) && !m_needsRestart; };
  }

  const std::string& problem() const { return m_problem; }

 private:
  void returned(const std::string& call, int result) {
    const std::size_t failed = m_disk.failed();
    const bool met = failed != m_failedBefore;
    m_failedBefore = failed;
    const bool logged = m_log.hasGrown() || std::exchange(m_grown, false);
    if (call == "start") {
      m_needsRestart = met;
      if (result != 0) startRefused();
      return;
    }
    if (result == 0) return;
    ++m_figures.refusedCalls;
    if (failed == 0) fail(call + " failed before the disk did");
    const bool quiet = call == "waitDurable" || (call == "deleteEvent" && m_needsRestart);
    if (!logged && !quiet) fail(call + " failed without a line in the log");
    const bool known = call == "newEvent" || call == "getNextEvent" ? result == 4 : result > 0;
    if (!known) fail(call + " returned " + std::to_string(result));
    if (!met && call == "newEvent") refusedLate();
  }

  void startRefused() {
    ++m_figures.refusedStarts;
    if (m_service.problem().find("/") == std::string::npos) fail("a refused start names no file");
  }

  // A start that met the fault may have left a store unusable; a file that could not be read, or
  // has lost calls that had returned, takes no writes. Each is until the next start.
  void refusedLate() {
    ++m_figures.lateEvents;
    const bool stays = m_needsRestart || !m_service.host().damage().empty() ||
                       m_log.text().find("restart the program") != std::string::npos;
    if (m_passes && !stays) fail("newEvent fails though the fault is over");
  }

  void fail(const std::string& problem) {
    if (m_problem.empty()) m_problem = problem;
  }

  Service& m_service;
  FaultDisk& m_disk;
  LogFile& m_log;
  FaultFigures& m_figures;
  const bool m_passes;
  bool m_needsRestart = false;
  std::size_t m_failedBefore = 0;
  bool m_grown = false;
  std::string m_problem;
};

// What is found when the disk is well again, against the ledger of the day.
class Account {
 public:
  Account(const Ledger& ledger, const Rows& rows, bool flushMayLose, FaultFigures& figures)
      : m_ledger(ledger), m_rows(rows), m_flushMayLose(flushMayLose), m_figures(figures) {
    for (std::size_t i = 0; i < ledger.steps.size(); ++i) {
      const Step& step = ledger.steps[i];
      Life& life = m_lives[{step.table, step.id}];
      const bool refused = step.text && step.end == kNever && life.added && !life.removed;
      if (refused) continue;  // the row that is there kept it out
      if (step.text) {
        life = {i, std::nullopt};
      } else {
        life.removed = i;
      }
    }
  }

  std::string check() {
    for (const auto& [key, life] : m_lives) checkRow(key.first, key.second, life);
    for (const auto& [table, rows] : m_rows) {
      for (const auto& [id, text] : rows) checkKnown(table, id, text);
    }
    checkIdsGrow();
    return m_problem;
  }

  // Audit rows that are neither waiting nor in the queue must be in the log.
  std::string checkAudit(const std::vector<std::string>& waiting, const std::string& log) {
    for (const AuditRow& row : m_ledger.auditRows) {
      const auto queued = std::count_if(m_ledger.steps.begin(), m_ledger.steps.end(),
                                        [&](const Step& step) { return isOf(step.text, row); }) +
                          storedUnseen(row);
      const auto waits = std::count(waiting.begin(), waiting.end(), row.content);
      if (queued + waits > 1) ++m_figures.auditTwice;
      if (queued + waits > 0 || row.end == kNever) continue;
      if (log.find(row.content) == std::string::npos) fail("an audit row is lost: " + row.content);
      ++m_figures.auditLogged;
    }
    return m_problem;
  }

 private:
  struct Life {
    std::optional<std::size_t> added;
    std::optional<std::size_t> removed;
  };

  static bool isOf(const std::optional<std::string>& text, const AuditRow& row) {
    return text && text->find(row.content) != std::string::npos;
  }

  const std::string* find(const std::string& table, unsigned long id) const {
    const auto rows = m_rows.find(table);
    if (rows == m_rows.end()) return nullptr;
    const auto row = rows->second.find(id);
    return row == rows->second.end() ? nullptr : &row->second;
  }

  // Rows of an import that no consumer has asked for.
  std::ptrdiff_t storedUnseen(const AuditRow& row) const {
    const auto events = m_rows.find("events");
    if (events == m_rows.end()) return 0;
    return std::count_if(events->second.begin(), events->second.end(), [&](const auto& stored) {
      return isOf(stored.second, row) && !m_lives.contains({"events", stored.first});
    });
  }

  void checkRow(const std::string& table, unsigned long id, const Life& life) {
    if (!life.added) return;
    const Step& added = m_ledger.steps[*life.added];
    const std::string name = table + " " + std::to_string(id);
    const std::string* const found = find(table, id);
    const bool same = found != nullptr && *found == *added.text;
    const bool acknowledged = added.end != kNever;
    if (!acknowledged) {
      if (same) ++m_figures.storedAnyway;
      return;
    }
    if (found != nullptr && !same) fail(name + " is garbled: " + *found);
    if (life.removed) {
      const bool gone = m_ledger.steps[*life.removed].end != kNever;
      if (gone && found != nullptr) lost(*life.removed, name + " was deleted and is there");
      return;
    }
    ++m_figures.acknowledged;
    if (found == nullptr) lost(*life.added, name + " is lost");
  }

  bool mayBeLost(std::size_t step) const {
    return m_flushMayLose &&
           std::none_of(m_ledger.marks.begin(), m_ledger.marks.end(), [&](const DurableMark& mark) {
             return mark.first <= step && step < mark.steps;
           });
  }

  void lost(std::size_t step, const std::string& problem) {
    if (mayBeLost(step)) {
      ++m_figures.lostWithFlush;
    } else {
      fail(problem);
    }
  }

  // Each row is a call's, under the id that this call was given, or an audit row.
  void checkKnown(const std::string& table, unsigned long id, const std::string& text) {
    const bool given =
        std::any_of(m_ledger.steps.begin(), m_ledger.steps.end(), [&](const Step& step) {
          return step.table == table && step.id == id && step.text == text;
        });
    if (given) return;
    const bool audit = std::any_of(m_ledger.auditRows.begin(), m_ledger.auditRows.end(),
                                   [&](const AuditRow& row) { return isOf(text, row); });
    if (!audit) fail(table + " " + std::to_string(id) + " was never written: " + text);
  }

  void checkIdsGrow() {
    std::map<std::string, unsigned long> highest;
    for (std::size_t i = 0; i < m_ledger.steps.size(); ++i) {
      const Step& step = m_ledger.steps[i];
      if (!step.text || step.end == kNever || step.table == "dataselection") continue;
      if (mayBeLost(i)) continue;  // its id may be given again
      if (step.id <= highest[step.table]) {
        fail(step.table + ": id " + std::to_string(step.id) + " after " +
             std::to_string(highest[step.table]));
      }
      highest[step.table] = step.id;
    }
  }

  void fail(const std::string& problem) {
    if (m_problem.empty()) m_problem = problem;
  }

  const Ledger& m_ledger;
  const Rows& m_rows;
  const bool m_flushMayLose;
  FaultFigures& m_figures;
  std::map<std::pair<std::string, unsigned long>, Life> m_lives;
  std::string m_problem;
};

constexpr std::size_t kNone = 1000000000;

}  // namespace

FaultTrial::FaultTrial(std::string durability, Day day)
    : m_durability(std::move(durability)), m_day(std::move(day)), m_root(TempDir::inMemory()) {}

std::filesystem::path FaultTrial::freshHome() const {
  std::filesystem::path home = m_root.path() / "home";
  std::filesystem::remove_all(home);
  std::filesystem::create_directories(home / "audit");
  configureHome(home, m_durability, "warning");
  return home;
}

std::size_t FaultTrial::calls(const Fault& fault) {
  FaultDisk disk;
  Ledger ledger;
  Service service(freshHome(), ledger, [] { return std::size_t{0}; });
  service.auditDisk = "unix";
  disk.arm(fault, kNone, Lasting::kOnce);
  m_day(service);
  return disk.counted();
}

std::string FaultTrial::run(const Fault& fault, std::size_t n, Lasting lasting) {
  FaultFigures& figures = m_figures[fault.name];
  ++figures.days;
  const std::filesystem::path home = freshHome();
  FaultDisk disk;
  Ledger ledger;
  LogFile log(home);
  std::string problem;
  {
    Service service(home, ledger, [] { return std::size_t{0}; });
    service.auditDisk = "unix";
    service.diskIsWell = [&disk] { return disk.failed() == 0; };
    const Witness witness(service, disk, log, figures, lasting == Lasting::kOnce);
    disk.arm(fault, n, lasting);
    m_day(service);
    problem = witness.problem();
  }
  figures.faults += disk.failed();
  disk.lift();
  const std::string logged = log.text();
  const Reboot after = reboot(home, [] { return std::size_t{0}; });
  const bool flushMayLose = m_durability != "strict" && fault.effect == FaultEffect::kLosesWrites;
  Account account(ledger, after.stored.rows, flushMayLose, figures);
  if (problem.empty()) problem = after.problem;
  if (problem.empty()) problem = account.check();
  if (problem.empty()) problem = account.checkAudit(after.auditRows, logged);
  return problem;
}

}  // namespace EventSystemTest
