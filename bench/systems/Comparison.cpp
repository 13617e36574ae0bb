#include "bench/systems/Comparison.h"

#include <unistd.h>

#include <cstdio>

#include "bench/systems/Machine.h"

namespace EventSystemBench {
namespace {

constexpr std::size_t kMostEvents = 20000;  // the queue's own limit is 50000
constexpr int kFlushesPerCell = 5;

std::vector<Cell> emptyCells(std::size_t systems) {
  std::vector<Cell> cells;
  for (const std::size_t textBytes : {150u, 1500u}) {
    for (const std::size_t workers : {1u, 16u}) {
      for (std::size_t system = 0; system < systems; ++system) {
        cells.push_back({system, textBytes, workers, {}, {}});
      }
    }
  }
  return cells;
}

// A directory for one measurement, removed after it.
class Place {
 public:
  explicit Place(const std::filesystem::path& parent) : m_path(parent / "queue") {
    std::filesystem::create_directory(m_path);
  }
  ~Place() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
  }
  Place(const Place&) = delete;
  Place& operator=(const Place&) = delete;

  const std::filesystem::path& path() const { return m_path; }

 private:
  std::filesystem::path m_path;
};

void add(const Timings& timings, Cell& cell) {
  for (std::size_t i = 0; i < timings.size(); ++i) {
    const Timing& timing = timings[i];
    OperationFigures& figures = cell.operations[i];
    figures.perSecond.push_back(static_cast<double>(timing.latencies.size()) / timing.seconds);
    figures.latencies.insert(figures.latencies.end(), timing.latencies.begin(),
                             timing.latencies.end());
  }
}

// Why the system is to be asked no more, or nothing.
std::string measure(const SystemEntry& entry, const ComparisonPlan& plan, Cell& cell) {
  const Place place(plan.directory);
  try {
    const auto system = entry.start(place.path());
    add(run(*system, {cell.textBytes, cell.workers, plan.time, kMostEvents}), cell);
    return "";
  } catch (const NotOffered& reason) {
    return reason.what();
  } catch (const std::exception& error) {
    return std::string("failed: ") + error.what();
  }
}

void tellProgress(std::size_t done, std::size_t all, const std::string& name) {
  if (isatty(STDERR_FILENO) == 0) return;
  std::fprintf(stderr, "\r\033[K%3zu %%  %s", 100 * done / all, name.c_str());
}

// The cells in turns, round after round, until the time is up.
void measureAll(const ComparisonPlan& plan, Comparison& comparison) {
  const auto end = std::chrono::steady_clock::now() + plan.limit;
  const std::size_t all = comparison.cells.size() * static_cast<std::size_t>(plan.rounds);
  for (std::size_t done = 0; done < all; ++done) {
    if (std::chrono::steady_clock::now() >= end) break;
    Cell& cell = comparison.cells[done % comparison.cells.size()];
    const auto flushes = flushTimes(plan.directory, kFlushesPerCell);
    comparison.flushes.insert(comparison.flushes.end(), flushes.begin(), flushes.end());
    const SystemEntry& entry = comparison.systems[cell.system];
    tellProgress(done, all, entry.name);
    std::string& refusal = comparison.refusals[cell.system];
    if (refusal.empty()) refusal = measure(entry, plan, cell);
  }
  tellProgress(all, all, "\n");
}

void sayWhatIsMissing(Comparison& comparison) {
  for (Cell& cell : comparison.cells) {
    if (!cell.operations.front().perSecond.empty()) continue;
    const std::string& refusal = comparison.refusals[cell.system];
    cell.notMeasured = refusal.empty() ? "there was no time for it" : refusal;
  }
}

}  // namespace

Comparison compare(const ComparisonPlan& plan) {
  Comparison comparison{allSystems(), {}, {}, {}, 0};
  std::erase_if(comparison.systems, [&plan](const SystemEntry& system) {
    return system.name.find(plan.only) == std::string::npos;
  });
  if (comparison.systems.empty()) throw SystemError("no system's name has that text in it");
  const Disturbance disturbance;
  comparison.cells = emptyCells(comparison.systems.size());
  comparison.refusals.resize(comparison.systems.size());
  measureAll(plan, comparison);
  sayWhatIsMissing(comparison);
  comparison.disturbance = disturbance.byOthers();
  return comparison;
}

}  // namespace EventSystemBench
