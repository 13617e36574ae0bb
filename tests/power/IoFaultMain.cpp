// prove_io_faults: fails every call of the disk in a server's day, once or from then on for ever.

#include <optional>
#include <random>
#include <vector>

#include "tests/power/Days.h"
#include "tests/power/FaultTrial.h"
#include "tests/proof/Proof.h"

namespace EventSystemTest {
namespace {

struct Options {
  std::string durability;
  std::string fault;
  std::optional<std::size_t> point;
  bool forEver = false;
  std::string day = "short";
  std::size_t step = 1;
};

class Run {
 public:
  Run(Proof& proof, const Options& options) : m_proof(proof), m_options(options) {}

  void round() {
    for (const std::string durability : {"strict", "group", "relaxed"}) {
      if (!m_options.durability.empty() && durability != m_options.durability) continue;
      FaultTrial trial(durability, m_options.day == "brief" ? briefDay : shortDay);
      for (const Fault& fault : allFaults()) {
        if (m_options.fault.empty() || m_options.fault == fault.name)
          each(trial, durability, fault);
      }
      for (const auto& [name, figures] : trial.figures()) note(figures);
    }
    m_proof.figure("rounds");
  }

 private:
  void each(FaultTrial& trial, const std::string& durability, const Fault& fault) {
    if (m_options.point) {
      run(trial, durability, fault, *m_options.point, m_options.forEver);
      return;
    }
    const std::size_t calls = trial.calls(fault);
    for (std::size_t n = 1 + m_random() % m_options.step; n <= calls && m_proof.more(0);
         n += m_options.step) {
      run(trial, durability, fault, n, false);
      run(trial, durability, fault, n, true);
    }
  }

  void run(FaultTrial& trial, const std::string& durability, const Fault& fault, std::size_t n,
           bool forEver) {
    m_proof.figure(forEver ? "lasting faults" : "passing faults");
    const std::string problem = trial.run(fault, n, forEver ? Lasting::kForEver : Lasting::kOnce);
    if (problem.empty()) return;
    m_proof.failure(durability + ", " + fault.name + " " + std::to_string(n) + ": " + problem,
                    "--durability " + durability + " --fault " + fault.name + " --point " +
                        std::to_string(n) + (forEver ? " --for-ever" : "") + " --day " +
                        m_options.day);
  }

  void note(const FaultFigures& figures) {
    m_proof.figure("calls of the disk that failed", figures.faults);
    m_proof.figure("events acknowledged and found", figures.acknowledged);
    m_proof.figure("calls of the library that reported it", figures.refusedCalls);
    m_proof.figure("starts refused", figures.refusedStarts);
    m_proof.figure("events refused until a restart", figures.lateEvents);
    m_proof.figure("events refused that are there", figures.storedAnyway);
    m_proof.figure("acknowledged, lost with a reported flush (group, relaxed)",
                   figures.lostWithFlush);
    m_proof.figure("audit rows taken in twice", figures.auditTwice);
    m_proof.figure("audit rows in the log only", figures.auditLogged);
  }

  Proof& m_proof;
  const Options& m_options;
  std::mt19937_64 m_random{m_proof.seed()};
};

void add(CLI::App& app, Options& options) {
  std::vector<std::string> names;
  for (const Fault& fault : allFaults()) names.emplace_back(fault.name);
  app.add_option("--durability", options.durability, "Only strict, group or relaxed")
      ->check(CLI::IsMember({"strict", "group", "relaxed"}));
  app.add_option("--fault", options.fault, "Only faults of this kind")->check(CLI::IsMember(names));
  app.add_option("--day", options.day, "The day that is disturbed: short or brief")
      ->check(CLI::IsMember({"short", "brief"}));
  app.add_option("--step", options.step, "Only about one of so many calls")
      ->check(CLI::PositiveNumber);
  app.add_option("--point", options.point, "Only the n-th call");
  app.add_flag("--for-ever", options.forEver, "With --point: it and all that follow");
}

}  // namespace
}  // namespace EventSystemTest

int main(int count, char** arguments) {
  using namespace EventSystemTest;
  Proof proof("I/O faults", "Fails every call of the disk in a server's day.");
  Options options;
  add(proof.options(), options);
  if (!proof.parse(count, arguments)) return proof.status();
  Run run(proof, options);
  for (std::uint64_t round = 0; proof.more(round); ++round) run.round();
  return proof.finish();
}
