#include "host/cluster/WriteTransaction.h"

#include <algorithm>
#include <random>
#include <thread>

namespace EventSystemHost {
namespace {

using etcdserverpb::Compare;
using etcdserverpb::TxnRequest;
using etcdserverpb::TxnResponse;

void put(TxnRequest& request, const std::string& key, const std::string& value,
         std::int64_t lease = 0) {
  etcdserverpb::PutRequest& put = *request.add_success()->mutable_request_put();
  put.set_key(key);
  put.set_value(value);
  put.set_lease(lease);
}

KeyState stateOf(const etcdserverpb::RangeResponse& answer) {
  if (answer.kvs_size() == 0) return {};
  return {answer.kvs(0).mod_revision(), answer.kvs(0).value()};
}

KeyState stateOf(const TxnResponse& answer, int operation) {
  return operation < answer.responses_size() ? stateOf(answer.responses(operation).response_range())
                                             : KeyState();
}

// Nothing has changed but the write was refused: its id is taken already.
bool idIsTaken(const WriteTransaction& write, const WriteAnswer& answer) {
  const auto same = [](const KeyState& one, const KeyState& other) {
    return one.revision == other.revision && one.value == other.value;
  };
  return !answer.stored && same(write.sequence, answer.sequence) && same(write.mark, answer.mark);
}

}  // namespace

void require(TxnRequest& request, const std::string& key, const KeyState& state) {
  Compare& revision = *request.add_compare();
  revision.set_result(Compare::EQUAL);
  revision.set_target(Compare::MOD);
  revision.set_key(key);
  revision.set_mod_revision(state.revision);
  if (state.revision == 0) return;
  // Revisions go back when etcd is restored from a backup; then one may come again with another
  // value.
  Compare& value = *request.add_compare();
  value.set_result(Compare::EQUAL);
  value.set_target(Compare::VALUE);
  value.set_key(key);
  value.set_value(state.value);
}

EtcdResult send(EtcdChannel& channel, const EtcdKeys& keys, const WriteTransaction& write,
                WriteAnswer& answer, const Deadline& deadline) {
  const std::string sequenceKey = keys.sequence();
  const std::string sequenceValue = padded(write.id);
  TxnRequest request;
  require(request, sequenceKey, write.sequence);
  require(request, write.markKey, write.mark);
  require(request, keys.event(write.id), {});
  put(request, keys.event(write.id), write.value);
  put(request, sequenceKey, sequenceValue);
  put(request, write.markKey, write.markValue, write.markLease);
  request.add_failure()->mutable_request_range()->set_key(sequenceKey);
  request.add_failure()->mutable_request_range()->set_key(write.markKey);

  TxnResponse response;
  EtcdResult result = channel.txn(request, response, deadline);
  if (!result.ok()) return result;
  answer.stored = response.succeeded();
  const std::int64_t revision = response.header().revision();
  answer.sequence = answer.stored ? KeyState{revision, sequenceValue} : stateOf(response, 0);
  answer.mark = answer.stored ? KeyState{revision, write.markValue} : stateOf(response, 1);
  if (idIsTaken(write, answer)) {
    return {EtcdFailure::kRefused,
            "the queue holds an event " + std::to_string(write.id) + ", but " + sequenceKey +
                " does not count it: put the highest id of the queue there, in 20 digits",
            result.uncertain};
  }
  return result;
}

EtcdResult readKey(EtcdChannel& channel, const std::string& key, KeyState& state,
                   const Deadline& deadline) {
  etcdserverpb::RangeRequest request;
  request.set_key(key);
  etcdserverpb::RangeResponse answer;
  EtcdResult result = channel.range(request, answer, deadline);
  if (result.ok()) state = stateOf(answer);
  return result;
}

EtcdResult knowSequence(EtcdChannel& channel, QueueLane& lane, const Deadline& deadline) {
  if (lane.sequenceKnown) return {};
  EtcdResult result = readKey(channel, lane.keys.sequence(), lane.sequence, deadline);
  lane.sequenceKnown = result.ok();
  return result;
}

EtcdResult highestId(const QueueLane& lane, unsigned long& highest) {
  highest = 0;
  if (lane.sequence.revision == 0) return {};
  const auto number = parsePadded(lane.sequence.value);
  if (!number) {
    return {EtcdFailure::kRefused, "the value of " + lane.keys.sequence() + " is not a number",
            false};
  }
  highest = *number;
  return {};
}

// A try that lost has just learnt how the queue stands, so the next one follows at once: after a
// pause it would be late for sure, and a member without pauses would never be beaten.
void ContentionPause::wait() {
  constexpr int kTriesInARow = 4;
  constexpr int kMostDoublings = 4;
  if (++m_rounds % kTriesInARow != 0) return;
  thread_local std::mt19937 random(std::random_device{}());
  const int longest = 1000 << std::min(m_rounds / kTriesInARow, kMostDoublings);
  std::uniform_int_distribution<int> microseconds(0, longest);
  std::this_thread::sleep_for(std::chrono::microseconds(microseconds(random)));
}

}  // namespace EventSystemHost
