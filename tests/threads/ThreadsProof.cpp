// Many threads on the queues of one process, for as long as asked. Built in the preset tsan it is
// also a search for data races:
//   tools/build tsan prove_threads && build/tsan/bin/prove_threads --minutes 60

#include <cstdio>
#include <memory>

#include "tests/proof/Proof.h"
#include "tests/threads/ThreadsRound.h"
#ifdef EVENTSYSTEM_WITH_CLUSTER
#include "tests/cluster/EtcdCluster.h"
#endif

namespace EventSystemTest {
namespace {

class Rounds {
 public:
  explicit Rounds(Proof& proof) : m_proof(proof) {
    proof.options().add_option("--round", m_only, "Only the round of this number, from 0");
    proof.options().add_flag("--no-cluster", m_withoutCluster, "Without rounds at an etcd server");
  }

  void run() {
    if (m_only >= 0) return runOne(static_cast<std::uint64_t>(m_only));
    for (std::uint64_t number = 0; m_proof.more(number); ++number) runOne(number);
  }

 private:
  // Each fifth round is one in cluster mode.
  RoundPlan planOf(std::uint64_t number) {
#ifdef EVENTSYSTEM_WITH_CLUSTER
    if (number % 5 == 4 && !m_withoutCluster) {
      if (m_etcd == nullptr) m_etcd = std::make_unique<EtcdCluster>(1);
      return clusterPlan(m_proof.seed(), number, m_etcd->endpoint(0));
    }
#endif
    return databasePlan(m_proof.seed(), number);
  }

  // A host that does not start is a failure of the round, with its seed, like any other.
  Ledger resultOf(std::uint64_t number) {
    try {
      return runThreads(planOf(number));
    } catch (const std::exception& failure) {
      Ledger ledger;
      ledger.failures.emplace_back(failure.what());
      return ledger;
    }
  }

  void runOne(std::uint64_t number) {
    const Ledger ledger = resultOf(number);
    m_proof.figure("rounds");
    for (const auto& [what, count] : ledger.counts) m_proof.figure(what, count);
    for (const std::string& what : ledger.failures) {
      m_proof.failure(what, "--seed " + std::to_string(m_proof.seed()) + " --round " +
                                std::to_string(number) + (m_withoutCluster ? " --no-cluster" : ""));
    }
  }

  Proof& m_proof;
  long m_only = -1;
  bool m_withoutCluster = false;
#ifdef EVENTSYSTEM_WITH_CLUSTER
  std::unique_ptr<EtcdCluster> m_etcd;
#endif
};

}  // namespace
}  // namespace EventSystemTest

int main(int count, char** arguments) try {
  EventSystemTest::Proof proof("threads",
                               "16 threads call every public operation at once, with a seed.");
  EventSystemTest::Rounds rounds(proof);
  if (!proof.parse(count, arguments)) return proof.status();
  rounds.run();
  return proof.finish();
} catch (const std::exception& failure) {
  std::fprintf(stderr, "prove_threads: %s\n", failure.what());
  return 2;
}
