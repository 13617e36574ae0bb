#include "tests/cluster/chaos/Schedule.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "tests/differential/Random.h"

namespace EventSystemTest {
namespace {

using std::chrono::milliseconds;

// How often each fault is drawn, in the order of Fault.
constexpr std::array<unsigned int, kFaults> kWeights = {14, 10, 5, 4, 4, 10, 8, 12, 12, 14, 5, 8};

constexpr unsigned int kLongestPause = 1200;
constexpr unsigned int kShortestFault = 150;
constexpr unsigned int kLongestFault = 4000;
constexpr unsigned int kMostRows = 8;

Fault drawFault(Random& random) {
  unsigned int sum = 0;
  for (const unsigned int weight : kWeights) sum += weight;
  unsigned int drawn = random.below(sum);
  int fault = 0;
  for (const unsigned int weight : kWeights) {
    if (drawn < weight) break;
    drawn -= weight;
    ++fault;
  }
  return static_cast<Fault>(fault);
}

bool isAboutLinks(Fault fault) {
  return fault == Fault::kRefuse || fault == Fault::kSwallow || fault == Fault::kSilence ||
         fault == Fault::kLoseAnswers;
}

bool isAboutAHost(Fault fault) {
  return fault == Fault::kKillHost || fault == Fault::kStopHost || fault == Fault::kCopy;
}

// A third of the faults of links are about all nodes, and of these and others a half about all
// hosts.
Step drawStep(Random& random, milliseconds begin, milliseconds latest,
              const ScheduleLimits& limits) {
  Step step{};
  step.begin = begin;
  step.end = std::min(
      latest, begin + milliseconds(kShortestFault + random.below(kLongestFault - kShortestFault)));
  step.fault = drawFault(random);
  step.node = static_cast<int>(random.below(static_cast<unsigned int>(limits.nodes)));
  step.host = static_cast<int>(random.below(static_cast<unsigned int>(limits.hosts)));
  step.leader = !isAboutAHost(step.fault) && random.oneIn(3);
  step.rows = static_cast<int>(1 + random.below(kMostRows));
  const bool allNodes = random.oneIn(3);
  const bool allHosts = random.oneIn(2);
  if (isAboutLinks(step.fault)) {
    if (allNodes && !step.leader) step.node = kAll;
    if (allHosts) step.host = kAll;
  }
  return step;
}

std::string secondsText(milliseconds time) {
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%.3f s", static_cast<double>(time.count()) / 1000);
  return text.data();
}

std::string nodeText(const Step& step) {
  if (step.node == kAll) return "all nodes";
  const std::string node = "node " + std::to_string(step.node);
  return step.leader ? "the leader (or " + node + ")" : node;
}

std::string hostText(const Step& step) {
  return step.host == kAll ? "all hosts" : "host " + std::to_string(step.host);
}

std::string targetText(const Step& step) {
  switch (step.fault) {
    case Fault::kKillNode:
    case Fault::kStopNode:
      return nodeText(step);
    case Fault::kKillMajority:
    case Fault::kStopMajority:
      return nodeText(step) + " and the one after it";
    case Fault::kKillAllNodes:
      return "";
    case Fault::kCopy:
      return hostText(step) + ", " + std::to_string(step.rows) + " rows";
    case Fault::kKillHost:
    case Fault::kStopHost:
      return hostText(step);
    default:
      return hostText(step) + " with " + nodeText(step);
  }
}

}  // namespace

const char* nameOf(Fault fault) {
  static constexpr std::array<const char*, kFaults> kNames = {
      "node killed",        "node stopped",      "majority killed",
      "majority stopped",   "all nodes killed",  "connections refused",
      "requests swallowed", "answers swallowed", "connections cut before the answer",
      "host killed",        "host stopped",      "database copied"};
  return kNames.at(static_cast<std::size_t>(fault));
}

std::string toText(const Step& step) {
  const std::string target = targetText(step);
  return secondsText(step.begin) + " to " + secondsText(step.end) + ": " + nameOf(step.fault) +
         (target.empty() ? "" : ": " + target);
}

std::vector<Storm> makeSchedule(std::uint64_t seed, std::uint64_t epoch,
                                const ScheduleLimits& limits) {
  Random random(seed, epoch);
  std::vector<Storm> schedule(static_cast<std::size_t>(limits.storms));
  for (Storm& storm : schedule) {
    milliseconds time(random.below(kLongestPause));
    while (time + milliseconds(kShortestFault) < limits.storm) {
      storm.push_back(drawStep(random, time, limits.storm, limits));
      time += milliseconds(random.below(kLongestPause));
    }
  }
  return schedule;
}

std::string toText(const std::vector<Storm>& schedule) {
  std::string text;
  for (std::size_t i = 0; i < schedule.size(); ++i) {
    text += "storm " + std::to_string(i + 1) + "\n";
    for (const Step& step : schedule[i]) text += "  " + toText(step) + "\n";
  }
  return text;
}

}  // namespace EventSystemTest
