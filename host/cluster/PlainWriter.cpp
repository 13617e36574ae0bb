#include "host/cluster/PlainWriter.h"

#include <climits>

#include "host/cluster/Fingerprint.h"

namespace EventSystemHost {

namespace {

// Whether a request that came out so may have been done. Who finds the quota used up may have been
// the last to fit.
bool mayBeDone(const EtcdResult& result) {
  return result.uncertain || result.failure == EtcdFailure::kNoSpace;
}

}  // namespace

// Of the tries of this call alone: what the requests around them came to is no answer to whether
// the event is stored.
EtcdResult PlainWriter::write(QueueLane& lane, const std::string& value, const Deadline& deadline,
                              unsigned long& newId) {
  bool open = false;
  EtcdResult result = tryToWrite(lane, value, deadline, newId, open);
  result.uncertain = open && !result.ok();
  return result;
}

// The token is new for each call. While tries of earlier calls are open, this one carries the same
// conditions: if it is stored, they can never be; if not, the token that is there tells which of
// them was.
EtcdResult PlainWriter::tryToWrite(QueueLane& lane, const std::string& value,
                                   const Deadline& deadline, unsigned long& newId, bool& open) {
  const std::string hash = fingerprint(value);
  if (const auto stored = lane.unsettled.claim(hash)) {
    newId = *stored;
    return {};
  }
  const unsigned long token = ++lane.lastToken;
  for (ContentionPause pause; !deadline.passed(); pause.wait()) {
    WriteTransaction write;
    EtcdResult result = prepare(lane, write, deadline);
    if (!result.ok()) return result;
    write.value = value;
    write.markValue = tokenValue({token, write.id});
    WriteAnswer answer;
    result = send(m_channel, lane.keys, write, answer, deadline);
    open = open || mayBeDone(result);
    if (!result.ok() || result.uncertain) lane.unsettled.add({token, write.id, hash});
    if (result.failure == EtcdFailure::kLeaseGone) {
      m_lease.lost(write.markLease);
      continue;
    }
    if (!result.ok()) return result;
    // Before the lane forgets the conditions that the open tries have in common.
    if (!answer.stored) result = settle(lane, answer.mark, deadline);
    if (!result.ok()) return result;
    open = false;
    lane.sequence = answer.sequence;
    lane.token = answer.mark;
    if (answer.stored) {
      lane.unsettled.settle(0);
      newId = write.id;
      return {};
    }
    if (const auto stored = lane.unsettled.claim(hash)) {
      newId = *stored;
      return {};
    }
  }
  return {EtcdFailure::kUnsettled, "other members kept writing to the queue until the deadline",
          false};
}

EtcdResult PlainWriter::prepare(QueueLane& lane, WriteTransaction& write,
                                const Deadline& deadline) {
  EtcdResult result = knowSequence(m_channel, lane, deadline);
  if (result.ok()) result = m_lease.use(write.markLease, deadline);
  unsigned long highest = 0;
  if (result.ok()) result = highestId(lane, highest);
  if (!result.ok()) return result;
  if (highest == ULONG_MAX) {
    return {EtcdFailure::kRefused, "all ids of the queue are handed out", false};
  }
  write.id = highest + 1;
  write.sequence = lane.sequence;
  write.markKey = lane.keys.lastToken(m_lease.producer());
  write.mark = lane.token;
  return result;
}

EtcdResult PlainWriter::settle(QueueLane& lane, const KeyState& mark, const Deadline& deadline) {
  if (lane.unsettled.open().empty()) return {};
  unsigned long stored = 0;
  if (mark.revision == 0) {
    EtcdResult result = lookForOpen(lane, stored, deadline);
    if (!result.ok()) return result;
  } else {
    const auto last = parseTokenValue(mark.value);
    if (!last) {
      return {EtcdFailure::kRefused, "the value of a token of this process is not a token", false};
    }
    stored = last->token;
  }
  lane.unsettled.settle(stored);
  return {};
}

// The lease has run out while this process was cut off, and taken the token with it; but an event
// that was stored stands under the id that it was to get, until it is consumed.
EtcdResult PlainWriter::lookForOpen(QueueLane& lane, unsigned long& stored,
                                    const Deadline& deadline) {
  for (const UnsettledWrite& write : lane.unsettled.open()) {
    KeyState event;
    EtcdResult result = readKey(m_channel, lane.keys.event(write.id), event, deadline);
    if (!result.ok()) return result;
    if (event.revision != 0 && fingerprint(event.value) == write.hash) stored = write.token;
    if (stored != 0) break;
  }
  return {};
}

}  // namespace EventSystemHost
