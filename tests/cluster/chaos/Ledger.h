// What all hosts did and were told, from their journals, sorted into a history for each queue and
// judged epoch by epoch.
//
// Thread safety: none.

#ifndef EVENTSYSTEM_TESTS_CLUSTER_CHAOS_LEDGER_H
#define EVENTSYSTEM_TESTS_CLUSTER_CHAOS_LEDGER_H

#include <chrono>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "tests/cluster/History.h"
#include "tests/cluster/chaos/Journal.h"

namespace EventSystemTest {

struct LedgerFigures {
  long lives = 0;
  long written = 0;
  long deleted = 0;
  long reads = 0;
  long rows = 0;
  long failedCalls = 0;
  long refused = 0;        // writes given up that were told to have stored nothing
  long unknown = 0;        // writes that nobody was told the end of
  long unknownStored = 0;  // of these, found to be there
  std::chrono::nanoseconds longestWait{0};
};

class Ledger {
 public:
  Ledger();

  void take(const std::string& member, const std::vector<JournalEntry>& entries);
  // The events of a queue that are left when the epoch is over, in the order of reading.
  void left(unsigned int dsid, unsigned long id, const std::string& text);

  // Events that a member was told to be stored.
  long writtenBy(const std::string& member) const;

  // Judges the epoch and begins the next one, in which nothing of this one may come back. What was
  // left has been removed.
  HistoryVerdict close();

  const LedgerFigures& figures() const { return m_figures; }

 private:
  struct Queue {
    std::unique_ptr<History> history = std::make_unique<History>();
    std::map<std::string, JournalEntry::Time> open;  // writes without an answer
    std::map<std::string, JournalEntry::Time> late;  // of earlier epochs, never seen
    std::set<std::string> seen;
    std::set<std::string> gone;
    unsigned long highest = 0;
  };

  void takeEntry(const std::string& member, const JournalEntry& entry);
  void takeWritten(Queue& queue, const JournalEntry& entry);
  void see(Queue& queue, unsigned long id, const std::string& text);
  HistoryVerdict close(Queue& queue);

  std::map<unsigned int, Queue> m_queues;
  std::map<std::string, long> m_written;
  LedgerFigures m_figures;
};

}  // namespace EventSystemTest

#endif
