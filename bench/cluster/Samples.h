// How long many calls took.
//
// Thread safety: plain values.

#ifndef EVENTSYSTEM_BENCH_CLUSTER_SAMPLES_H
#define EVENTSYSTEM_BENCH_CLUSTER_SAMPLES_H

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <vector>

namespace Bench {

class Samples {
 public:
  using Clock = std::chrono::steady_clock;

  // Calls it and takes its time.
  template <class Call>
  void time(Call&& call) {
    const auto begin = Clock::now();
    call();
    m_microseconds.push_back(
        std::chrono::duration<double, std::micro>(Clock::now() - begin).count());
  }

  void append(const Samples& others);

  std::size_t count() const { return m_microseconds.size(); }
  double median() const { return quantile(0.5); }
  double p99() const { return quantile(0.99); }

  // From one process to another.
  void save(const std::filesystem::path& file) const;
  static Samples load(const std::filesystem::path& file);

 private:
  double quantile(double fraction) const;

  std::vector<double> m_microseconds;
};

}  // namespace Bench

#endif
