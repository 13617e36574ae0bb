#include "bench/cluster/Pair.h"

#include <stdexcept>

namespace Bench {
namespace {

// One side of a Pair, and the times of its calls.
struct Side {
  Queue& queue;
  Samples& add;
  Samples& next;
  Samples& remove;
  unsigned long last = 0;  // id that was read

  void round(int events) {
    for (int i = 0; i < events; ++i) add.time([&] { queue.add(); });
    std::vector<unsigned long> ids;
    for (int i = 0; i < events; ++i) {
      next.time([&] { last = queue.next(last); });
      if (last == 0) throw std::runtime_error("an event is missing");
      ids.push_back(last);
    }
    for (const unsigned long id : ids) remove.time([&] { queue.remove(id); });
  }
};

}  // namespace

void inTurns(int rounds, const std::function<void()>& library, const std::function<void()>& bare) {
  for (int round = 0; round < rounds; ++round) {
    if (round % 2 == 0) library();
    bare();
    if (round % 2 != 0) library();
  }
}

CallTimes timeCalls(Pair& pair, int rounds, int events) {
  CallTimes times;
  Side library{pair.library, times.add.library, times.next.library, times.remove.library};
  Side bare{pair.bare, times.add.bare, times.next.bare, times.remove.bare};
  library.round(1);
  bare.round(1);
  times = {};  // the first calls make connections
  inTurns(
      rounds, [&] { library.round(events); }, [&] { bare.round(events); });
  return times;
}

Comparison timeFinds(int rounds, const std::vector<unsigned long>& afterIds, const Find& library,
                     const Find& bare) {
  Comparison times;
  const auto findAll = [&afterIds](const Find& find, Samples& samples) {
    for (const unsigned long afterId : afterIds) {
      samples.time([&] { find(afterId); });
    }
  };
  inTurns(
      rounds, [&] { findAll(library, times.library); }, [&] { findAll(bare, times.bare); });
  return times;
}

}  // namespace Bench
