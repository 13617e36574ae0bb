// What a server's day was meant to do to its queues, call by call, and when each call began and
// returned. Moments are positions in the DiskLog of the day.
//
// Thread safety: plain values.

#ifndef EVENTSYSTEM_TESTS_POWER_LEDGER_H
#define EVENTSYSTEM_TESTS_POWER_LEDGER_H

#include <cstddef>
#include <limits>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace EventSystemTest {

// Text by id, by table. The text of a row of "dsevents" ends with its data selection.
using Rows = std::map<std::string, std::map<unsigned long, std::string>>;

constexpr std::size_t kNever = std::numeric_limits<std::size_t>::max();

// One change of one row. A call that imports audit rows makes several.
struct Step {
  std::string table;
  unsigned long id;
  std::optional<std::string> text;  // of the new row; none: the row was removed
  std::size_t begin;
  std::size_t end = kNever;  // when the call reported success
};

// A row that an off-line service left in audit.db.
struct AuditRow {
  std::string content;
  std::size_t end = kNever;
};

// From `at` on the first `steps` steps survive power loss; those before `first` if they were there.
struct DurableMark {
  std::size_t at;
  std::size_t steps;
  std::size_t first = 0;
};

struct Ledger {
  Rows base;  // what was there before the first step
  std::vector<Step> steps;
  std::vector<AuditRow> auditRows;
  std::vector<DurableMark> marks;

  void markDurable(std::size_t at) { marks.push_back({at, steps.size()}); }
};

inline void carryOut(Rows& rows, const Step& step) {
  if (step.text) {
    rows[step.table][step.id] = *step.text;
  } else {
    rows[step.table].erase(step.id);
  }
}

}  // namespace EventSystemTest

#endif
