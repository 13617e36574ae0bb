#include "tests/cluster/HistoryCheck.h"

#include <algorithm>
#include <map>

namespace EventSystemTest {
namespace {

using Time = HistoryRecords::Time;
constexpr unsigned long kNoId = 0;

std::string named(unsigned long id, const std::string& text) {
  return "id " + std::to_string(id) + ", text \"" + text + "\"";
}

class Check {
 public:
  explicit Check(const HistoryRecords& records) : m_records(records) {}

  HistoryVerdict run() {
    count();
    gather();
    checkTexts();
    checkWrites();
    checkCopies();
    checkOrder();
    for (const HistoryRecords::Read& read : m_records.reads) checkRead(read);
    checkLeft();
    return m_verdict;
  }

 private:
  // All that is known of the event of one id.
  struct Known {
    std::string text;
    Time began = Time::min();  // of its write
    Time known = Time::max();  // the first time that somebody was told of it
    Time deleting = Time::max();
    Time deleted = Time::max();
    bool left = false;
  };

  void count() {
    m_verdict.operations = static_cast<long>(m_records.writes.size() + m_records.failed.size() +
                                             m_records.reads.size() + m_records.deleted.size());
    m_verdict.unacknowledged = static_cast<long>(m_records.failed.size());
  }

  void blame(long& counter, const std::string& what) {
    constexpr std::size_t kEnough = 2000;
    ++counter;
    if (m_verdict.details.size() < kEnough) m_verdict.details += what + "\n";
  }

  void gather() {
    for (const auto& read : m_records.reads) {
      if (read.id == kNoId) continue;
      Known& event = see(read.id, read.text);
      event.known = std::min(event.known, read.end);
    }
    for (const auto& event : m_records.left) see(event.id, event.text).left = true;
    gatherWriters();
    for (const auto& each : m_records.deleting) begin(each);
    for (const auto& each : m_records.deleted) {
      begin(each);
      const auto event = m_events.find(each.id);
      if (event != m_events.end()) {
        event->second.deleted = std::min(event->second.deleted, each.time);
      }
    }
  }

  Known& see(unsigned long id, const std::string& text) {
    Known& event = m_events[id];
    if (event.text.empty()) {
      event.text = text;
    } else if (event.text != text) {
      blame(m_verdict.doubled, "two events under one id: " + named(id, text));
    }
    m_ids[text].insert(id);
    return event;
  }

  void gatherWriters() {
    std::map<std::string, Time> began;
    for (const auto& write : m_records.writes) began[write.text] = write.begin;
    for (const auto& write : m_records.failed) began[write.text] = write.begin;
    for (const auto& copy : m_records.copies) began[copy.text] = copy.begin;
    for (auto& [id, event] : m_events) {
      const auto origin = began.find(event.text);
      if (origin != began.end()) event.began = origin->second;
    }
    for (const auto& write : m_records.writes) {
      const auto event = m_events.find(write.id);
      if (event != m_events.end() && event->second.text == write.text) {
        event->second.known = std::min(event->second.known, write.end);
      }
    }
    for (const auto& [text, begin] : began) m_written.insert(text);
  }

  void begin(const HistoryRecords::Delete& each) {
    const auto event = m_events.find(each.id);
    if (event == m_events.end()) return;
    event->second.deleting = std::min(event->second.deleting, each.time);
  }

  // Each text was written by somebody, and is there under one id.
  void checkTexts() {
    for (const auto& [text, ids] : m_ids) {
      const unsigned long id = *ids.rbegin();
      if (ids.size() > 1) blame(m_verdict.doubled, "twice: " + named(id, text));
      if (m_records.gone.contains(text)) {
        blame(m_verdict.resurrected, "removed long ago: " + named(id, text));
      } else if (!m_written.contains(text)) {
        blame(m_verdict.invented, "invented: " + named(id, text));
      }
    }
  }

  const std::set<unsigned long>& idsOf(const std::string& text) const {
    static const std::set<unsigned long> none;
    const auto found = m_ids.find(text);
    return found == m_ids.end() ? none : found->second;
  }

