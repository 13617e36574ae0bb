// prove_cluster: epochs of faults at random against the cluster mode.

#include <cstdio>
#include <exception>

#include "tests/cluster/chaos/Chaos.h"
#include "tests/proof/Proof.h"

namespace EventSystemTest {
namespace {

void addFigures(Proof& proof, const Chaos& chaos) {
  const LedgerFigures& ledger = chaos.ledger();
  const auto figure = [&proof](const std::string& what, long number) {
    proof.figure(what, static_cast<std::uint64_t>(number));
  };
  for (int fault = 0; fault < kFaults; ++fault) {
    figure(nameOf(static_cast<Fault>(fault)),
           chaos.figures().faults.at(static_cast<std::size_t>(fault)));
  }
  figure("of these at the leader", chaos.figures().leaders);
  figure("lives of hosts", ledger.lives);
  figure("starts refused without a majority", chaos.figures().refusedStarts);
  figure("acknowledged events", ledger.written);
  figure("acknowledged deletes", ledger.deleted);
  figure("answered reads", ledger.reads);
  figure("rows copied", ledger.rows);
  figure("failed calls", ledger.failedCalls);
  figure("writes told to have stored nothing", ledger.refused);
  figure("unknown outcomes", ledger.unknown);
  figure("of these stored", ledger.unknownStored);
  figure("longest wait for an answer in ms",
         std::chrono::duration_cast<std::chrono::milliseconds>(ledger.longestWait).count());
}

void addVerdict(Proof& proof, const HistoryVerdict& verdict) {
  const auto figure = [&proof](const std::string& what, long number) {
    proof.figure(what, static_cast<std::uint64_t>(number));
  };
  figure("lost", verdict.lost);
  figure("doubled", verdict.doubled);
  figure("reordered", verdict.reordered);
  figure("came back", verdict.resurrected);
  figure("invented", verdict.invented);
}

// Empty when all is well.
std::string runEpoch(Proof& proof, Chaos& chaos, std::uint64_t epoch) {
  try {
    const HistoryVerdict verdict = chaos.run(epoch);
    addVerdict(proof, verdict);
    return verdict.wrong() == 0 ? "" : verdict.details;
  } catch (const std::exception& problem) {
    return problem.what();
  }
}

void run(Proof& proof, std::uint64_t first) {
  Chaos chaos(proof.seed(), ScheduleLimits());
  for (std::uint64_t done = 0; proof.more(done); ++done) {
    const std::uint64_t epoch = first + done;
    const std::string wrong = runEpoch(proof, chaos, epoch);
    proof.figure("epochs");
    std::printf("epoch %lu: %ld events, %ld deletes acknowledged so far\n", epoch,
                chaos.ledger().written, chaos.ledger().deleted);
    if (!wrong.empty()) {
      const std::string schedule = toText(chaos.schedule(epoch));
      std::printf("seed %lu, epoch %lu:\n%s\n%s", proof.seed(), epoch, wrong.c_str(),
                  schedule.c_str());
      proof.failure(wrong.substr(0, wrong.find('\n')),
                    "--seed " + std::to_string(proof.seed()) + " --epoch " + std::to_string(epoch));
    }
    std::fflush(stdout);
  }
  addFigures(proof, chaos);
}

}  // namespace
}  // namespace EventSystemTest

int main(int count, char** arguments) {
  EventSystemTest::Proof proof(
      "cluster faults",
      "Hosts in cluster mode write, read and consume while nodes, hosts and the connections "
      "between "
      "them fail at random; each epoch ends healed and is judged. The seed and the epoch determine "
      "the schedule of the faults, not the timing of the processes: a failure may take several "
      "tries to come again.");
  std::uint64_t first = 1;
  proof.options().add_option("--epoch", first, "The first epoch, to repeat one (default: 1)");
  if (!proof.parse(count, arguments)) return proof.status();
  try {
    EventSystemTest::run(proof, first);
  } catch (const std::exception& problem) {
    proof.failure(problem.what(), "--seed " + std::to_string(proof.seed()));
  }
  return proof.finish();
}
