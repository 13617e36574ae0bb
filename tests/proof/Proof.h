// What the programs behind ./prove have in common: a seed, a budget of time or of rounds, the
// figures they tell, and the failures with the command that repeats each.
//
// A program counts what it did and ends with a report on standard output:
//   proof-figure<TAB>process death<TAB>rounds<TAB>1000
//   proof-failure<TAB>process death<TAB>an acknowledged event is gone<TAB>prove_death --seed 7 ...
// ./prove makes its table of these lines; everything else a program prints is for a reader.
//
// Thread safety: figure(), failure() and more() may be called by any thread; the rest by one.

#ifndef EVENTSYSTEM_TESTS_PROOF_PROOF_H
#define EVENTSYSTEM_TESTS_PROOF_PROOF_H

#include <CLI/CLI.hpp>
#include <chrono>
#include <cstdint>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace EventSystemTest {

class Proof {
 public:
  // `name` as the table shows it ("process death"); `purpose`, one sentence for --help.
  Proof(std::string name, const std::string& purpose);

  // For options of the program's own, added before parse().
  CLI::App& options() { return m_app; }

  // Reads --seed (default: one of its own, printed), --rounds and --minutes (default: one round).
  // False when the program is to end at once with status().
  bool parse(int count, char** arguments);

  std::uint64_t seed() const { return m_seed; }

  // Whether to begin round `done`, counted from 0: not when there were as many as asked for, nor
  // when the time is up, nor after a failure.
  bool more(std::uint64_t done) const;

  // Adds to what the table shows under `what`; shown in the order of first use.
  void figure(const std::string& what, std::uint64_t number = 1);

  // `repeat`: the arguments that repeat it with this program.
  void failure(const std::string& what, const std::string& repeat);

  // Prints the report. 0 when nothing failed, 1 when something did, as the exit status of main().
  int finish();
  int status() const { return m_status; }

 private:
  const std::string m_name;
  CLI::App m_app;
  std::uint64_t m_seed;
  std::uint64_t m_rounds = 0;
  double m_minutes = 0;
  std::chrono::steady_clock::time_point m_end;
  int m_status = 0;
  mutable std::mutex m_mutex;
  std::vector<std::pair<std::string, std::uint64_t>> m_figures;
  std::vector<std::pair<std::string, std::string>> m_failures;
};

}  // namespace EventSystemTest

#endif
