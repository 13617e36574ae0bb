#include <cstdio>
#include <fstream>
#include <memory>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "EventSystem/EventManager.h"
#include "bench/stores/BareDatabase.h"
#include "bench/stores/BenchHome.h"
#include "bench/stores/Samples.h"
#include "bench/stores/StoreTables.h"
#include "bench/stores/Timing.h"

namespace EventSystemBench {
namespace {

// Seconds of the processor for start-up, nanoseconds for calls, bytes of resident memory.
struct Life {
  double host = 0;
  double manager = 0;
  double newEvent = 0;
  double nextEvent = 0;
  double memory = 0;
};

double residentBytes() {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with("VmRSS:")) return std::stod(line.substr(6)) * 1024;
  }
  throw std::runtime_error("/proc/self/status names no VmRSS");
}

Life liveOnce(const char* program, const std::filesystem::path& home) {
  const std::string command = std::string(program) + " life " + home.string();
  const std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), pclose);
  Life life;
  if (pipe == nullptr || std::fscanf(pipe.get(), "%lf %lf %lf %lf %lf", &life.host, &life.manager,
                                     &life.newEvent, &life.nextEvent, &life.memory) != 5) {
    throw std::runtime_error("the measuring process failed");
  }
  return life;
}

double medianOf(const std::vector<Life>& lives, double Life::*figure) {
  std::vector<double> values;
  values.reserve(lives.size());
  for (const Life& life : lives) values.push_back(life.*figure);
  return median(values);
}

void fill(const BenchHome& home, long rows) {
  {
    const EventSystemHost::Host host(optionsFor(home.path()));
    const EventSystem::EventManager manager;
  }
  const auto event = makeEvent(kShort);
  char text[2048];
  event->toString(text, sizeof text);
  BareDatabase(home.database(), BareDatabase::Flush::kNone).fill(rows, text);
}

void printRow(const char* program, long rows, double emptyMemory) {
  const BenchHome home("relaxed", "warning");
  fill(home, rows);
  std::vector<Life> lives;
  std::vector<double> scans;
  const int turns = rows > 1000000 ? 2 : 5;
  for (int turn = 0; turn < turns; ++turn) {
    BareDatabase bare(home.database(), BareDatabase::Flush::kNone);
    scans.push_back(secondsOf(Time::kCpu, [&] { bare.scan(); }));
    lives.push_back(liveOnce(program, home.path()));
  }
  const double start = medianOf(lives, &Life::manager);
  std::printf("%9ld %10.1f %10.1f %8.2f %10.1f %10.1f %10.2f %10.2f\n", rows, median(scans) * 1e3,
              start * 1e3, start / median(scans), start / static_cast<double>(rows) * 1e9,
              (medianOf(lives, &Life::memory) - emptyMemory) / static_cast<double>(rows),
              medianOf(lives, &Life::newEvent) / 1e3, medianOf(lives, &Life::nextEvent) / 1e3);
  std::fflush(stdout);
}

}  // namespace

void measureLife(const std::filesystem::path& home) {
  constexpr int kCalls = 2000;
  Life life;
  std::optional<EventSystemHost::Host> host;
  std::unique_ptr<EventSystem::EventManager> manager;
  life.host = secondsOf(Time::kCpu, [&] { host.emplace(optionsFor(home)); });
  life.manager =
      secondsOf(Time::kCpu, [&] { manager = std::make_unique<EventSystem::EventManager>(); });
  life.memory = residentBytes();
  const auto event = makeEvent(kShort);
  std::vector<double> calls;
  calls.reserve(kCalls);
  for (int i = 0; i < kCalls; ++i) {
    calls.push_back(secondsOf(Time::kWall, [&] { manager->newEvent(event.get(), 0); }));
  }
  life.newEvent = median(calls) * 1e9;
  calls.clear();
  const unsigned long middle = event->getId() / 2;
  for (unsigned long i = 0; i < kCalls; ++i) {
    EventSystem::Event* next = nullptr;
    calls.push_back(secondsOf(Time::kWall, [&] { manager->getNextEvent(middle + i, &next, 0); }));
    delete next;
  }
  life.nextEvent = median(calls) * 1e9;
  // The rows must be the same in the next turn.
  for (unsigned long id = event->getId() - kCalls + 1; id <= event->getId(); ++id) {
    manager->deleteEvent(id, 0);
  }
  std::printf("%f %f %f %f %f\n", life.host, life.manager, life.newEvent, life.nextEvent,
              life.memory);
}

void printStartup(const char* program, long largest) {
  double emptyMemory = 0;
  {
    const BenchHome home("relaxed", "warning");
    fill(home, 0);
    emptyMemory = liveOnce(program, home.path()).memory;
  }
  std::printf("an empty queue: %.1f MiB resident\n", emptyMemory / (1 << 20));
  std::printf("%9s %10s %10s %8s %10s %10s %10s %10s\n", "rows", "scan ms", "start ms", "ratio",
              "ns/row", "bytes/id", "new us", "next us");
  for (long rows = 10000; rows <= largest; rows *= 10) printRow(program, rows, emptyMemory);
}

}  // namespace EventSystemBench
