// Three nodes of etcd, three hosts that write, read and consume, and faults by a schedule, epoch
// after epoch; at the end of each the hosts are asked what they were told, and etcd what it has.
//
// Thread safety: none; used by the main thread, whose end the processes share.

#ifndef EVENTSYSTEM_TESTS_CLUSTER_CHAOS_CHAOS_H
#define EVENTSYSTEM_TESTS_CLUSTER_CHAOS_CHAOS_H

#include <array>
#include <cstdint>
#include <list>
#include <string>
#include <vector>

#include "tests/cluster/EtcdCluster.h"
#include "tests/cluster/chaos/Ledger.h"
#include "tests/cluster/chaos/Links.h"
#include "tests/cluster/chaos/Member.h"
#include "tests/cluster/chaos/Schedule.h"
#include "tests/support/TempDir.h"

namespace EventSystemTest {

struct ChaosFigures {
  std::array<long, kFaults> faults{};
  long leaders = 0;  // of the faults, at the leader of that moment
  long refusedStarts = 0;
};

class Chaos {
 public:
  // Starts the nodes. Throws std::runtime_error, as all below.
  Chaos(std::uint64_t seed, const ScheduleLimits& limits);

  // What the faults of an epoch are.
  std::vector<Storm> schedule(std::uint64_t epoch) const;

  // Runs an epoch and judges it. Throws what is wrong but is not about events: a host that dies by
  // itself, or that makes no progress when all is healed.
  HistoryVerdict run(std::uint64_t epoch);

  const ChaosFigures& figures() const { return m_figures; }
  const LedgerFigures& ledger() const { return m_ledger.figures(); }

 private:
  using Clock = std::chrono::steady_clock;

  struct Host {
    explicit Host(MemberOptions options) : member(std::move(options)) {}
    Member member;
    int held = 0;  // faults that keep it from running
    bool alive = false;
  };
  struct Active {
    Step step;
    int node;
  };

  void storm(const Storm& storm);
  void begin(const Step& step);
  void end(const Active& active);
  void beginAtNodes(Fault fault, int node);
  void endAtNodes(Fault fault, int node);
  void beginAtHost(const Step& step);
  void endAtHost(const Step& step);
  std::vector<int> nodesOf(Fault fault, int node) const;
  int leaderOr(int node);

  void superviseHosts();
  void startHost(Host& host);
  void heal();
  void waitForProgress();
  void stopHosts();
  void copyRows();
  void readTheRest();
  void takeJournals();

  const std::uint64_t m_seed;
  const ScheduleLimits m_limits;
  TempDir m_directory;
  EtcdCluster m_etcd;
  Links m_links;
  std::list<Host> m_hosts;
  Ledger m_ledger;
  ChaosFigures m_figures;
  std::vector<Active> m_active;
  std::uint64_t m_epoch = 0;
};

}  // namespace EventSystemTest

#endif
