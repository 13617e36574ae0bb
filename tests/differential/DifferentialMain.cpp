// event_text_differential: runs as many cases as one likes, on as many threads, and ends at the
// first difference with the command that repeats it.

#include <algorithm>
#include <atomic>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "tests/differential/Differential.h"

namespace EventSystemTest {
namespace {

struct Options {
  std::uint64_t cases = 1000000;
  std::uint64_t seed = 1;
  std::uint64_t first = 0;
  std::uint64_t threads = 1;
};

// One run; its workers take blocks of cases in turn.
class Run {
 public:
  explicit Run(const Options& options) : m_options(options), m_next(options.first) {}

  bool go() {
    std::vector<std::thread> threads;
    for (std::uint64_t i = 0; i < m_options.threads; ++i) threads.emplace_back([this] { work(); });
    for (std::thread& thread : threads) thread.join();
    report("done");
    return !m_differs;
  }

 private:
  static constexpr std::uint64_t kBlock = 1 << 16;
  static constexpr std::uint64_t kReportEvery = 10000000;

  void work() {
    const std::uint64_t end = m_options.first + m_options.cases;
    Differential differential(m_options.seed);
    Tally before;
    while (!m_differs) {
      const std::uint64_t block = m_next.fetch_add(kBlock);
      if (block >= end) break;
      runBlock(differential, block, std::min(block + kBlock, end));
      const std::scoped_lock lock(m_mutex);
      const std::uint64_t reported = m_tally.cases() / kReportEvery;
      m_tally.add(difference(differential.tally(), before));
      before = differential.tally();
      if (m_tally.cases() / kReportEvery != reported) report("so far");
    }
  }

  void runBlock(Differential& differential, std::uint64_t number, std::uint64_t end) {
    for (; number < end; ++number) {
      if (differential.run(number)) continue;
      const std::scoped_lock lock(m_mutex);
      m_differs = true;
      std::printf("%srepeat with: event_text_differential --seed %lu --first %lu --cases 1\n",
                  differential.difference().c_str(), m_options.seed, number);
      return;
    }
  }

  static Tally difference(const Tally& after, const Tally& before) {
    return {after.accepted - before.accepted, after.refused - before.refused,
            after.events - before.events, after.writings - before.writings};
  }

  void report(const char* when) const {
    std::printf(
        "%s: seed %lu, first %lu: %lu cases compared (%lu texts accepted, %lu refused, %lu "
        "events; %lu writings)%s\n",
        when, m_options.seed, m_options.first, m_tally.cases(), m_tally.accepted, m_tally.refused,
        m_tally.events, m_tally.writings, m_differs ? ", A DIFFERENCE" : ", no difference");
    std::fflush(stdout);
  }

  const Options m_options;
  std::atomic<std::uint64_t> m_next;
  std::atomic<bool> m_differs{false};
  std::mutex m_mutex;
  Tally m_tally;
};

bool readOptions(int count, char** arguments, Options& options) {
  for (int i = 1; i < count; i += 2) {
    const std::string name = arguments[i];
    std::uint64_t* const value = name == "--cases"     ? &options.cases
                                 : name == "--seed"    ? &options.seed
                                 : name == "--first"   ? &options.first
                                 : name == "--threads" ? &options.threads
                                                       : nullptr;
    if (value == nullptr || i + 1 == count) return false;
    const char* const text = arguments[i + 1];
    const auto [end, error] = std::from_chars(text, text + strlen(text), *value);
    if (error != std::errc() || *end != '\0') return false;
  }
  return true;
}

}  // namespace
}  // namespace EventSystemTest

int main(int count, char** arguments) {
  EventSystemTest::Options options;
  if (!EventSystemTest::readOptions(count, arguments, options)) {
    std::fputs("usage: event_text_differential [--cases N] [--seed S] [--first I] [--threads T]\n",
               stderr);
    return 2;
  }
  return EventSystemTest::Run(options).go() ? 0 : 1;
}
