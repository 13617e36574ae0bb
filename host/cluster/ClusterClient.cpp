#include "host/cluster/ClusterClient.h"

#include <algorithm>
#include <map>
#include <mutex>
#include <stdexcept>
#include <utility>

#include "EventSystem/platform/HostLog.h"
#include "host/cluster/CopyRun.h"
#include "host/cluster/CopyWriter.h"
#include "host/cluster/GrpcLog.h"
#include "host/cluster/LastCall.h"
#include "host/cluster/MemberClaim.h"
#include "host/cluster/MemberProbe.h"
#include "host/cluster/PeriodicTask.h"
#include "host/cluster/PlainWriter.h"
#include "host/cluster/WindowReader.h"

namespace EventSystemHost {
namespace {

constexpr std::chrono::seconds kProbeInterval{1};

unsigned int statusOf(EtcdFailure failure) {
  switch (failure) {
    case EtcdFailure::kNone:
      return 0;
    case EtcdFailure::kUnsettled:
    case EtcdFailure::kNoMajority:
      return kClusterUnreachable;
    case EtcdFailure::kNoSpace:
      return kClusterNoSpace;
    case EtcdFailure::kTooManyRequests:
      return kClusterBusy;
    default:
      return kClusterRefused;
  }
}

// Logs why the arguments are no good; nothing is sent.
bool acceptable(const char* operation, const std::string& fault, unsigned int dsid) {
  if (fault.empty()) return true;
  noteClusterCall({.failure = fault});
  ErrorA(4, "%s data selection %u: %s", operation, dsid, fault.c_str());
  return false;
}

std::string faultOf(const std::string& queue, const std::string& member, const std::string& text) {
  std::string fault = nameFault("queue", queue);
  if (fault.empty()) fault = nameFault("member", member);
  if (fault.empty() && text.find('\0') != std::string::npos) {
    fault = "an event string cannot contain a zero byte";
  }
  return fault;
}

EtcdResult occupied() {
  return {EtcdFailure::kTooManyRequests, "another write to the queue took until the deadline",
          false};
}

}  // namespace

struct ClusterClient::Parts {
  explicit Parts(const ClusterConfiguration& values)
      : configuration(values),
        channel(configuration),
        watch(kProbeInterval, [this] { channel.probeAvoided(); }),
        lease(channel, configuration),
        plainWriter(channel, lease),
        copyWriter(channel),
        reader(channel) {}

  QueueLane& lane(const std::string& queue, unsigned int dsid) {
    const std::lock_guard lock(mutex);
    auto& slot = lanes[{queue, dsid}];
    if (!slot) slot = std::make_unique<QueueLane>(queue, dsid);
    return *slot;
  }

  // Notes and logs what came of a call, with the endpoints where etcd was not even asked.
  unsigned int conclude(const char* operation, const QueueLane& lane, EtcdResult result) const {
    if (result.ok()) {
      noteClusterCall({});
      return 0;
    }
    const bool named = std::any_of(
        configuration.endpoints.begin(), configuration.endpoints.end(),
        [&](const std::string& each) { return result.message.find(each) != std::string::npos; });
    if (!named) result.message += " (at " + channel.endpoints() + ")";
    noteClusterCall({.failure = result.message,
                     .open = result.uncertain,
                     .lacksMajority = result.failure == EtcdFailure::kNoMajority});
    ErrorA(4, "%s queue %s, data selection %u: %s", operation, lane.queue.c_str(), lane.dsid,
           result.message.c_str());
    return statusOf(result.failure);
  }

  const GrpcLog grpcLog;
  const ClusterConfiguration configuration;
  EtcdChannel channel;
  PeriodicTask watch;  // for members that have failed
  ProducerLease lease;
  PlainWriter plainWriter;
  CopyWriter copyWriter;
  WindowReader reader;
  CopyRun copyRun;

