// prove_power: cuts the power at every moment of a server's day, and looks at what is found.

#include <array>
#include <optional>
#include <random>

#include "tests/power/Days.h"
#include "tests/power/PowerTrial.h"
#include "tests/proof/Proof.h"

namespace EventSystemTest {
namespace {

constexpr std::array<const char*, 3> kDurabilities = {"strict", "group", "relaxed"};
constexpr std::size_t kPagesUntilCopied = 1000;

struct Options {
  std::string durability;
  std::string day = "short";
  std::optional<std::size_t> point;
  std::uint64_t damage = kNothingUnflushed;
  std::optional<std::uint64_t> second;
  std::size_t damages = 4;
  std::size_t losses = 3000;
};

void shortOne(Service& service, DiskLog&) {
  shortDay(service);
}
void longOne(Service& service, DiskLog& log) {
  longDay(service, [&log] { log.waitUntilCopied(kPagesUntilCopied); });
}
PowerTrial::Day dayCalled(const std::string& name) {
  return name == "long" ? longOne : shortOne;
}

class Run {
 public:
  Run(Proof& proof, const Options& options) : m_proof(proof), m_options(options) {}

  void repeat() {
    PowerTrial trial(m_options.durability, dayCalled(m_options.day));
    m_day = m_options.day;
    m_durability = m_options.durability;
    lose(trial, *m_options.point, m_options.damage, m_options.second);
    note(trial.figures());
  }

  void round(std::uint64_t number) {
    for (const char* durability : kDurabilities) {
      if (!m_options.durability.empty() && durability != m_options.durability) continue;
      m_durability = durability;
      m_random.seed(m_proof.seed() + number);
      m_day = "short";
      everyPoint(number == 0);
      m_day = "long";
      somePoints();
    }
    m_proof.figure("rounds");
  }

 private:
  void everyPoint(bool first) {
    PowerTrial trial(m_durability, shortOne);
    for (std::size_t point = 0; point < trial.points() && m_proof.more(0); ++point) {
      for (std::uint64_t damage = 0; first && damage <= kInOrderAndTheNewestTorn; ++damage) {
        lose(trial, point, damage, std::nullopt);
      }
      for (std::size_t i = 0; i < m_options.damages; ++i) {
        lose(trial, point, randomDamage(), std::nullopt);
      }
      lose(trial, point, randomDamage(), m_random());
    }
    note(trial.figures());
  }

  // In growing order, which is what a trial is fast at.
  void somePoints() {
    PowerTrial trial(m_durability, longOne);
    const std::size_t step = std::max<std::size_t>(1, trial.points() / m_options.losses);
    for (std::size_t point = m_random() % step; point < trial.points() && m_proof.more(0);
         point += 1 + m_random() % (2 * step - 1)) {
      lose(trial, point, randomDamage(), std::nullopt);
    }
    note(trial.figures());
  }

  std::uint64_t randomDamage() { return kInOrderAndTheNewestTorn + 1 + m_random() % 1000000000; }

  void lose(PowerTrial& trial, std::size_t point, std::uint64_t damage,
            std::optional<std::uint64_t> second) {
    if (second) m_proof.figure("second power losses");
    const std::string problem =
        second ? trial.loseTwice(point, damage, *second) : trial.lose(point, damage);
    if (problem.empty()) return;
    m_proof.failure(m_durability + ", point " + std::to_string(point) + ": " + problem,
                    "--durability " + m_durability + " --day " + m_day + " --point " +
                        std::to_string(point) + " --damage " + std::to_string(damage) +
                        (second ? " --second " + std::to_string(*second) : ""));
  }

  void note(const PowerFigures& figures) {
    m_proof.figure("moments", figures.points);
    m_proof.figure("power losses", figures.losses);
    m_proof.figure("restarts on disks that differ", figures.images);
    m_proof.figure("changes promised and found", figures.promised);
    m_proof.figure("changes found beyond that", figures.newer);
    m_proof.figure("audit rows that come twice", figures.auditTwice);
    m_proof.figure("audit rows gone in group and relaxed", figures.auditGone);
  }

  Proof& m_proof;
  const Options& m_options;
  std::string m_durability;
  std::string m_day;
  std::mt19937_64 m_random;
};

void add(CLI::App& app, Options& options) {
  app.add_option("--durability", options.durability, "Only strict, group or relaxed")
      ->check(CLI::IsMember({"strict", "group", "relaxed"}));
  app.add_option("--damages", options.damages, "Random damages for each moment of the short day");
  app.add_option("--losses", options.losses, "About how many power losses in the long day");
  app.add_option("--point", options.point, "Repeat one case: the moment, with --durability");
  app.add_option("--damage", options.damage, "Of the case: what becomes of unflushed writes");
  app.add_option("--second", options.second, "Of the case: a second loss after the first");
  app.add_option("--day", options.day, "Of the case: short or long")
      ->check(CLI::IsMember({"short", "long"}));
}

}  // namespace
}  // namespace EventSystemTest

int main(int count, char** arguments) {
  using namespace EventSystemTest;
  Proof proof("power loss", "Cuts the power at every moment of a server's day.");
  Options options;
  add(proof.options(), options);
  if (!proof.parse(count, arguments)) return proof.status();
  if (options.point && options.durability.empty()) options.durability = "strict";
  Run run(proof, options);
  if (options.point) {
    run.repeat();
    return proof.finish();
  }
  for (std::uint64_t round = 0; proof.more(round); ++round) run.round(round);
  return proof.finish();
}
