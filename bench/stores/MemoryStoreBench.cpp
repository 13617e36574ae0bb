// The in-memory store beside what it cannot do without: an event written as text and parsed.

#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

#include "EventSystem/HashEventStorage.h"
#include "bench/stores/BenchHome.h"
#include "bench/stores/Samples.h"
#include "bench/stores/Turns.h"

namespace EventSystemBench {
namespace {

using EventSystem::Event;
using EventSystem::HashEventStorage;

constexpr int kCalls = 256;

struct FilledStore {
  explicit FilledStore(const benchmark::State& state)
      : event(makeEvent(static_cast<Sample>(state.range(0)))), size(state.range(1)) {
    for (long i = 0; i < size; ++i) {
      store.writeEvent(event.get());
      copies.push_back(throughText(*event));
    }
  }

  const BenchHome home{"relaxed", "warning"};
  const EventSystemHost::Host host{optionsFor(home.path())};
  HashEventStorage store;
  std::unique_ptr<Event> event;
  const long size;
  std::vector<std::unique_ptr<Event>> copies;  // as many as the store holds
};

void writeEvent(benchmark::State& state) {
  FilledStore filled(state);
  std::vector<std::unique_ptr<Event>> copies(kCalls);
  Turns turns(kCalls);
  while (state.KeepRunning()) {
    turns.run(
        state,
        [&] {
          for (int i = 0; i < kCalls; ++i) filled.store.writeEvent(filled.event.get());
        },
        [&] {
          for (auto& copy : copies) copy = throughText(*filled.event);
        });
    for (auto& copy : copies) copy.reset();
    const unsigned long last = filled.store.getMaxId();
    for (unsigned long id = last - kCalls + 1; id <= last; ++id) filled.store.deleteEvent(id);
  }
  turns.report(state);
}

void readEvent(benchmark::State& state) {
  FilledStore filled(state);
  std::vector<std::unique_ptr<Event>> copies(kCalls);
  Turns turns(kCalls);
  std::size_t id = 0;
  std::size_t bare = 0;
  while (state.KeepRunning()) {
    turns.run(
        state,
        [&] {
          for (auto& copy : copies) {
            id = id % filled.copies.size() + 1;
            Event* read = nullptr;
            filled.store.readEvent(id, &read);
            copy.reset(read);
          }
        },
        [&] {
          for (auto& copy : copies) {
            bare = (bare + 1) % filled.copies.size();
            copy = throughText(*filled.copies[bare]);
          }
        });
  }
  turns.report(state);
}

void samplesAndSizes(benchmark::internal::Benchmark* bench) {
  bench->ArgNames({"sample", "held"})->UseManualTime()->Iterations(400);
  for (const int sample : {kShort, kLong}) {
    for (const int size : {1000, 100000}) bench->Args({sample, size});
  }
}

BENCHMARK(writeEvent)->Apply(samplesAndSizes);
BENCHMARK(readEvent)->Apply(samplesAndSizes);

}  // namespace
}  // namespace EventSystemBench