  std::mutex mutex;  // guards the members below
  std::map<std::pair<std::string, unsigned int>, std::unique_ptr<QueueLane>> lanes;
};

ClusterClient::ClusterClient(const ClusterConfiguration& configuration) {
  checkMembers(configuration);
  m_parts = std::make_unique<Parts>(configuration);
  KeyState ignored;
  const EtcdResult result =
      readKey(m_parts->channel, "/eventsystem/", ignored, Deadline(configuration.deadline));
  if (!result.ok()) throw std::runtime_error("etcd cannot be used: " + result.message);
}

ClusterClient::~ClusterClient() = default;

unsigned int ClusterClient::newEvent(const std::string& queue, const std::string& member,
                                     const std::string& text, unsigned long id,
                                     unsigned long& newId, unsigned int dsid) {
  newId = 0;
  return id == 0 ? writeEvent(queue, member, text, newId, dsid)
                 : copyEvent(queue, member, text, id, newId, dsid);
}

unsigned int ClusterClient::writeEvent(const std::string& queue, const std::string& member,
                                       const std::string& text, unsigned long& newId,
                                       unsigned int dsid) {
  constexpr const char* kOperation = "newEvent";
  if (!acceptable(kOperation, faultOf(queue, member, text), dsid)) return kClusterBadArgument;
  const Deadline deadline(m_parts->configuration.deadline);
  QueueLane& lane = m_parts->lane(queue, dsid);
  m_parts->copyRun.end();
  const Gate::Pass pass(lane.gate, deadline);
  return m_parts->conclude(
      kOperation, lane,
      pass ? m_parts->plainWriter.write(lane, eventValue(member, text), deadline, newId)
           : occupied());
}

unsigned int ClusterClient::copyEvent(const std::string& queue, const std::string& member,
                                      const std::string& text, unsigned long id,
                                      unsigned long& newId, unsigned int dsid) {
  constexpr const char* kOperation = "newEvent (copy)";
  if (!acceptable(kOperation, faultOf(queue, member, text), dsid)) return kClusterBadArgument;
  const Deadline deadline(m_parts->configuration.deadline);
  QueueLane& lane = m_parts->lane(queue, dsid);
  if (!m_parts->copyRun.admits(lane, id)) {
    noteClusterCall({.failure = "a copy before this one failed, and this one waits for it"});
    return kClusterBusy;
  }
  const Gate::Pass pass(lane.gate, deadline);
  const EtcdResult result =
      pass ? m_parts->copyWriter.copy(lane, member, id, text, deadline, newId) : occupied();
  m_parts->copyRun.note(lane, id, result.ok());
  return m_parts->conclude(kOperation, lane, result);
}

unsigned int ClusterClient::getNextEvent(const std::string& queue, unsigned long afterId,
                                         unsigned long& id, std::string& member, std::string& text,
                                         unsigned int dsid) {
  id = 0;
  if (!acceptable(__func__, nameFault("queue", queue), dsid)) return kClusterBadArgument;
  m_parts->copyRun.end();
  QueueLane& lane = m_parts->lane(queue, dsid);
  ClusterEvent found;
  const EtcdResult result =
      m_parts->reader.next(lane, afterId, Deadline(m_parts->configuration.deadline), found);
  id = found.id;
  member = std::move(found.member);
  text = std::move(found.text);
  return m_parts->conclude(__func__, lane, result);
}

unsigned int ClusterClient::deleteEventById(const std::string& queue, unsigned long id,
                                            unsigned int dsid) {
  if (!acceptable(__func__, nameFault("queue", queue), dsid)) return kClusterBadArgument;
  m_parts->copyRun.end();
  QueueLane& lane = m_parts->lane(queue, dsid);
  etcdserverpb::DeleteRangeRequest request;
  request.set_key(lane.keys.event(id));
  etcdserverpb::DeleteRangeResponse answer;
  const EtcdResult result =
      m_parts->channel.deleteRange(request, answer, Deadline(m_parts->configuration.deadline));
  // Only an event that was there tells that its id was handed out.
  if (result.ok() && answer.deleted() > 0) lane.emptied(id);
  return m_parts->conclude(__func__, lane, result);
}

unsigned int ClusterClient::forgetCopies(const std::string& queue, const std::string& member,
                                         unsigned long belowId, unsigned int dsid) {
  if (!acceptable(__func__, faultOf(queue, member, ""), dsid)) return kClusterBadArgument;
  const QueueLane& lane = m_parts->lane(queue, dsid);
  const EtcdResult result =
      m_parts->copyWriter.forget(lane, member, belowId, Deadline(m_parts->configuration.deadline));
  return m_parts->conclude(__func__, lane, result);
}

void ClusterClient::claim(const std::string& queue, const std::string& member,
                          const MemberHome& home) {
  const EtcdResult result =
      claimMember(m_parts->channel, queue, member, home, Deadline(m_parts->configuration.deadline));
  if (!result.ok()) throw std::runtime_error(result.message);
}

ClusterReport ClusterClient::report() {
  return makeReport(m_parts->configuration, m_parts->channel);
}

unsigned long ClusterClient::roundTrips() const {
  return m_parts->channel.roundTrips();
}

}  // namespace EventSystemHost
