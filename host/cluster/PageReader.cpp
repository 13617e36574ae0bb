#include "host/cluster/PageReader.h"

#include <climits>

namespace EventSystemHost {
namespace {

EtcdResult notOurs(const std::string& key) {
  return {EtcdFailure::kRefused,
          "the key " + key +
              " was not written by this system; look at it, and remove it with: etcdctl del KEY",
          false};
}

// A value that no member has written is an event all the same: whoever looks for damage sees it,
// and a consumer does not stop there for ever.
EtcdResult addEvent(const etcdserverpb::KeyValue& entry, EventPage& page) {
  const auto id = idOfKey(entry.key());
  if (!id) return notOurs(entry.key());
  const auto value = parseEventValue(entry.value());
  page.events.push_back(value ? ClusterEvent{*id, value->member, value->text}
                              : ClusterEvent{*id, "", entry.value()});
  return {};
}

EtcdResult takeHighest(const etcdserverpb::RangeResponse& sequence, EventPage& page) {
  if (sequence.kvs_size() == 0) return {};
  const auto highest = parsePadded(sequence.kvs(0).value());
  if (!highest) return notOurs(sequence.kvs(0).key());
  page.highest = *highest;
  page.birth = sequence.kvs(0).create_revision();
  return {};
}

}  // namespace

EtcdResult PageReader::read(const EtcdKeys& keys, unsigned long first, unsigned long last,
                            std::size_t most, const Deadline& deadline, EventPage& page) {
  etcdserverpb::TxnRequest request;
  etcdserverpb::RangeRequest& events = *request.add_success()->mutable_request_range();
  events.set_key(keys.event(first));
  events.set_range_end(successor(keys.event(last)));
  events.set_limit(static_cast<std::int64_t>(most));
  request.add_success()->mutable_request_range()->set_key(keys.sequence());

  page = {};
  etcdserverpb::TxnResponse answer;
  EtcdResult result = m_channel.txn(request, answer, deadline);
  if (!result.ok()) return result;
  page.revision = answer.header().revision();
  if (answer.responses_size() != 2) return notOurs(keys.sequence());
  for (const auto& entry : answer.responses(0).response_range().kvs()) {
    result = addEvent(entry, page);
    if (!result.ok()) return result;
  }
  page.last = page.events.size() < most ? last : page.events.back().id;
  return takeHighest(answer.responses(1).response_range(), page);
}

unsigned long nextSpan(unsigned long span, std::size_t found) {
  if (found >= kPageEvents) return kPageEvents;
  const unsigned long growth = found == 0 ? 16 : found < kPageEvents / 2 ? 2 : 1;
  return span > ULONG_MAX / growth ? ULONG_MAX : span * growth;
}

}  // namespace EventSystemHost