  // Each acknowledged write was seen under its id. What was seen goes by a delete only.
  void checkWrites() {
    for (const auto& write : m_records.writes) {
      if (!idsOf(write.text).contains(write.id)) {
        blame(m_verdict.lost, "lost: " + named(write.id, write.text));
      }
    }
    for (const auto& [id, event] : m_events) {
      if (!event.left && event.deleting == Time::max()) {
        blame(m_verdict.lost, "vanished: " + named(id, event.text));
      }
    }
  }

  void checkCopies() {
    std::map<std::string, unsigned long> last;  // by member
    for (const auto& copy : m_records.copies) {
      const auto& ids = idsOf(copy.text);
      if (ids.empty()) {
        blame(m_verdict.lost, "not copied: text \"" + copy.text + "\"");
        continue;
      }
      unsigned long& before = last[copy.member];
      if (*ids.begin() <= before) {
        blame(m_verdict.reordered,
              "copied below " + std::to_string(before) + ": " + named(*ids.begin(), copy.text));
      }
      before = std::max(before, *ids.begin());
    }
  }

  // A write that began when an event was known to somebody has the higher id, whoever wrote it.
  void checkOrder() {
    struct Written {
      unsigned long id;
      Time began;
      Time known;
    };
    std::vector<Written> byBegin;
    const auto add = [&](unsigned long id, Time began, Time known) {
      byBegin.push_back({id, began, known});
    };
    for (const auto& [id, event] : m_events) add(id, event.began, event.known);
    for (const auto& write : m_records.writes) add(write.id, write.begin, write.end);
    std::vector<Written> byKnown = byBegin;
    std::sort(byBegin.begin(), byBegin.end(),
              [](const Written& a, const Written& b) { return a.began < b.began; });
    std::sort(byKnown.begin(), byKnown.end(),
              [](const Written& a, const Written& b) { return a.known < b.known; });
    unsigned long highest = m_records.handedOut;
    std::set<unsigned long> blamed;
    auto known = byKnown.begin();
    for (const Written& event : byBegin) {
      for (; known != byKnown.end() && known->known < event.began; ++known) {
        highest = std::max(highest, known->id);
      }
      if (event.id <= highest && blamed.insert(event.id).second) {
        blame(m_verdict.reordered,
              "written below " + std::to_string(highest) + ": id " + std::to_string(event.id));
      }
    }
  }

  // A reader goes upwards and passes nothing by, and what was deleted stays away.
  void checkRead(const HistoryRecords::Read& read) {
    const std::string what = "read after " + std::to_string(read.afterId) + ": ";
    if (read.id != kNoId) {
      if (read.id <= read.afterId) blame(m_verdict.reordered, what + named(read.id, read.text));
      if (m_events[read.id].deleted < read.begin) {
        blame(m_verdict.resurrected, what + "a deleted event, " + named(read.id, read.text));
      }
    }
    for (auto each = m_events.upper_bound(read.afterId); each != m_events.end(); ++each) {
      const auto& [id, event] = *each;
      if (read.id != kNoId && id >= read.id) return;
      const bool there = read.id != kNoId || event.known < read.begin;
      if (there && event.deleting > read.end) {
        blame(m_verdict.reordered, what + (read.id == kNoId ? "the end" : std::to_string(read.id)) +
                                       ", past " + named(id, event.text));
      }
    }
  }

  void checkLeft() {
    unsigned long last = 0;
    for (const auto& event : m_records.left) {
      if (event.id <= last) {
        blame(m_verdict.reordered,
              "left after " + std::to_string(last) + ": " + named(event.id, event.text));
      }
      last = event.id;
      if (m_events[event.id].deleted != Time::max()) {
        blame(m_verdict.resurrected, "deleted: " + named(event.id, event.text));
      }
    }
  }

  const HistoryRecords& m_records;
  HistoryVerdict m_verdict;
  std::map<unsigned long, Known> m_events;               // that were seen, by id
  std::map<std::string, std::set<unsigned long>> m_ids;  // under which a text was seen
  std::set<std::string> m_written;
};

}  // namespace

HistoryVerdict checkHistory(const HistoryRecords& records) {
  return Check(records).run();
}

}  // namespace EventSystemTest
