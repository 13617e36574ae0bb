// prove_text: compares as many cases as one likes, on as many threads, and ends at the first
// difference. A round is 65,536 cases.

#include <atomic>
#include <cstdio>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "tests/differential/Differential.h"
#include "tests/proof/Proof.h"

namespace EventSystemTest {
namespace {

constexpr std::uint64_t kRound = 1 << 16;

class Run {
 public:
  explicit Run(Proof& proof) : m_proof(proof) {}

  void go(unsigned int threads) {
    std::vector<std::jthread> workers;
    for (unsigned int i = 0; i < threads; ++i) workers.emplace_back([this] { work(); });
  }

  void runCases(Differential& differential, std::uint64_t number, std::uint64_t count) {
    for (const std::uint64_t end = number + count; number < end; ++number) {
      if (differential.run(number)) continue;
      std::fputs(differential.difference().c_str(), stdout);
      m_proof.failure(
          "the library and the plain formulation differ",
          "--seed " + std::to_string(m_proof.seed()) + " --case " + std::to_string(number));
      return;
    }
  }

  void report(const Tally& tally) {
    m_proof.figure("cases compared", tally.cases());
    m_proof.figure("of them texts accepted", tally.accepted);
    m_proof.figure("of them texts refused", tally.refused);
    m_proof.figure("of them events written", tally.events);
    m_proof.figure("writings compared, at all buffer sizes", tally.writings);
  }

 private:
  void work() {
    Differential differential(m_proof.seed());
    for (std::uint64_t round = m_next++; m_proof.more(round); round = m_next++) {
      runCases(differential, round * kRound, kRound);
    }
    report(differential.tally());
  }

  Proof& m_proof;
  std::atomic<std::uint64_t> m_next{0};
};

}  // namespace
}  // namespace EventSystemTest

int main(int count, char** arguments) {
  using namespace EventSystemTest;
  Proof proof("event text", "Reads and writes event texts beside a plain formulation.");
  unsigned int threads = 1;
  std::optional<std::uint64_t> one;
  proof.options().add_option("--threads", threads, "How many compare at once (default: 1)");
  proof.options().add_option("--case", one, "Compares this case of the seed alone");
  if (!proof.parse(count, arguments)) return proof.status();
  Run run(proof);
  if (one) {
    Differential differential(proof.seed());
    run.runCases(differential, *one, 1);
    run.report(differential.tally());
  } else {
    run.go(threads);
  }
  return proof.finish();
}
