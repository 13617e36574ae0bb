// prove_memory: every allocation of every operation fails once, then many at a time.

#include <algorithm>
#include <array>

#include "tests/differential/Random.h"
#include "tests/memory/MemoryTrial.h"
#include "tests/proof/Proof.h"

namespace EventSystemTest {
namespace {

constexpr char kPurpose[] =
    "Takes memory away from each operation of the queue on the reference host, and checks what is\n"
    "left. A round lets each allocation of each operation fail, the library's, the host's and\n"
    "SQLite's, and then, by the seed, all from one on and each by chance. Rounds take the\n"
    "durabilities in turn.";
constexpr unsigned int kTrialsByChance = 200;

class Run {
 public:
  Run(Proof& proof, std::uint64_t round, std::string operation, bool verbose)
      : m_proof(proof),
        m_round(round),
        m_only(std::move(operation)),
        m_verbose(verbose),
        m_trial(std::array{"strict", "group", "relaxed"}[round % 3]) {}

  void go() {
    for (const MemoryTrial::Operation& operation : MemoryTrial::operations()) {
      if (!m_only.empty() && operation.name != m_only) continue;
      const std::size_t allocations = failEach(operation);
      failMany(operation, allocations);
    }
    m_proof.figure("audit records kept in the log only", m_trial.auditRecordsInTheLogOnly());
  }

 private:
  std::size_t failEach(const MemoryTrial::Operation& operation) {
    const std::size_t allocations = run(operation, AllocationFaults::none());
    for (std::size_t n = 1; n <= allocations; ++n) run(operation, AllocationFaults::only(n));
    if (m_verbose) std::printf("%s: %zu allocations\n", operation.name.c_str(), allocations);
    return allocations;
  }

  void failMany(const MemoryTrial::Operation& operation, std::size_t allocations) {
    Random random(m_proof.seed(), m_round);
    const auto limit = static_cast<unsigned int>(std::max<std::size_t>(allocations, 1));
    for (unsigned int i = 0; i < kTrialsByChance; ++i) {
      run(operation, random.oneIn(2)
                         ? AllocationFaults::from(1 + random.below(limit))
                         : AllocationFaults::oneIn(1 + random.below(limit), random.next()));
    }
  }

  std::size_t run(const MemoryTrial::Operation& operation, const AllocationFaults& faults) {
    const MemoryTrial::Outcome outcome = m_trial.run(operation, faults);
    m_proof.figure("trials");
    m_proof.figure("failed allocations", outcome.failed);
    if (outcome.result == "0" || outcome.result == "built")
      m_proof.figure("operations done all the same");
    for (const std::string& what : outcome.failures) {
      m_proof.failure(operation.name + ", " + faults.text() + ": " + what,
                      "--seed " + std::to_string(m_proof.seed()) + " --round " +
                          std::to_string(m_round) + " --operation '" + operation.name + "'");
    }
    return outcome.allocations;
  }

  Proof& m_proof;
  const std::uint64_t m_round;
  const std::string m_only;
  const bool m_verbose;
  MemoryTrial m_trial;
};

int run(int count, char** arguments) {
  Proof proof("memory", kPurpose);
  std::optional<std::uint64_t> only;
  std::string operation;
  bool verbose = false;
  proof.options().add_option("--round", only, "Repeat this round alone");
  proof.options().add_option("--operation", operation, "Try this operation alone");
  proof.options().add_flag("--verbose", verbose, "Tell how far the round has come");
  if (!proof.parse(count, arguments)) return proof.status();
  for (std::uint64_t done = 0; proof.more(done); ++done) {
    Run(proof, only.value_or(done), operation, verbose).go();
    proof.figure("rounds");
  }
  return proof.finish();
}

}  // namespace
}  // namespace EventSystemTest

int main(int count, char** arguments) {
  return EventSystemTest::run(count, arguments);
}
