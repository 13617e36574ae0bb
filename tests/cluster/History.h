// What clients did and were told, and whether the queue's content agrees with it: nothing lost,
// nothing twice, nothing out of order, nothing deleted that comes back.
//
// Thread safety: any thread records; check() when all are done.

#ifndef EVENTSYSTEM_TESTS_CLUSTER_HISTORY_H
#define EVENTSYSTEM_TESTS_CLUSTER_HISTORY_H

#include <chrono>
#include <mutex>
#include <string>
#include <vector>

namespace EventSystemTest {

class History {
 public:
  using Time = std::chrono::steady_clock::time_point;
  static Time now() { return std::chrono::steady_clock::now(); }

  // A write that was acknowledged under `id` at `end`, with texts that are all different.
  void wrote(const std::string& text, unsigned long id, Time begin, Time end);
  // A write that was reported as failed.
  void failed(const std::string& text);
  // An event that the one consumer was given, in the order in which it was given them.
  void consumed(unsigned long id, const std::string& text);
  // A delete that was acknowledged.
  void deleted(unsigned long id);
  // The events that are left in the end, in the order in which they were read.
  void left(unsigned long id, const std::string& text);

  struct Verdict {
    long operations = 0;
    long unacknowledged = 0;  // writes reported as failed and not handed in again
    long lost = 0;
    long doubled = 0;
    long reordered = 0;
    long resurrected = 0;
    long invented = 0;  // texts that nobody wrote
    std::string details;
  };
  Verdict check() const;

 private:
  struct Write {
    std::string text;
    unsigned long id;
    Time begin;
    Time end;
  };
  struct Event {
    unsigned long id;
    std::string text;
  };

  void checkWrites(Verdict& verdict) const;
  void checkOrder(Verdict& verdict) const;
  void checkSeen(Verdict& verdict) const;

  mutable std::mutex m_mutex;
  std::vector<Write> m_writes;
  std::vector<std::string> m_failed;
  std::vector<Event> m_consumed;
  std::vector<unsigned long> m_deleted;
  std::vector<Event> m_left;
};

}  // namespace EventSystemTest

#endif
