// prove_death: rounds of worker processes that are killed, by seed and number.

#include "tests/death/DeathRound.h"
#include "tests/proof/Proof.h"

namespace EventSystemTest {
namespace {

constexpr char kPurpose[] =
    "Kills the process that holds the queue, again and again, and checks what it leaves.\n"
    "A round is a new home on which workers live one after the other; each but the last dies by\n"
    "SIGKILL: while it starts, repairs, imports, works or closes. Rounds take the durabilities in\n"
    "turn.\n"
    "What the seed and the number of a round repeat: the settings, the number of threads, the\n"
    "events and what each thread does in which order, and after which stage, acknowledged call or\n"
    "file call the worker dies. What they do not: how threads take turns, and so the state at a\n"
    "death, and the last microseconds before a kill from outside. A round whose deaths are all in\n"
    "file calls of workers with one thread repeats exactly.";

void runRound(Proof& proof, std::uint64_t number, bool verbose) {
  if (verbose) {
    for (const LifePlan& life : planRound(proof.seed(), number).lives) {
      std::printf("%s\n", life.text().c_str());
    }
  }
  DeathRound round(proof.seed(), number);
  round.run();
  for (const auto& [what, count] : round.figures()) proof.figure(what, count);
  for (const std::string& what : round.failures()) {
    proof.failure(what, "--seed " + std::to_string(proof.seed()) + " --round " +
                            std::to_string(number) + " --rounds 100");
  }
}

int run(int count, char** arguments) {
  Proof proof("process death", kPurpose);
  std::optional<std::uint64_t> only;
  bool verbose = false;
  proof.options().add_option("--round", only, "Repeat this round alone, as often as --rounds says");
  proof.options().add_flag("--verbose", verbose, "Tell what each round is to be");
  if (!proof.parse(count, arguments)) return proof.status();
  for (std::uint64_t done = 0; proof.more(done); ++done) {
    runRound(proof, only.value_or(done), verbose);
  }
  return proof.finish();
}

}  // namespace
}  // namespace EventSystemTest

int main(int count, char** arguments) {
  return EventSystemTest::run(count, arguments);
}
