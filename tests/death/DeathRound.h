// One round: a home of its own, worker processes that live on it one after the other and die as
// the round's plan has it, and the books that their deeds are checked against.
//
// Thread safety: none; the process must have one thread only.

#ifndef EVENTSYSTEM_TESTS_DEATH_DEATHROUND_H
#define EVENTSYSTEM_TESTS_DEATH_DEATHROUND_H

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "tests/death/AuditFeed.h"
#include "tests/death/Ledger.h"
#include "tests/death/Plan.h"
#include "tests/differential/Random.h"
#include "tests/support/TempDir.h"

namespace EventSystemTest {

class DeathRound {
 public:
  DeathRound(std::uint64_t seed, std::uint64_t round);

  // Ends early when something does not agree. False then.
  bool run();

  const std::vector<std::string>& failures() const { return m_failures; }

  // What to add to the table, by name, in a fixed order of names.
  std::vector<std::pair<std::string, std::uint64_t>> figures() const;

 private:
  void live(const LifePlan& plan);
  void watch(const LifePlan& plan, ForkedProcess& process);
  void afterMessage(const LifePlan& plan, const Message& message, const ForkedProcess& process);
  void judgeEnd(const LifePlan& plan, int status);
  void readLog(const LifePlan& plan);
  void fail(const LifePlan& plan, const std::string& what);

  const RoundPlan m_plan;
  const TempDir m_directory;
  const std::filesystem::path m_home;
  AuditFeed m_audit;
  Ledger m_ledger;
  Random m_random;
  std::uint64_t m_life = 0;

  // Of the present life.
  Stage m_stage = Stage::kBorn;
  std::uint64_t m_steps = 0;
  bool m_killed = false;

  std::map<Stage, std::uint64_t> m_deaths;
  std::uint64_t m_fileCallDeaths = 0;
  std::uint64_t m_logLines = 0;
  std::vector<std::string> m_failures;
};

}  // namespace EventSystemTest

#endif
