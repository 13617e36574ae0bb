#include "bench/systems/JsonReport.h"

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>

#include "bench/systems/Statistics.h"

namespace EventSystemBench {
namespace {

using Json = nlohmann::ordered_json;

constexpr std::array<const char*, kOperations> kNames = {"produce", "read", "delete"};
constexpr double kMicroseconds = 1e6;

Json describe(const Machine& machine, const Comparison& comparison) {
  const std::vector<double>& flushes = comparison.flushes;
  return {{"processor", machine.processor},
          {"cores", machine.cores},
          {"kernel", machine.kernel},
          {"file_system", machine.fileSystem},
          {"load_before", machine.load},
          {"used_by_others", comparison.disturbance},
          {"flush_p50_us", median(flushes) * kMicroseconds},
          {"flush_p99_us", percentile(flushes, 0.99) * kMicroseconds}};
}

Json describe(const SystemEntry& system, const std::string& refusal) {
  return {{"name", system.name},
          {"promise", system.promise == Promise::kDurable ? "durable" : "relaxed"},
          {"settings", system.settings},
          {"produce", system.produce},
          {"read", system.read},
          {"delete", system.remove},
          {"refused", refusal}};
}

Json describe(const OperationFigures& figures) {
  return {{"calls", figures.latencies.size()},
          {"rounds", figures.perSecond.size()},
          {"per_second", median(figures.perSecond)},
          {"per_second_lowest", *std::ranges::min_element(figures.perSecond)},
          {"per_second_highest", *std::ranges::max_element(figures.perSecond)},
          {"p50_us", percentile(figures.latencies, 0.5) * kMicroseconds},
          {"p99_us", percentile(figures.latencies, 0.99) * kMicroseconds}};
}

Json describe(const Cell& cell, const SystemEntry& system) {
  Json json = {{"system", system.name}, {"bytes", cell.textBytes}, {"workers", cell.workers}};
  if (!cell.notMeasured.empty()) {
    json["not_measured"] = cell.notMeasured;
    return json;
  }
  for (std::size_t i = 0; i < kNames.size(); ++i) json[kNames[i]] = describe(cell.operations[i]);
  return json;
}

}  // namespace

std::string toJson(const Comparison& comparison, const ComparisonPlan& plan,
                   const Machine& machine) {
  Json systems = Json::array();
  for (std::size_t i = 0; i < comparison.systems.size(); ++i) {
    systems.push_back(describe(comparison.systems[i], comparison.refusals[i]));
  }
  Json cells = Json::array();
  for (const Cell& cell : comparison.cells) {
    cells.push_back(describe(cell, comparison.systems[cell.system]));
  }
  return Json{{"machine", describe(machine, comparison)},
              {"rounds", plan.rounds},
              {"milliseconds", plan.time.count()},
              {"systems", systems},
              {"cells", cells}}
      .dump(2);
}

}  // namespace EventSystemBench
