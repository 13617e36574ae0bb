// All that was recorded of one queue, and what is wrong with it.
//
// Thread safety: plain values.

#ifndef EVENTSYSTEM_TESTS_CLUSTER_HISTORYCHECK_H
#define EVENTSYSTEM_TESTS_CLUSTER_HISTORYCHECK_H

#include <chrono>
#include <set>
#include <string>
#include <vector>

namespace EventSystemTest {

struct HistoryVerdict {
  long operations = 0;
  long unacknowledged = 0;  // writes that nobody was told the end of
  long lost = 0;
  long doubled = 0;
  long reordered = 0;
  long resurrected = 0;
  long invented = 0;  // texts that nobody wrote
  std::string details;

  long wrong() const { return lost + doubled + reordered + resurrected + invented; }
};

// What each means is told where it is recorded, in History.h.
struct HistoryRecords {
  using Time = std::chrono::steady_clock::time_point;

  struct Event {
    unsigned long id;
    std::string text;
  };
  struct Write {
    std::string text;
    unsigned long id;
    Time begin;
    Time end;
  };
  struct UnknownWrite {
    std::string text;
    Time begin;
  };
  struct Copy {
    std::string member;
    std::string text;
    Time begin;
  };
  struct Read {
    unsigned long afterId;
    unsigned long id;  // 0: the end of the queue
    std::string text;
    Time begin;
    Time end;
  };
  struct Delete {
    unsigned long id;
    Time time;
  };

  unsigned long handedOut = 0;
  std::set<std::string> gone;
  std::vector<Write> writes;
  std::vector<UnknownWrite> failed;
  std::vector<Copy> copies;
  std::vector<Read> reads;
  std::vector<Delete> deleting;
  std::vector<Delete> deleted;
  std::vector<Event> left;
};

HistoryVerdict checkHistory(const HistoryRecords& records);

}  // namespace EventSystemTest

#endif
