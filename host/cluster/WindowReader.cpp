#include "host/cluster/WindowReader.h"

#include <algorithm>
#include <climits>
#include <utility>

namespace EventSystemHost {
namespace {

// etcd gathers all keys of a range before it looks at the limit, so the first window is kept
// small. An empty one costs nothing: the widths grow fast enough to cross any gap that 64 bits
// allow in 16 steps.
constexpr unsigned long kFirstWidth = 64;
constexpr unsigned long kGrowth = 16;

unsigned long wider(unsigned long width) {
  return width > ULONG_MAX / kGrowth ? ULONG_MAX : width * kGrowth;
}

}  // namespace

EtcdResult WindowReader::next(QueueLane& lane, unsigned long afterId, const Deadline& deadline,
                              ClusterEvent& found) {
  found = {};
  if (afterId == ULONG_MAX) return {};
  const unsigned long start = afterId + 1;
  EmptySpan span = lane.span();
  unsigned long first = std::max(span.skip(afterId), afterId) + 1;
  unsigned long width = kFirstWidth;
  while (true) {
    const unsigned long last = first + std::min(width - 1, ULONG_MAX - first);
    EventPage window;
    EtcdResult result = m_reader.read(lane.keys, first, last, 1, deadline, window);
    if (!result.ok()) return result;
    if (lane.wentBack(window.revision) || !span.holds(window.birth, window.highest)) {
      lane.forgetSpan();
      span = {};
      first = start;
      width = kFirstWidth;
      continue;
    }
    if (!window.events.empty()) {
      found = std::move(window.events.front());
      lane.learnEmpty(window.birth, start, found.id - 1);
      return {};
    }
    lane.learnEmpty(window.birth, start, std::min(last, window.highest));
    if (last >= window.highest) return {};
    first = last + 1;
    width = wider(width);
  }
}

}  // namespace EventSystemHost
