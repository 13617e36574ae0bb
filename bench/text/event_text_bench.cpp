// How long an event string of each kind takes to parse (the event's deletion included) and to
// write: the plain formulation, the library, and the ratio of both, in one run on one core.
//
//   event_text_bench [--benchmark_...]      prints Google Benchmark's lines, in the format asked
//   for,
//                                           and then the table, to standard error

#include <benchmark/benchmark.h>
#include <sched.h>

#include <cstdio>
#include <map>
#include <memory>
#include <string>

#include "EventSystem/Event.h"
#include "tests/oracle/events/EventOracle.h"

namespace {

using EventSystem::Event;
using EventPtr = std::unique_ptr<Event>;

struct Kind {
  const char* name;
  const char* text;
};

// As servers write them.
constexpr Kind kKinds[] = {
    {"Legacy",
     "EVENT{version:1;type:1;id:1048577;date:1763694265;LEGACYEVENT{payload:replication target "
     "backup-dc2-03 unreachable, retry 3 of 5 in 120 s;}}"},
    {"ImageRep",
     "EVENT{version:1;type:2;id:1048578;date:1763694265;lsu:PrimaryVolume;IMAGEREPEVENT{size:"
     "4194304;path:/var/lib/server/replication/outgoing/image_1763694265_C1_F1.img;}}"},
    {"LSUStatus",
     "EVENT{version:1;type:3;id:1048579;date:1763694265;LSUSTATUSEVENT{state:2;server:"
     "backup-dc2-03.example.com;}}"},
    {"ServerStatus",
     "EVENT{version:1;type:4;id:1048580;date:1763694265;SERVERSTATUSEVENT{state:1;server:"
     "backup-dc2-03.example.com;}}"},
    {"Capacity",
     "EVENT{version:1;type:5;id:1048581;date:1763694265;CAPACITYEVENT{capacity:107374182400000;"
     "capacityphys:98784247808000;used:54975581388800;usedphys:21990232555520;server:"
     "backup-dc2-03.example.com;}}"},
    {"Abilities",
     "EVENT{version:1;type:6;id:1048582;date:1763694265;ABILITIESEVENT{flags:0x1F03;server:"
     "backup-dc2-03.example.com;}}"},
    {"Activity",
     "EVENT{version:1;type:7;id:1048583;date:1763694265;{ACTIVITYEVENT{version:1;action:12;time:"
     "1763694201;severity:2;msg:Compaction of container 4711 finished, 18 GB reclaimed;}}"},
    {"Audit",
     "EVENT{version:1;type:8;id:1048584;date:1763694265;AUDITEVENT{version:1;action:7;time:"
     "1763694201;loadSize:4096;AUditMSg:user admin@example.com changed retention of policy daily "
     "from 30 to 45 days;}}"},
    {"Kelp",
     "EVENT{version:1;type:9;id:1048585;date:1763694265;KELPEVENT{version:1;severity:2;issue:3;"
     "share_type:1;file_group:281474976710701;name:417;host:23;string:quota of share projects "
     "exceeded;}}"}};

using Parse = int (*)(const char* text, Event** event);
using Write = int (*)(Event& event, char* buffer, unsigned long size);

int writeByLibrary(Event& event, char* buffer, unsigned long size) {
  return event.toString(buffer, size);
}

void parse(benchmark::State& state, const Kind& kind, Parse parseText) {
  for ([[maybe_unused]] auto iteration : state) {
    Event* event = nullptr;
    benchmark::DoNotOptimize(parseText(kind.text, &event));
    const EventPtr owner(event);
    if (event == nullptr) return state.SkipWithError("the text does not parse");
  }
}

void write(benchmark::State& state, const Kind& kind, Write writeEvent) {
  Event* event = nullptr;
  Event::fromString(kind.text, &event);
  const EventPtr owner(event);
  char buffer[2048];
  for ([[maybe_unused]] auto iteration : state) {
    benchmark::DoNotOptimize(writeEvent(*event, buffer, sizeof buffer));
    benchmark::ClobberMemory();
  }
  if (std::string(kind.text) != buffer) state.SkipWithError("the text comes back changed");
}

// Keeps the best time of each benchmark's repetitions, by name.
class Collector : public benchmark::BenchmarkReporter {
 public:
  bool ReportContext(const Context& context) override { return m_display.ReportContext(context); }
  void Finalize() override { m_display.Finalize(); }

  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs) {
      if (run.error_occurred || run.run_type != Run::RT_Iteration) continue;
      const auto [best, isNew] = m_best.emplace(run.run_name.function_name, 0);
      const double time = run.GetAdjustedCPUTime();
      if (isNew || time < best->second) best->second = time;
    }
    m_display.ReportRuns(runs);
  }

  void printTable() const {
    std::fprintf(stderr, "\n%-14s %8s %8s %6s   %8s %8s %6s\n", "best, ns", "parse:", "", "",
                 "write:", "", "");
    std::fprintf(stderr, "%-14s %8s %8s %6s   %8s %8s %6s\n", "kind", "oracle", "ours", "ratio",
                 "oracle", "ours", "ratio");
    for (const Kind& kind : kKinds) {
      const std::string name = kind.name;
      std::fprintf(stderr, "%-14s", kind.name);
      printPair("parse/" + name);
      printPair("  write/" + name);
      std::fprintf(stderr, "\n");
    }
  }

 private:
  void printPair(const std::string& name) const {
    const std::size_t indent = name.find_first_not_of(' ');
    const std::string key = name.substr(indent);
    const auto oracle = m_best.find(key + "/oracle");
    const auto ours = m_best.find(key + "/ours");
    if (oracle == m_best.end() || ours == m_best.end()) return;
    std::fprintf(stderr, "%s %8.1f %8.1f %6.1f", std::string(indent, ' ').c_str(), oracle->second,
                 ours->second, oracle->second / ours->second);
  }

  benchmark::BenchmarkReporter& m_display = *benchmark::CreateDefaultDisplayReporter();
  std::map<std::string, double> m_best;
};

void registerKind(const Kind& kind) {
  const std::string name = kind.name;
  const auto add = [](const std::string& title, auto function, auto&&... arguments) {
    benchmark::RegisterBenchmark(title.c_str(), function, arguments...)->Repetitions(5);
  };
  namespace Oracle = EventSystemTest::Oracle;
  add("parse/" + name + "/oracle", parse, kind, Parse(Oracle::parse));
  add("parse/" + name + "/ours", parse, kind, Parse(Event::fromString));
  add("write/" + name + "/oracle", write, kind, Write(Oracle::write));
  add("write/" + name + "/ours", write, kind, Write(writeByLibrary));
}

}  // namespace

int main(int count, char** arguments) {
  cpu_set_t core;
  CPU_ZERO(&core);
  CPU_SET(static_cast<std::size_t>(sched_getcpu()), &core);
  sched_setaffinity(0, sizeof core, &core);
  benchmark::Initialize(&count, arguments);
  if (benchmark::ReportUnrecognizedArguments(count, arguments)) return 2;
  for (const Kind& kind : kKinds) registerKind(kind);
  Collector collector;
  benchmark::RunSpecifiedBenchmarks(&collector);
  collector.printTable();
  return 0;
}
