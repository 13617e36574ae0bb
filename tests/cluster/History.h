// What the clients of one queue did and were told, and whether the queue's content agrees with it:
// nothing lost, nothing twice, nothing out of order, nothing deleted that comes back. The clients
// may be threads or processes of one machine, as many as there are.
//
// Texts are all different, and times are of one clock for all clients.
//
// Thread safety: any thread records; check() when all are done.

#ifndef EVENTSYSTEM_TESTS_CLUSTER_HISTORY_H
#define EVENTSYSTEM_TESTS_CLUSTER_HISTORY_H

#include <chrono>
#include <mutex>
#include <string>

#include "tests/cluster/HistoryCheck.h"

namespace EventSystemTest {

class History {
 public:
  using Time = HistoryRecords::Time;
  using Verdict = HistoryVerdict;
  static Time now() { return std::chrono::steady_clock::now(); }

  // Ids up to this one were handed out before the history began.
  void handedOut(unsigned long highest);
  // An event that was there and was removed before the history began.
  void gone(const std::string& text);

  // A write that was acknowledged under `id` at `end`.
  void wrote(const std::string& text, unsigned long id, Time begin, Time end);
  // A write that was reported as failed, or whose writer died before it was told: it is there once
  // or not at all.
  void failed(const std::string& text, Time begin);
  // An event that a member's database held when it was copied for the last time; those of one
  // member in the order in which it holds them.
  void copied(const std::string& member, const std::string& text, Time begin);
  // The first event after `afterId` as a reader was given it; id 0 where it was told that there is
  // none.
  void read(unsigned long afterId, unsigned long id, const std::string& text, Time begin, Time end);
  // A delete that may have been done from `begin` on, and one that was acknowledged at `end`.
  void deleting(unsigned long id, Time begin);
  void deleted(unsigned long id, Time end);
  // The events that are left in the end, in the order in which they were read.
  void left(unsigned long id, const std::string& text);

  Verdict check() const;

 private:
  mutable std::mutex m_mutex;
  HistoryRecords m_records;
};

}  // namespace EventSystemTest

#endif
