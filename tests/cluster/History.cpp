#include "tests/cluster/History.h"

#include <algorithm>
#include <map>
#include <set>

namespace EventSystemTest {
namespace {

void count(long& counter, std::string& details, const std::string& what) {
  ++counter;
  constexpr std::size_t kEnough = 2000;
  if (details.size() < kEnough) details += what + "\n";
}

std::string named(unsigned long id, const std::string& text) {
  return "id " + std::to_string(id) + ", text \"" + text + "\"";
}

}  // namespace

void History::wrote(const std::string& text, unsigned long id, Time begin, Time end) {
  const std::lock_guard lock(m_mutex);
  m_writes.push_back({text, id, begin, end});
}

void History::failed(const std::string& text) {
  const std::lock_guard lock(m_mutex);
  m_failed.push_back(text);
}

void History::consumed(unsigned long id, const std::string& text) {
  const std::lock_guard lock(m_mutex);
  m_consumed.push_back({id, text});
}

void History::deleted(unsigned long id) {
  const std::lock_guard lock(m_mutex);
  m_deleted.push_back(id);
}

void History::left(unsigned long id, const std::string& text) {
  const std::lock_guard lock(m_mutex);
  m_left.push_back({id, text});
}

History::Verdict History::check() const {
  const std::lock_guard lock(m_mutex);
  Verdict verdict;
  verdict.operations =
      static_cast<long>(m_writes.size() + m_failed.size() + m_consumed.size() + m_deleted.size());
  verdict.unacknowledged = static_cast<long>(m_failed.size());
  checkWrites(verdict);
  checkOrder(verdict);
  checkSeen(verdict);
  return verdict;
}

// Each acknowledged write is seen once under its id, each failed one at most once.
void History::checkWrites(Verdict& verdict) const {
  std::map<std::string, std::vector<unsigned long>> seen;
  for (const Event& event : m_consumed) seen[event.text].push_back(event.id);
  for (const Event& event : m_left) seen[event.text].push_back(event.id);
  std::set<std::string> written(m_failed.begin(), m_failed.end());
  for (const Write& write : m_writes) {
    written.insert(write.text);
    const std::vector<unsigned long>& ids = seen[write.text];
    if (std::find(ids.begin(), ids.end(), write.id) == ids.end()) {
      count(verdict.lost, verdict.details, "lost: " + named(write.id, write.text));
    }
  }
  for (const auto& [text, ids] : seen) {
    if (ids.size() > 1) count(verdict.doubled, verdict.details, "twice: " + named(ids[1], text));
    if (!ids.empty() && !written.contains(text)) {
      count(verdict.invented, verdict.details, "invented: " + named(ids[0], text));
    }
  }
}

// A write that began when another had been acknowledged has the higher id, whoever wrote it.
void History::checkOrder(Verdict& verdict) const {
  std::vector<Write> byBegin = m_writes;
  std::vector<Write> byEnd = m_writes;
  std::sort(byBegin.begin(), byBegin.end(),
            [](const Write& a, const Write& b) { return a.begin < b.begin; });
  std::sort(byEnd.begin(), byEnd.end(),
            [](const Write& a, const Write& b) { return a.end < b.end; });
  unsigned long highest = 0;
  auto ended = byEnd.begin();
  for (const Write& write : byBegin) {
    for (; ended != byEnd.end() && ended->end < write.begin; ++ended) {
      highest = std::max(highest, ended->id);
    }
    if (write.id <= highest) {
      count(verdict.reordered, verdict.details,
            "written below " + std::to_string(highest) + ": " + named(write.id, write.text));
    }
  }
}

// The consumer goes upwards and passes nothing by, and what was deleted stays away.
void History::checkSeen(Verdict& verdict) const {
  unsigned long last = 0;
  for (const std::vector<Event>* events : {&m_consumed, &m_left}) {
    for (const Event& event : *events) {
      if (event.id <= last) {
        count(verdict.reordered, verdict.details,
              "seen after " + std::to_string(last) + ": " + named(event.id, event.text));
      }
      last = event.id;
    }
  }
  const std::set<unsigned long> deleted(m_deleted.begin(), m_deleted.end());
  for (const Event& event : m_left) {
    if (deleted.contains(event.id)) {
      count(verdict.resurrected, verdict.details, "deleted: " + named(event.id, event.text));
    }
  }
}

}  // namespace EventSystemTest
