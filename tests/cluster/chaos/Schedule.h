// What is done to a cluster and its hosts, and when: drawn from a seed.
//
// An epoch has storms, in which faults begin and end at random and overlap; after each storm all is
// healed. No fault outlasts its storm.
//
// Thread safety: plain values and pure functions.

#ifndef EVENTSYSTEM_TESTS_CLUSTER_CHAOS_SCHEDULE_H
#define EVENTSYSTEM_TESTS_CLUSTER_CHAOS_SCHEDULE_H

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

namespace EventSystemTest {

enum class Fault {
  kKillNode,      // SIGKILL; started again with its data
  kStopNode,      // SIGSTOP, SIGCONT
  kKillMajority,  // of the nodes
  kStopMajority,
  kKillAllNodes,
  kRefuse,       // connections of hosts to nodes are cut and refused
  kSwallow,      // requests vanish before they arrive
  kSilence,      // requests arrive, answers vanish
  kLoseAnswers,  // the connection breaks when the answer to the next request arrives
  kKillHost,     // started again under the same name
  kStopHost,
  kCopy  // the host is killed, works without a cluster for a while, and comes back with new rows
};
constexpr int kFaults = 12;

const char* nameOf(Fault fault);

constexpr int kAll = -1;

struct Step {
  std::chrono::milliseconds begin;  // since the storm began
  std::chrono::milliseconds end;
  Fault fault;
  bool leader;  // the node is the one that leads when the fault begins, where there is one
  int node;     // or kAll, of the links
  int host;     // or kAll, of the links
  int rows;     // of kCopy

  friend bool operator==(const Step&, const Step&) = default;
};

// "1.250 s to 3.000 s: SIGKILL of the leader"
std::string toText(const Step& step);

using Storm = std::vector<Step>;  // in the order of their begin

struct ScheduleLimits {
  int nodes = 3;
  int hosts = 3;
  int storms = 3;
  std::chrono::milliseconds storm{9000};
};

std::vector<Storm> makeSchedule(std::uint64_t seed, std::uint64_t epoch,
                                const ScheduleLimits& limits);

std::string toText(const std::vector<Storm>& schedule);

}  // namespace EventSystemTest

#endif
