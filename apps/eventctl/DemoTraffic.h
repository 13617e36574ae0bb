// Hosts that write while the tour does something to their cluster, and the lines that tell how it
// goes: who leads, and how much each host was acknowledged.
//
// Thread safety: none; used by the main thread.

#ifndef EVENTSYSTEM_APPS_EVENTCTL_DEMOTRAFFIC_H
#define EVENTSYSTEM_APPS_EVENTCTL_DEMOTRAFFIC_H

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "apps/common/Table.h"
#include "apps/eventctl/DemoMembers.h"
#include "apps/eventctl/DemoStage.h"
#include "apps/eventctl/DemoWriter.h"

namespace EventApps {

class DemoTraffic {
 public:
  using Clock = std::chrono::steady_clock;

  // Starts a writer for each host. The members are asked for from `observer`.
  DemoTraffic(DemoStage& stage, const std::vector<std::string>& hosts, const std::string& observer,
              const std::vector<std::string>& nodes);

  // Events flow until `done` says so. Throws Failure when that takes too long, when a writer
  // ends before, or on an interrupt; `awaited` then tells what was waited for.
  void flowUntil(const std::function<bool()>& done, const std::string& awaited);
  // And for a time.
  void flowFor(std::chrono::milliseconds time);
  // Runs eventctl in sight while events flow.
  void show(const DemoStage::Arguments& arguments);
  // No more events are handed over; waits until the writers have dealt with what they have.
  void finish();

  // A line of what happens, now.
  void tell(const std::string& what);

  // As they were a moment ago: asked for again and again. Forgotten, they are asked for anew.
  const DemoMembers& members() const { return m_members; }
  void forgetMembers();

  std::vector<std::unique_ptr<DemoWriter>>& writers() { return m_writers; }
  // What the writer with the fewest has been acknowledged.
  unsigned long least() const;

 private:
  void pump(ChildProcess* shown, const ChildProcess::TakeLine& take);
  void watchMembers();
  void readMembers();
  void tellInTime();
  std::string leaderName() const;
  std::string rateAt(Clock::time_point now, unsigned long inAll);
  bool allEnded() const;

  DemoStage& m_stage;
  std::string m_observer;
  std::vector<std::string> m_nodes;
  std::vector<std::unique_ptr<DemoWriter>> m_writers;
  Clock::time_point m_start = Clock::now();
  Clock::time_point m_nextRow;
  bool m_shownEnded = false;
  bool m_finishing = false;

  std::unique_ptr<ChildProcess> m_question;  // to the observer, while it is under way
  std::string m_answer;
  Clock::time_point m_nextQuestion;
  DemoMembers m_members;

  std::optional<Table> m_table;
  unsigned long m_toldInAll = 0;
  Clock::time_point m_toldAt = m_start;
};

}  // namespace EventApps

#endif
