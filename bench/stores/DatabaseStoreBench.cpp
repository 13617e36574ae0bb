// The queue on the reference host beside SQLite used by hand.

#include <benchmark/benchmark.h>

#include <ctime>
#include <memory>
#include <string>
#include <vector>

#include "EventSystem/EventManager.h"
#include "bench/stores/BareDatabase.h"
#include "bench/stores/BenchHome.h"
#include "bench/stores/Samples.h"
#include "bench/stores/Turns.h"

namespace EventSystemBench {
namespace {

using EventSystem::Event;
using EventSystem::EventManager;

struct Pair {
  Pair(const std::string& durability, const std::string& logLevel, bool audit = false,
       int ageLimit = 0)
      : home(durability, logLevel, ageLimit),
        flush(durability == "strict" ? BareDatabase::Flush::kEachCommit
                                     : BareDatabase::Flush::kNone) {
    if (audit) home.addAuditFile();
    host = std::make_unique<EventSystemHost::Host>(optionsFor(home.path()));
    manager = std::make_unique<EventManager>();
    char buffer[2048];
    event->toString(buffer, sizeof buffer);
    text = buffer;
  }

  void add(int count) {
    for (int i = 0; i < count; ++i) manager->newEvent(event.get(), 0);
    for (int i = 0; i < count; ++i) bare.insert(text);
  }

  const BenchHome home;
  const BareDatabase::Flush flush;
  BareDatabase bare{home.path() / "bare.db", flush};
  std::unique_ptr<EventSystemHost::Host> host;
  std::unique_ptr<EventManager> manager;
  std::unique_ptr<Event> event = makeEvent(kShort);
  std::string text;
};

// Strict calls wait for the disk; all others compute.
Time timeOf(const std::string& durability) {
  return durability == "strict" ? Time::kWall : Time::kCpu;
}

const char* levelOf(const benchmark::State& state) {
  return state.range(0) == 0 ? "warning" : "info";
}

void newEvent(benchmark::State& state, const char* durability, int calls, bool withMaxId) {
  Pair pair(durability, levelOf(state));
  Turns turns(calls, timeOf(durability));
  while (state.KeepRunning()) {
    turns.run(
        state,
        [&] {
          for (int i = 0; i < calls; ++i) pair.manager->newEvent(pair.event.get(), 0);
        },
        [&] {
          for (int i = 0; i < calls; ++i) {
            withMaxId ? pair.bare.insertWithMaxId(pair.text) : pair.bare.insert(pair.text);
          }
        });
  }
  turns.report(state);
}

void deleteEvent(benchmark::State& state, const char* durability, int calls) {
  Pair pair(durability, levelOf(state));
  pair.add(calls * static_cast<int>(state.max_iterations));
  Turns turns(calls, timeOf(durability));
  unsigned long ours = 0;
  long bare = 0;
  while (state.KeepRunning()) {
    turns.run(
        state,
        [&] {
          for (int i = 0; i < calls; ++i) pair.manager->deleteEvent(++ours, 0);
        },
        [&] {
          for (int i = 0; i < calls; ++i) pair.bare.remove(++bare);
        });
  }
  turns.report(state);
}

// What the bare side does beside reading the row.
enum class Bare { kReadsOnly, kParses, kParsesAndLooksForAuditRows };

void getNextEvent(benchmark::State& state, bool audit, Bare does) {
  constexpr int kHeld = 10000;
  constexpr int kCalls = 50;
  Pair pair("relaxed", levelOf(state), audit);
  pair.add(kHeld);
  Turns turns(kCalls);
  unsigned long ours = 0;
  long bare = 0;
  char text[2048];
  while (state.KeepRunning()) {
    turns.run(
        state,
        [&] {
          for (int i = 0; i < kCalls; ++i) {
            Event* next = nullptr;
            pair.manager->getNextEvent(ours, &next, 0);
            ours = (ours + 1) % kHeld;
            delete next;
          }
        },
        [&] {
          for (int i = 0; i < kCalls; ++i) {
            if (does == Bare::kParsesAndLooksForAuditRows) lookForAuditRows(pair.home.audit());
            pair.bare.next(bare, text, sizeof text);
            bare = (bare + 1) % kHeld;
            if (does == Bare::kReadsOnly) continue;
            Event* next = nullptr;
            Event::fromString(text, &next);
            delete next;
          }
        });
  }
  turns.report(state);
}

// Every event in the queue is older than the age limit: each write walks them all.
void newEventAboveOldOnes(benchmark::State& state) {
  const auto held = static_cast<int>(state.range(1));
  Pair pair("relaxed", state.range(0) == 0 ? "error" : "info", false, 1);
  pair.manager.reset();
  pair.host.reset();
  const std::string day = std::to_string(time(nullptr) - 3 * 86400L);
  std::string old = pair.text;
  old.replace(old.find("date:") + 5, day.size(), day);
  BareDatabase(pair.home.database(), BareDatabase::Flush::kNone).fill(held, old);
  pair.host = std::make_unique<EventSystemHost::Host>(optionsFor(pair.home.path()));
  pair.manager = std::make_unique<EventManager>();
  pair.bare.fill(held, old);
  Turns turns(1);
  char text[2048];
  while (state.KeepRunning()) {
    turns.run(
        state, [&] { pair.manager->newEvent(pair.event.get(), 0); },
        [&] {  // the same rows read one by one and parsed
          for (long id = 0; (id = pair.bare.next(id, text, sizeof text)) != 0;) {
            Event* next = nullptr;
            Event::fromString(text, &next);
            delete next;
          }
        });
  }
  turns.report(state);
}

#define STORE_BENCH(function, name, ...)         \
  BENCHMARK_CAPTURE(function, name, __VA_ARGS__) \
      ->ArgNames({"log"})                        \
      ->Arg(0)                                   \
      ->Arg(1)                                   \
      ->UseManualTime()                          \
      ->Unit(benchmark::kMicrosecond)

STORE_BENCH(newEvent, strict, "strict", 1, false)->Iterations(300);
STORE_BENCH(newEvent, strict_beside_two_statements, "strict", 1, true)->Iterations(300);
STORE_BENCH(newEvent, relaxed, "relaxed", 50, false)->Iterations(300);
STORE_BENCH(newEvent, relaxed_beside_two_statements, "relaxed", 50, true)->Iterations(300);
STORE_BENCH(deleteEvent, strict, "strict", 1)->Iterations(300);
STORE_BENCH(deleteEvent, relaxed, "relaxed", 50)->Iterations(200);
STORE_BENCH(getNextEvent, no_audit_file, false, Bare::kReadsOnly)->Iterations(400);
STORE_BENCH(getNextEvent, no_audit_file_beside_parsing, false, Bare::kParses)->Iterations(400);
STORE_BENCH(getNextEvent, audit_file, true, Bare::kReadsOnly)->Iterations(200);
STORE_BENCH(getNextEvent, audit_file_beside_the_same_calls, true, Bare::kParsesAndLooksForAuditRows)
    ->Iterations(200);
BENCHMARK(newEventAboveOldOnes)
    ->ArgNames({"log", "old"})
    ->Args({0, 10000})
    ->Args({1, 10000})
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond)
    ->Iterations(5);

}  // namespace
}  // namespace EventSystemBench
