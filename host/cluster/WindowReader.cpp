#include "host/cluster/WindowReader.h"

#include <algorithm>
#include <climits>
#include <optional>

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

EtcdResult notOurs(const std::string& key) {
  return {EtcdFailure::kRefused, "the key " + key + " was not written by this system", false};
}

}  // namespace

// The ids from `first` to `last`, and what one look at etcd told about them.
struct WindowReader::Window {
  unsigned long first;
  unsigned long last;

  std::optional<FoundEvent> event;  // the first in the window
  std::int64_t birth = 0;           // of the sequence
  unsigned long highest = 0;        // id handed out
};

EtcdResult WindowReader::next(QueueLane& lane, unsigned long afterId, const Deadline& deadline,
                              FoundEvent& found) {
  found = {};
  if (afterId == ULONG_MAX) return {};
  const unsigned long start = afterId + 1;
  EmptySpan span = lane.span();
  unsigned long first = std::max(span.skip(afterId), afterId) + 1;
  for (unsigned long width = kFirstWidth;; width = wider(width)) {
    Window window{first, first + std::min(width - 1, ULONG_MAX - first), {}, 0, 0};
    EtcdResult result = read(lane, window, deadline);
    if (!result.ok()) return result;
    if (!span.holds(window.birth, window.highest)) {
      lane.forgetSpan();
      span = {};
      first = start;
      width = 1;
      continue;
    }
    if (window.event) {
      lane.learnEmpty(window.birth, start, window.event->id - 1);
      found = std::move(*window.event);
      return {};
    }
    lane.learnEmpty(window.birth, start, std::min(window.last, window.highest));
    if (window.last >= window.highest) return {};
    first = window.last + 1;
  }
}

EtcdResult WindowReader::read(const QueueLane& lane, Window& window, const Deadline& deadline) {
  etcdserverpb::TxnRequest request;
  etcdserverpb::RangeRequest& events = *request.add_success()->mutable_request_range();
  events.set_key(lane.keys.event(window.first));
  events.set_range_end(successor(lane.keys.event(window.last)));
  events.set_limit(1);
  const std::string sequenceKey = lane.keys.sequence();
  request.add_success()->mutable_request_range()->set_key(sequenceKey);

  etcdserverpb::TxnResponse answer;
  EtcdResult result = m_channel.txn(request, answer, deadline);
  if (!result.ok()) return result;
  if (answer.responses_size() != 2) return notOurs(sequenceKey);
  const auto& sequence = answer.responses(1).response_range();
  if (sequence.kvs_size() > 0) {
    const auto highest = parsePadded(sequence.kvs(0).value());
    if (!highest) return notOurs(sequenceKey);
    window.highest = *highest;
    window.birth = sequence.kvs(0).create_revision();
  }
  const auto& found = answer.responses(0).response_range();
  if (found.kvs_size() == 0) return result;
  const auto id = idOfKey(found.kvs(0).key());
  auto value = parseEventValue(found.kvs(0).value());
  if (!id || !value) return notOurs(found.kvs(0).key());
  window.event = FoundEvent{*id, std::move(*value)};
  return result;
}

}  // namespace EventSystemHost
