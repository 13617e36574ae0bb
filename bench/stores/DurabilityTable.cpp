#include <atomic>
#include <chrono>
#include <cstdio>
#include <string>
#include <thread>
#include <vector>

#include "EventSystem/EventManager.h"
#include "bench/stores/BenchHome.h"
#include "bench/stores/Samples.h"
#include "bench/stores/StoreTables.h"
#include "bench/stores/Timing.h"

namespace EventSystemBench {
namespace {

// Events that were durable in each second.
double throughput(const std::string& durability, int threads, double seconds) {
  const BenchHome home(durability);
  EventSystemHost::Host host(optionsFor(home.path()));
  EventSystem::EventManager manager;
  std::atomic<bool> stop{false};
  std::atomic<long> done{0};
  std::vector<std::thread> producers;
  const double taken = secondsOf(Time::kWall, [&] {
    for (int i = 0; i < threads; ++i) {
      producers.emplace_back([&] {
        const auto event = makeEvent(kShort);
        while (!stop) {
          if (manager.newEvent(event.get(), 0) == 0 && host.waitDurable() == 0) ++done;
        }
      });
    }
    std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
    stop = true;
    for (std::thread& producer : producers) producer.join();
  });
  return static_cast<double>(done) / taken;
}

}  // namespace

void printDurability(int threads, double seconds) {
  constexpr int kTurns = 5;
  std::printf("%d threads, each waits for its event to be durable; events/s\n", threads);
  std::printf("%6s %12s %12s %8s\n", "turn", "strict", "group", "ratio");
  std::vector<double> ratios;
  for (int turn = 1; turn <= kTurns; ++turn) {
    const double strict = throughput("strict", threads, seconds);
    const double group = throughput("group", threads, seconds);
    ratios.push_back(group / strict);
    std::printf("%6d %12.0f %12.0f %8.2f\n", turn, strict, group, ratios.back());
    std::fflush(stdout);
  }
  std::printf("%6s %12s %12s %8.2f\n", "median", "", "", median(ratios));
}

}  // namespace EventSystemBench
