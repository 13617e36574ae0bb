#include "bench/cluster/Measurements.h"

#include <memory>
#include <stdexcept>
#include <string>

#include "apps/etcd_nodes/NodeGroup.h"
#include "bench/cluster/Contention.h"
#include "bench/cluster/Pair.h"
#include "tests/support/TempDir.h"

namespace Bench {
namespace {

constexpr unsigned long kShort = 50;
constexpr unsigned int kShortDsid = 7;

class Nodes {
 public:
  Nodes(const Extent& extent, int count) : directory(extent.directory) {
    EtcdNodes::NodeGroupOptions options;
    options.directory = directory.path();
    for (int i = 0; i < count; ++i) options.names.push_back("node" + std::to_string(i));
    group = std::make_unique<EtcdNodes::NodeGroup>(options);
    for (int i = 0; i < count; ++i) group->start(i);
    // A lease is granted when there is a leader.
    for (const std::string& endpoint : group->endpoints()) BareQueue({endpoint}, "start", "");
  }

  std::string suffix() const {
    return group->size() == 1 ? ", 1 node" : ", " + std::to_string(group->size()) + " nodes";
  }

  EventSystemTest::TempDir directory;
  std::unique_ptr<EtcdNodes::NodeGroup> group;
};

// As many ids as a short queue has, evenly over the first `events`.
std::vector<unsigned long> idsOver(unsigned long events) {
  std::vector<unsigned long> ids;
  for (unsigned long i = 0; i < kShort; ++i) ids.push_back(events * i / kShort);
  return ids;
}

void expect(unsigned long found, unsigned long id) {
  if (found != id) throw std::runtime_error("another event was found");
}

void measureLong(Pair& pair, int rounds, unsigned long held) {
  const auto library = [&pair](unsigned long id) { expect(pair.library.next(id), id + 1); };
  const auto bare = [&pair](unsigned long id) { expect(pair.bare.next(id), id + 1); };
  const auto range = [&pair](unsigned long id) { expect(pair.bare.nextOfAll(id), id + 1); };
  const auto few = [&pair, held](unsigned long id) {
    const unsigned long afterId = id * kShort / held;
    expect(pair.library.nextOf(kShortDsid, afterId), afterId + 1);
  };
  const auto ids = idsOver(held);
  const std::string count = std::to_string(held);
  printRow("getNextEvent, " + count + " events", timeFinds(rounds, ids, library, bare));
  printRow("  the same against one range to the end", timeFinds(rounds, ids, library, range));
  printRow("  library: " + count + " (left), 50 events (right)",
           timeFinds(rounds, ids, library, few));
}

// The library looks from the start of the queue, and knows after once that nothing is there; the
// bare side is told behind which id to look.
void measureGap(Pair& pair, int rounds, unsigned long held) {
  pair.bare.removeAll(1, held);
  BareQueue(pair.endpoints, kLibraryQueue, "").removeAll(1, held);
  const auto library = [&pair, held](unsigned long) { expect(pair.library.next(0), held + 1); };
  const auto range = [&pair, held](unsigned long) { expect(pair.bare.nextOfAll(0), held + 1); };
  const auto bare = [&pair, held](unsigned long) { expect(pair.bare.next(held), held + 1); };
  const std::string behind = "after " + std::to_string(held) + " deleted";
  printRow("getNextEvent, first " + behind, timeFinds(1, {0}, library, range));
  printRow("getNextEvent, again " + behind, timeFinds(rounds, idsOver(held), library, bare));
}

}  // namespace

void measureCalls(const Extent& extent, int count) {
  const Nodes nodes(extent, count);
  Pair pair(nodes.group->endpoints());
  const CallTimes times = timeCalls(pair, extent.rounds, extent.events);
  printRow("newEvent" + nodes.suffix(), times.add);
  printRow("getNextEvent" + nodes.suffix(), times.next);
  printRow("deleteEvent" + nodes.suffix(), times.remove);
}

void measureWriters(const Extent& extent, int count) {
  const Nodes nodes(extent, count);
  Writer library;
  library.endpoints = nodes.group->endpoints();
  library.events = extent.events;
  library.result = nodes.directory.path();
  Writer bare = library;
  bare.bare = true;
  for (const int processes : {1, 4}) {
    Comparison times;
    inTurns(
        extent.rounds, [&] { times.library.append(timeWriters(processes, library)); },
        [&] { times.bare.append(timeWriters(processes, bare)); });
    printRow(
        (processes == 1 ? "newEvent of 1 process" : "newEvent of 4 processes") + nodes.suffix(),
        times);
  }
}

void measureLengths(const Extent& extent) {
  const Nodes nodes(extent, 1);
  Pair pair(nodes.group->endpoints());
  const std::string text = sampleText();
  BareQueue(pair.endpoints, kLibraryQueue, text, "0000000007").fill(1, kShort);
  for (const char* const queue : {kLibraryQueue, kBareQueue}) {
    BareQueue(pair.endpoints, queue, text).fill(1, extent.held + kShort);
  }
  const int rounds = extent.rounds * 4;
  measureLong(pair, rounds, extent.held);
  measureGap(pair, rounds, extent.held);
}

}  // namespace Bench
