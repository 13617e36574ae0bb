// `eventctl check`: looks for damage in the queues, repairs it, and shows what was found.

#include <algorithm>
#include <cstdio>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "EventSystem/platform/HostConfig.h"
#include "apps/eventctl/CommandError.h"
#include "apps/eventctl/Commands.h"
#include "apps/eventctl/DatabaseQueueReader.h"
#include "apps/eventctl/Display.h"
#include "apps/eventctl/EventView.h"
#include "apps/eventctl/LogCapture.h"
#include "apps/eventctl/Output.h"
#include "apps/eventctl/Session.h"

namespace EventCtl {
namespace {

using EventSystemHost::Access;

// The manager's summary of a check, or 0 for any other line.
int countOfSummary(const LogLine& line) {
  int count = 0;
  const bool isSummary =
      line.message.find(" issues were found that were unable to be fixed for ") !=
      std::string::npos;
  return isSummary && std::sscanf(line.message.c_str(), "%d", &count) == 1 ? count : 0;
}

class Check {
 public:
  Check(const GlobalOptions& global, bool fix) : m_global(global), m_fix(fix) {}

  int run() {
    auto options = hostOptions(m_global, Access::kReadWrite);
    options.logFile = m_log.file();
    options.logLevel = EventSystemHost::LogLevel::kWarning;
    {
      QueueSession session(openHost(options, m_global.wait));
      m_clustered = session.isClustered();
      if (m_fix) repair(session);
      note(m_log.take());
      inspect(session);
      session.makeDurable();
    }
    note(m_log.take());
    print();
    return m_remaining == 0 ? kDone : kFailed;
  }

 private:
  // Reading an event string that cannot be read removes its row; a check alone only counts it.
  void repair(QueueSession& session) {
    require(session.manager().checkConsistency(true));
    if (m_clustered) return;
    std::set<unsigned int> queues = {0};
    DatabaseQueueReader().forEachOfDataSelections([&](const EventView& event) {
      if (QMDSIDValidate(event.dsid) != 0) queues.insert(event.dsid);
      return true;
    });
    for (const unsigned int dsid : queues) {
      unsigned long after = 0;
      while (const auto event = session.next(after, dsid)) after = event->getId();
    }
  }

  void inspect(QueueSession& session) {
    require(session.manager().checkConsistency(false));
    const std::vector<LogLine> unreadable = readEverything();
    const auto lines = m_log.take();
    for (const LogLine& line : lines) m_remaining += countOfSummary(line);
    note(lines);
    // The check of the cluster stores is not about the database.
    if (!m_clustered) return;
    m_remaining += static_cast<int>(unreadable.size());
    note(unreadable);
  }

  // The manager reads no more of the tables than it needs; damage shows where something is read.
  // What is wrong with single rows is returned.
  static std::vector<LogLine> readEverything() {
    const DatabaseQueueReader reader;
    std::vector<LogLine> found;
    const auto look = [&](const EventView& event) {
      if (event.problem.empty()) return true;
      found.push_back({"error", 4,
                       "event " + std::to_string(event.id) + " in the database's rows of " +
                           queueName(event.dsid) + ": " + event.problem});
      return true;
    };
    reader.forEach(0, 0, look);
    reader.forEachOfDataSelections(look);
    for (const DataSelection& selection : dataSelections()) reader.highestId(selection.id);
    reader.highestId(0);
    return found;
  }

  void require(int result) {
    if (result == 0) return;
    note(m_log.take());
    print();
    throw CommandError("the check ended early (result " + std::to_string(result) + ")");
  }

  // A problem that stays is logged by every check.
  void note(const std::vector<LogLine>& lines) {
    for (const LogLine& line : lines) {
      if (countOfSummary(line) > 0) continue;
      if (std::find(m_findings.begin(), m_findings.end(), line) == m_findings.end()) {
        m_findings.push_back(line);
      }
    }
  }

  void print() const {
    if (m_global.json) {
      printJson();
    } else {
      printText();
    }
    standardOutput().flush();
  }

  void printJson() const {
    auto findings = nlohmann::ordered_json::array();
    for (const LogLine& line : m_findings) {
      findings.push_back({{"level", line.level}, {"code", line.code}, {"message", line.message}});
    }
    nlohmann::ordered_json object = {
        {"fix", m_fix}, {"findings", findings}, {"remaining", m_remaining}};
    if (m_clustered) object["checked"] = "database";
    if (const std::string damage = damageMet(); !damage.empty()) object["damage"] = damage;
    standardOutput().line(jsonLine(object));
  }

  void printText() const {
    constexpr std::size_t kIndent = 2;
    Output& output = standardOutput();
    for (const LogLine& line : m_findings) {
      const std::string level =
          styled(output, line.level == "error" ? Style::kRed : Style::kBold, line.level);
      output.line(level + " " + std::to_string(line.code));
      for (const std::string& part :
           wrapToWidth(displayText(line.message), output.columns() - kIndent)) {
        output.line(std::string(kIndent, ' ') + part);
      }
    }
    if (m_clustered) {
      output.line(
          "The queues are at the cluster service and need no check. Of the database, their");
      output.line("fall-back copy:");
    }
    output.line(verdict());
  }

  std::string verdict() const {
    if (!damageMet().empty()) return "The database is damaged, and cannot be repaired here.";
    if (m_remaining > 0) {
      const char* const advice =
          m_clustered
              ? "; with cluster_mode = 0, eventctl check --fix repairs what can be repaired."
          : m_fix ? "."
                  : "; eventctl check --fix repairs what can be repaired.";
      return std::to_string(m_remaining) + " found and not repaired" + advice;
    }
    return m_findings.empty() ? "No problems found." : "Repaired; no problems remain.";
  }

  const GlobalOptions& m_global;
  bool m_fix;
  LogCapture m_log;
  std::vector<LogLine> m_findings;
  int m_remaining = 0;
  bool m_clustered = false;
};

}  // namespace

void defineCheck(CLI::App& app, CommandLine& line) {
  CLI::App* const command = defineCommand(
      app, "check", "look for damage in the queues and repair it",
      "check --fix\n\n"
      "Opening the queues for writing, which every check does, already files events\n"
      "under the right id again. --fix also removes rows whose event string cannot be\n"
      "read, and prints them. What is found is printed instead of logged. Status 1 when\n"
      "a problem remains. A database that is itself damaged cannot be repaired here.\n\n"
      "In cluster mode the queues at the service need no check, and --fix changes\n"
      "nothing there; what is said is about the database, their fall-back copy.");
  const auto fix = std::make_shared<bool>(false);
  command->add_flag("--fix", *fix, "repair what can be repaired");
  command->callback(
      [&line, fix] { line.run = [&line, fix] { return Check(line.global, *fix).run(); }; });
}

}  // namespace EventCtl
