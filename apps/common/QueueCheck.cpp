#include "apps/common/QueueCheck.h"

#include <algorithm>
#include <cstdio>
#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <utility>

#include "EventSystem/platform/HostConfig.h"
#include "apps/common/DataSelections.h"
#include "apps/common/DatabaseQueueReader.h"
#include "apps/common/EventView.h"
#include "apps/common/QueueNames.h"

namespace EventApps {
namespace {

// The manager's summary of a check, or 0 for any other line.
int countOfSummary(const LogLine& line) {
  int count = 0;
  const bool isSummary =
      line.message.find(" issues were found that were unable to be fixed for ") !=
      std::string::npos;
  return isSummary && std::sscanf(line.message.c_str(), "%d", &count) == 1 ? count : 0;
}

// The manager reads no more of the tables than it needs; damage shows where something is read.
// What is wrong with single rows is returned.
std::vector<LogLine> readEverything() {
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
  for (const DataSelection& selection : dataSelections()) reader.notedHighestId(selection.id);
  reader.notedHighestId(0);
  return found;
}

// Whether it is in its place; a row of data selections that names none is not.
bool isSoundRow(const EventView& event, bool ofDataSelections) {
  return event.problem.empty() && isGlobalQueue(event.dsid) != ofDataSelections;
}

}  // namespace

bool areRowsSound() {
  const DatabaseQueueReader reader;
  std::map<unsigned int, unsigned long> highest;
  bool sound = true;
  const auto look = [&](const EventView& event, bool ofDataSelections) {
    highest[event.dsid] = std::max(highest[event.dsid], event.id);
    return sound = isSoundRow(event, ofDataSelections);
  };
  reader.forEach(0, 0, [&](const EventView& event) { return look(event, false); });
  if (sound)
    reader.forEachOfDataSelections([&](const EventView& event) { return look(event, true); });
  // Ids are noted before their rows are there.
  return sound && std::all_of(highest.begin(), highest.end(), [&](const auto& each) {
           return each.second <= reader.notedHighestId(each.first);
         });
}

QueueCheck::QueueCheck(HostQueues& queues, TakeLog takeLog, bool fix)
    : m_queues(queues), m_takeLog(std::move(takeLog)) {
  m_report.fix = fix;
  m_report.clustered = queues.isClustered();
}

CheckReport QueueCheck::run() {
  if (m_report.fix) repair();
  note(m_takeLog());
  if (m_report.result == 0) inspect();
  note(m_takeLog());
  if (m_report.result == 0) m_queues.makeDurable();
  return m_report;
}

// Reading an event string that cannot be read removes its row; a check alone only counts it.
void QueueCheck::repair() {
  if (ended(m_queues.manager().checkConsistency(true)) || m_report.clustered) return;
  std::set<unsigned int> queues = {0};
  DatabaseQueueReader().forEachOfDataSelections([&](const EventView& event) {
    if (QMDSIDValidate(event.dsid) != 0) queues.insert(event.dsid);
    return true;
  });
  for (const unsigned int dsid : queues) {
    unsigned long after = 0;
    while (const auto event = m_queues.next(after, dsid)) after = event->getId();
  }
}

void QueueCheck::inspect() {
  if (ended(m_queues.manager().checkConsistency(false))) return;
  const std::vector<LogLine> unreadable = readEverything();
  const auto lines = m_takeLog();
  for (const LogLine& line : lines) m_report.remaining += countOfSummary(line);
  note(lines);
  // The check of the cluster stores is not about the database.
  if (!m_report.clustered) return;
  m_report.remaining += static_cast<int>(unreadable.size());
  note(unreadable);
}

bool QueueCheck::ended(int result) {
  m_report.result = result;
  return result != 0;
}

// A problem that stays is logged by every check.
void QueueCheck::note(const std::vector<LogLine>& lines) {
  for (const LogLine& line : lines) {
    if (countOfSummary(line) > 0) continue;
    auto& findings = m_report.findings;
    if (std::find(findings.begin(), findings.end(), line) == findings.end()) {
      findings.push_back(line);
    }
  }
}

nlohmann::ordered_json jsonOf(const CheckReport& report) {
  auto findings = nlohmann::ordered_json::array();
  for (const LogLine& line : report.findings) {
    findings.push_back({{"level", line.level}, {"code", line.code}, {"message", line.message}});
  }
  nlohmann::ordered_json object = {
      {"fix", report.fix}, {"findings", findings}, {"remaining", report.remaining}};
  if (report.clustered) object["checked"] = "database";
  return object;
}

}  // namespace EventApps
