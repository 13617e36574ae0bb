// `eventctl check`: looks for damage in the queues, repairs it, and shows what was found.

#include <memory>
#include <nlohmann/json.hpp>
#include <string>

#include "apps/common/Display.h"
#include "apps/common/EventView.h"
#include "apps/common/Failure.h"
#include "apps/common/Output.h"
#include "apps/common/QueueCheck.h"
#include "apps/common/Table.h"
#include "apps/eventctl/Commands.h"
#include "apps/eventctl/DaemonAddress.h"
#include "apps/eventctl/DaemonQueues.h"
#include "apps/eventctl/ExitStatus.h"
#include "apps/eventctl/LogCapture.h"
#include "apps/eventctl/Session.h"

namespace EventApps {
namespace {

using EventSystemHost::Access;

class Check {
 public:
  Check(const GlobalOptions& global, bool fix) : m_global(global), m_fix(fix) {}

  int run() {
    if (const auto daemon = findDaemon(m_global)) {
      m_report = DaemonQueues(*daemon).check(m_fix);
    } else {
      checkDirectly();
    }
    print();
    if (m_report.result != 0) {
      throw Failure("the check ended early (result " + std::to_string(m_report.result) + ")");
    }
    return m_report.remaining == 0 ? kDone : kFailed;
  }

 private:
  void checkDirectly() {
    auto options = hostOptions(m_global, Access::kReadWrite);
    options.logFile = m_log.file();
    options.logLevel = EventSystemHost::LogLevel::kWarning;
    {
      const auto host = openHost(options, m_global.wait);
      HostQueues queues(*host);
      m_report = QueueCheck(
                     queues, [this] { return m_log.take(); }, m_fix)
                     .run();
    }
    for (const LogLine& line : m_log.take()) m_report.findings.push_back(line);  // of its end
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
    nlohmann::ordered_json object = jsonOf(m_report);
    if (const std::string damage = damageMet(); !damage.empty()) object["damage"] = damage;
    standardOutput().line(jsonLine(object));
  }

  void printText() const {
    constexpr std::size_t kIndent = 2;
    Output& output = standardOutput();
    for (const LogLine& line : m_report.findings) {
      const std::string level =
          styled(output, line.level == "error" ? Style::kRed : Style::kBold, line.level);
      output.line(level + " " + std::to_string(line.code));
      for (const std::string& part :
           wrapToWidth(displayText(line.message), output.columns() - kIndent)) {
        output.line(std::string(kIndent, ' ') + part);
      }
    }
    if (m_report.clustered) {
      output.line(
          "The queues are at the cluster service and need no check. Of the database, their");
      output.line("fall-back copy:");
    }
    output.line(verdict());
  }

  std::string verdict() const {
    if (!damageMet().empty()) return "The database is damaged, and cannot be repaired here.";
    if (m_report.remaining > 0) {
      const char* const advice =
          m_report.clustered
              ? "; with cluster_mode = 0, eventctl check --fix repairs what can be repaired."
          : m_fix ? "."
                  : "; eventctl check --fix repairs what can be repaired.";
      return std::to_string(m_report.remaining) + " found and not repaired" + advice;
    }
    return m_report.findings.empty() ? "No problems found." : "Repaired; no problems remain.";
  }

  const GlobalOptions& m_global;
  bool m_fix;
  LogCapture m_log;
  CheckReport m_report;
};

}  // namespace

void defineCheck(Command parent) {
  Command command = parent.add(
      "check", "look for damage in the queues and repair it",
      "check --fix\n\n"
      "Opening the queues for writing, which every check does, already files events\n"
      "under the right id again. --fix also removes rows whose event string cannot be\n"
      "read, and prints them. What is found is printed instead of logged. Status 1 when\n"
      "a problem remains. A database that is itself damaged cannot be repaired here.\n\n"
      "In cluster mode the queues at the service need no check, and --fix changes\n"
      "nothing there; what is said is about the database, their fall-back copy.");
  const auto fix = std::make_shared<bool>(false);
  command.flag("--fix", "repair what can be repaired", *fix);
  command.runs([&global = command.global(), fix] { return Check(global, *fix).run(); });
}

}  // namespace EventApps
