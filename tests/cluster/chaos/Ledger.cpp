#include "tests/cluster/chaos/Ledger.h"

#include <algorithm>
#include <sstream>

#include "tests/cluster/chaos/Queues.h"

namespace EventSystemTest {

Ledger::Ledger() {
  for (const unsigned int dsid : kChaosQueues) m_queues[dsid];
}

void Ledger::take(const std::string& member, const std::vector<JournalEntry>& entries) {
  for (const JournalEntry& entry : entries) takeEntry(member, entry);
}

void Ledger::takeEntry(const std::string& member, const JournalEntry& entry) {
  Queue& queue = m_queues[entry.dsid];
  m_figures.longestWait =
      std::max(m_figures.longestWait, std::chrono::nanoseconds(entry.end - entry.begin));
  switch (entry.kind) {
    case JournalEntry::kStarted:
      ++m_figures.lives;
      break;
    case JournalEntry::kEnded:
      break;
    case JournalEntry::kRow:
      ++m_figures.rows;
      queue.history->copied(member, entry.text, entry.begin);
      break;
    case JournalEntry::kWriting:
      queue.open[entry.text] = entry.begin;
      break;
    case JournalEntry::kWritten:
      ++m_written[member];
      takeWritten(queue, entry);
      break;
    case JournalEntry::kRefused:
      ++m_figures.refused;
      queue.open.erase(entry.text);
      break;
    case JournalEntry::kRead:
      ++m_figures.reads;
      queue.history->read(entry.afterId, entry.id, entry.text, entry.begin, entry.end);
      if (entry.id != 0) see(queue, entry.id, entry.text);
      break;
    case JournalEntry::kDeleting:
      queue.history->deleting(entry.id, entry.begin);
      break;
    case JournalEntry::kDeleted:
      ++m_figures.deleted;
      queue.history->deleted(entry.id, entry.end);
      break;
    case JournalEntry::kFailed:
      ++m_figures.failedCalls;
      break;
  }
}

void Ledger::takeWritten(Queue& queue, const JournalEntry& entry) {
  ++m_figures.written;
  queue.history->wrote(entry.text, entry.id, queue.open[entry.text], entry.end);
  queue.open.erase(entry.text);
  queue.highest = std::max(queue.highest, entry.id);
}

void Ledger::see(Queue& queue, unsigned long id, const std::string& text) {
  queue.seen.insert(text);
  queue.highest = std::max(queue.highest, id);
}

void Ledger::left(unsigned int dsid, unsigned long id, const std::string& text) {
  Queue& queue = m_queues[dsid];
  queue.history->left(id, text);
  see(queue, id, text);
}

long Ledger::writtenBy(const std::string& member) const {
  const auto found = m_written.find(member);
  return found == m_written.end() ? 0 : found->second;
}

HistoryVerdict Ledger::close() {
  HistoryVerdict sum;
  for (auto& [dsid, queue] : m_queues) {
    const HistoryVerdict verdict = close(queue);
    sum.operations += verdict.operations;
    sum.unacknowledged += verdict.unacknowledged;
    sum.lost += verdict.lost;
    sum.doubled += verdict.doubled;
    sum.reordered += verdict.reordered;
    sum.resurrected += verdict.resurrected;
    sum.invented += verdict.invented;
    std::istringstream lines(verdict.details);
    for (std::string line; std::getline(lines, line);) {
      sum.details += "data selection " + std::to_string(dsid) + ": " + line + "\n";
    }
  }
  return sum;
}

// A request that was on its way when its sender died may still arrive in the next epoch.
HistoryVerdict Ledger::close(Queue& queue) {
  m_figures.unknown += static_cast<long>(queue.open.size());
  queue.late.merge(queue.open);
  queue.open.clear();
  for (const auto& [text, begin] : queue.late) queue.history->failed(text, begin);
  HistoryVerdict verdict = queue.history->check();

  const auto stored = std::erase_if(
      queue.late, [&queue](const auto& write) { return queue.seen.contains(write.first); });
  m_figures.unknownStored += static_cast<long>(stored);
  queue.gone.merge(queue.seen);
  queue.seen.clear();
  queue.history = std::make_unique<History>();
  queue.history->handedOut(queue.highest);
  for (const std::string& text : queue.gone) queue.history->gone(text);
  return verdict;
}

}  // namespace EventSystemTest
