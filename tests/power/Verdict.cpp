#include "tests/power/Verdict.h"

#include <algorithm>
#include <set>

namespace EventSystemTest {

namespace {

class Judge {
 public:
  Judge(const Ledger& ledger, Promise promise, std::size_t position, const Reboot& found)
      : m_ledger(ledger), m_position(position), m_found(found) {
    for (const Step& step : ledger.steps) {
      if (step.begin < position) ++m_begun;
      if (promise == Promise::kEachCall && step.end <= position) ++m_promised;
    }
    for (const DurableMark& mark : ledger.marks) {
      if (mark.at <= position) m_promised = std::max(m_promised, mark.steps);
    }
  }

  // The calls that are found: all up to one of them, and none behind it.
  std::string findLast() {
    Rows rows = m_ledger.base;
    for (std::size_t step = 0;; ++step) {
      if (step >= m_promised && holds(rows)) {
        m_last = step;
        return "";
      }
      if (step == m_begun) break;
      carryOut(rows, m_ledger.steps[step]);
    }
    return whatDiffers();
  }

  // No id that was promised is given again.
  std::string checkIds() const {
    for (std::size_t i = 0; i < m_promised; ++i) {
      const Step& step = m_ledger.steps[i];
      if (step.table == "events" && step.text && step.id >= m_found.newId) {
        return "id " + std::to_string(step.id) + " is given again";
      }
    }
    return "";
  }

  // An audit row is in its file, or in the queue, or was there and was consumed.
  std::string checkAudit(Promise promise, PowerFigures& figures) const {
    for (const AuditRow& row : m_ledger.auditRows) {
      const bool waits = std::find(m_found.auditRows.begin(), m_found.auditRows.end(),
                                   row.content) != m_found.auditRows.end();
      const bool queued = wasQueued(row.content);
      if (waits && queued) ++figures.auditTwice;
      if (waits || queued || row.end > m_position) continue;
      if (promise == Promise::kEachCall) return "an audit row is lost: " + row.content;
      ++figures.auditGone;
    }
    return "";
  }

  std::size_t promised() const { return m_promised; }
  std::size_t last() const { return m_last; }

 private:
  bool holds(const Rows& rows) const {
    const Rows& found = m_found.stored.rows;
    return std::all_of(rows.begin(), rows.end(),
                       [&](const auto& table) {
                         const auto other = found.find(table.first);
                         return other == found.end() ? table.second.empty()
                                                     : other->second == table.second;
                       }) &&
           std::all_of(found.begin(), found.end(), [&](const auto& table) {
             return table.second.empty() || rows.contains(table.first);
           });
  }

  bool wasQueued(const std::string& content) const {
    const auto holdsIt = [&](const std::string& text) {
      return text.find(content) != std::string::npos;
    };
    for (std::size_t i = 0; i < m_last; ++i) {
      const Step& step = m_ledger.steps[i];
      if (step.text && holdsIt(*step.text)) return true;
    }
    const auto base = m_ledger.base.find("events");
    return base != m_ledger.base.end() &&
           std::any_of(base->second.begin(), base->second.end(),
                       [&](const auto& row) { return holdsIt(row.second); });
  }

  // In words, against what had been promised at the least.
  std::string whatDiffers() const {
    Rows rows = m_ledger.base;
    for (std::size_t i = 0; i < m_promised; ++i) carryOut(rows, m_ledger.steps[i]);
    std::string text = "found is not what any number of calls from " + std::to_string(m_promised) +
                       " to " + std::to_string(m_begun) + " makes:";
    std::set<std::string> tables;
    for (const auto& [table, ignored] : rows) tables.insert(table);
    for (const auto& [table, ignored] : m_found.stored.rows) tables.insert(table);
    for (const std::string& table : tables) text += tableDiffers(table, rows[table]);
    return text;
  }

  std::string tableDiffers(const std::string& table,
                           const std::map<unsigned long, std::string>& wanted) const {
    std::string text;
    const auto found = m_found.stored.rows.find(table);
    const std::map<unsigned long, std::string> none;
    const auto& rows = found == m_found.stored.rows.end() ? none : found->second;
    for (const auto& [id, row] : wanted) {
      const auto other = rows.find(id);
      if (other == rows.end()) text += " " + table + " " + std::to_string(id) + " is missing;";
      if (other != rows.end() && other->second != row) {
        text += " " + table + " " + std::to_string(id) + " is garbled;";
      }
    }
    for (const auto& [id, row] : rows) {
      if (!wanted.contains(id)) text += " " + table + " " + std::to_string(id) + " is there;";
    }
    return text;
  }

  const Ledger& m_ledger;
  const std::size_t m_position;
  const Reboot& m_found;
  std::size_t m_promised = 0;
  std::size_t m_begun = 0;
  std::size_t m_last = 0;
};

}  // namespace

std::string judge(const Ledger& ledger, Promise promise, std::size_t position, const Reboot& found,
                  PowerFigures& figures) {
  if (!found.problem.empty()) return found.problem;
  Judge judge(ledger, promise, position, found);
  std::string problem = judge.findLast();
  if (problem.empty()) problem = judge.checkIds();
  if (problem.empty()) problem = judge.checkAudit(promise, figures);
  figures.promised += judge.promised();
  figures.newer += judge.last() - std::min(judge.last(), judge.promised());
  return problem;
}

}  // namespace EventSystemTest
