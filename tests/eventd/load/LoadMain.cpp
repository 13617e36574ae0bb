// prove_daemon: producers and consumers of an eventd that is killed under them.

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <optional>
#include <random>

#include "tests/eventd/load/Load.h"
#include "tests/proof/Proof.h"
#include "tests/support/TempDir.h"

namespace EventSystemTest {
namespace {

constexpr char kPurpose[] =
    "Kills eventd under its producers and consumers, and checks that each event that was\n"
    "acknowledged is read once. A round is a new home; 16 producers post over the Unix socket and\n"
    "send again, with the same key, what was not answered; 4 consumers read and delete.\n"
    "What the seed and the number of a round repeat: when eventd is killed. What they do not: how\n"
    "the processes take turns.";

struct Options {
  unsigned int producers = 16;
  unsigned int consumers = 4;
  unsigned int seconds = 20;  // of a round
  unsigned int kills = 6;     // in a round
};

LoadPlan planOf(const Options& options, std::uint64_t seed, std::uint64_t round) {
  LoadPlan plan;
  plan.name = "r" + std::to_string(round);
  plan.producers = options.producers;
  plan.consumers = options.consumers;
  plan.time = std::chrono::seconds(options.seconds);
  std::mt19937_64 random(seed * 1000003 + round);
  std::uniform_int_distribution<long> moment(0, plan.time.count());
  for (unsigned int i = 0; i < options.kills; ++i) plan.kills.emplace_back(moment(random));
  std::sort(plan.kills.begin(), plan.kills.end());
  return plan;
}

std::uint32_t percentile(const std::vector<std::uint32_t>& sorted, std::size_t percent) {
  return sorted.empty() ? 0 : sorted[(sorted.size() - 1) * percent / 100];
}

void report(Proof& proof, const LoadPlan& plan, const LoadResult& result,
            const std::string& repeat) {
  const auto& balance = result.balance;
  proof.figure("rounds");
  proof.figure("times eventd was killed", plan.kills.size());
  proof.figure("acknowledged events", balance.acknowledged);
  proof.figure("consumed events", balance.consumed);
  proof.figure("posts sent again", result.retried);
  proof.figure("posts that found the queue full", result.full);
  proof.figure("lost", balance.lost + result.left);
  proof.figure("doubled", balance.doubled);
  std::printf("%.1f s, %.0f events a second; of a post: median %u us, 99 of 100 within %u us\n",
              result.seconds, static_cast<double>(balance.acknowledged) / result.seconds,
              percentile(result.latencies, 50), percentile(result.latencies, 99));
  const auto fail = [&](std::uint64_t count, const std::string& what) {
    if (count > 0) proof.failure(std::to_string(count) + " events " + what, repeat);
  };
  fail(balance.lost, "were acknowledged and never read");
  fail(balance.doubled, "were read under two ids");
  fail(balance.unknown, "were read and never acknowledged");
  fail(result.left, "are left in the queue");
  for (const std::string& what : balance.wrong) proof.failure(what, repeat);
}

void runRound(Proof& proof, const Options& options, std::uint64_t round) {
  const TempDir home;
  std::ofstream(home.path() / "eventd.ini") << "[limits]\nrequests_per_second = 0\n";
  DaemonProcess daemon(EVENTD_PROGRAM, home.path());
  daemon.start();
  const LoadPlan plan = planOf(options, proof.seed(), round);
  const std::string repeat =
      "--seed " + std::to_string(proof.seed()) + " --round " + std::to_string(round) +
      " --seconds " + std::to_string(options.seconds) + " --kills " + std::to_string(options.kills);
  report(proof, plan, Load(daemon, plan).run(), repeat);
  if (const int status = daemon.stop(); status != 0) {
    proof.failure("eventd ended with status " + std::to_string(status), repeat);
  }
}

int run(int count, char** arguments) {
  Proof proof("daemon", kPurpose);
  Options options;
  std::optional<std::uint64_t> only;
  proof.options().add_option("--round", only, "Repeat this round alone");
  proof.options().add_option("--producers", options.producers, "Producers (default: 16)");
  proof.options().add_option("--consumers", options.consumers, "Consumers (default: 4)");
  proof.options().add_option("--seconds", options.seconds, "Seconds of a round (default: 20)");
  proof.options().add_option("--kills", options.kills, "Kills in a round (default: 6)");
  if (!proof.parse(count, arguments)) return proof.status();
  for (std::uint64_t done = 0; proof.more(done); ++done) {
    runRound(proof, options, only.value_or(done));
  }
  return proof.finish();
}

}  // namespace
}  // namespace EventSystemTest

int main(int count, char** arguments) {
  return EventSystemTest::run(count, arguments);
}
