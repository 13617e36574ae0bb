#include "host/cluster/CopyWriter.h"

#include <algorithm>
#include <climits>

#include "host/cluster/Fingerprint.h"

namespace EventSystemHost {
namespace {

// A host copies its whole database at every start, in the order of the ids: the markers are read
// many at once, so that what is there already costs next to nothing.
constexpr unsigned long kMarkersAtOnce = 1024;

// Removed in steps: etcd does one removal in one go, and nothing else meanwhile.
constexpr std::int64_t kRemovedAtOnce = 4096;

}  // namespace

EtcdResult CopyWriter::copy(QueueLane& lane, const std::string& member, unsigned long id,
                            const std::string& text, const Deadline& deadline,
                            unsigned long& newId) {
  const std::string hash = fingerprint(text);
  KeyState marker;
  EtcdResult result = readMarker(lane, member, id, marker, deadline);
  for (ContentionPause pause; result.ok(); pause.wait()) {
    if (const auto stored = findCopy(marker.value, hash)) {
      newId = *stored;
      return {};
    }
    if (deadline.passed()) break;
    result = knowSequence(m_channel, lane, deadline);
    unsigned long highest = 0;
    if (result.ok()) result = highestId(lane, highest);
    if (!result.ok()) return result;
    if (highest == ULONG_MAX) {
      return {EtcdFailure::kRefused, "all ids of the queue are handed out", false};
    }
    WriteTransaction write;
    write.id = std::max(id, highest + 1);
    write.value = eventValue(member, text);
    write.sequence = lane.sequence;
    write.markKey = lane.keys.copied(member, id);
    write.mark = marker;
    write.markValue = withCopy(marker.value, hash, write.id);
    WriteAnswer answer;
    result = send(m_channel, lane.keys, write, answer, deadline);
    if (!result.ok()) return result;
    lane.sequence = answer.sequence;
    marker = answer.mark;
    lane.copied.markers[id] = marker;
  }
  if (!result.ok()) return result;
  return {EtcdFailure::kUnsettled, "other members kept writing to the queue until the deadline",
          false};
}

EtcdResult CopyWriter::readMarker(QueueLane& lane, const std::string& member, unsigned long id,
                                  KeyState& marker, const Deadline& deadline) {
  if (!lane.copied.covers(member, id)) {
    const unsigned long last = id + std::min(kMarkersAtOnce - 1, ULONG_MAX - id);
    etcdserverpb::RangeRequest request;
    request.set_key(lane.keys.copied(member, id));
    request.set_range_end(successor(lane.keys.copied(member, last)));
    etcdserverpb::RangeResponse answer;
    EtcdResult result = m_channel.range(request, answer, deadline);
    if (!result.ok()) return result;
    CopiedWindow window{member, id, last, {}};
    for (const etcdserverpb::KeyValue& found : answer.kvs()) {
      const auto foundId = idOfKey(found.key());
      if (foundId) window.markers[*foundId] = {found.mod_revision(), found.value()};
    }
    lane.copied = std::move(window);
  }
  const auto found = lane.copied.markers.find(id);
  marker = found == lane.copied.markers.end() ? KeyState() : found->second;
  return {};
}

EtcdResult CopyWriter::forget(const QueueLane& lane, const std::string& member,
                              unsigned long belowId, const Deadline& deadline) {
  const std::string end = lane.keys.copied(member, belowId);
  for (;;) {
    etcdserverpb::RangeRequest request;
    request.set_key(lane.keys.copied(member, 0));
    request.set_range_end(end);
    request.set_limit(kRemovedAtOnce);
    request.set_keys_only(true);
    etcdserverpb::RangeResponse found;
    EtcdResult result = m_channel.range(request, found, deadline);
    if (!result.ok() || found.kvs_size() == 0) return result;
    etcdserverpb::DeleteRangeRequest removal;
    removal.set_key(request.key());
    removal.set_range_end(successor(found.kvs(found.kvs_size() - 1).key()));
    etcdserverpb::DeleteRangeResponse removed;
    result = m_channel.deleteRange(removal, removed, deadline);
    if (!result.ok()) return result;
  }
}

}  // namespace EventSystemHost
