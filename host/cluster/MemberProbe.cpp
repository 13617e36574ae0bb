#include "host/cluster/MemberProbe.h"

#include <algorithm>
#include <future>
#include <stdexcept>

#include "EventSystem/platform/HostLog.h"
#include "host/cluster/EtcdChannel.h"
#include "host/cluster/EtcdQuota.h"
#include "host/cluster/GrpcLog.h"

namespace EventSystemHost {
namespace {

// For each answer of a report: who asks how a sick cluster is waits for all that are silent.
constexpr std::chrono::milliseconds kReportPatience{2000};

ClusterConfiguration impatient(ClusterConfiguration configuration) {
  configuration.deadline = std::min(configuration.deadline, kReportPatience * Deadline::kShares);
  return configuration;
}

// What a server that closes the connection without a word probably means by it.
std::string hint(const ClusterConfiguration& configuration, const std::string& failure) {
  bool closed = false;
  for (const char* words : {"Socket closed", "Endpoint read failed", "Connection reset by peer"}) {
    closed = closed || failure.find(words) != std::string::npos;
  }
  if (!closed) return "";
  if (configuration.trustedCertificatesFile.empty()) {
    return " (etcd closed the connection: does it want TLS?)";
  }
  return configuration.certificateFile.empty()
             ? " (etcd closed the connection: has it TLS at all? does it ask for a certificate?)"
             : " (etcd closed the connection: has it TLS at all? does it trust the certificate of "
               "this host?)";
}

ClusterMember probe(ClusterConfiguration configuration, const std::string& endpoint) {
  ClusterMember member;
  member.endpoint = endpoint;
  try {
    configuration.endpoints = {endpoint};
    EtcdChannel channel(configuration);
    etcdserverpb::StatusResponse status;
    const EtcdResult result = channel.memberStatus(status, Deadline(configuration.deadline));
    member.reachable = result.ok();
    member.failure = result.message + hint(configuration, result.message);
    member.version = status.version();
    member.memberId = status.header().member_id();
    member.clusterId = status.header().cluster_id();
    member.leader = result.ok() && status.leader() == member.memberId;
    member.databaseBytes = status.dbsize();
    member.databaseBytesInUse = status.dbsizeinuse();
  } catch (const std::runtime_error& failure) {
    member.failure = failure.what();
  }
  return member;
}

std::string alarmText(const etcdserverpb::AlarmMember& alarm, const std::string& where) {
  switch (alarm.alarm()) {
    case etcdserverpb::NOSPACE:
      return "NOSPACE at " + where;
    case etcdserverpb::CORRUPT:
      return "CORRUPT at " + where;
    default:
      return "alarm " + std::to_string(alarm.alarm()) + " at " + where;
  }
}

std::string nameOf(const etcdserverpb::MemberListResponse& list, std::uint64_t memberId) {
  for (const etcdserverpb::Member& member : list.members()) {
    if (member.id() == memberId) return member.name();
  }
  return "";
}

// Asks all at once.
template <class Probe>
std::vector<ClusterMember> askMembers(const ClusterConfiguration& configuration, const Probe& ask) {
  const GrpcLog grpcLog;
  std::vector<std::future<ClusterMember>> probes;
  probes.reserve(configuration.endpoints.size());
  for (const std::string& endpoint : configuration.endpoints) {
    probes.push_back(std::async(std::launch::async, ask, configuration, endpoint));
  }
  std::vector<ClusterMember> members;
  members.reserve(probes.size());
  for (auto& each : probes) members.push_back(each.get());
  return members;
}

ClusterMember probeWithQuota(const ClusterConfiguration& configuration,
                             const std::string& endpoint) {
  ClusterMember member = probe(configuration, endpoint);
  if (member.reachable) member.quotaBytes = readQuota(configuration, endpoint);
  return member;
}

}  // namespace

std::vector<ClusterMember> probeMembers(const ClusterConfiguration& configuration) {
  return askMembers(configuration, probe);
}

void checkMembers(const ClusterConfiguration& configuration) {
  std::string failures;
  const ClusterMember* first = nullptr;
  const std::vector<ClusterMember> members = probeMembers(configuration);
  for (const ClusterMember& member : members) {
    if (!member.reachable) {
      failures += (failures.empty() ? "" : "; ") + member.failure;
    } else if (first == nullptr) {
      first = &member;
    } else if (first->clusterId != member.clusterId) {
      throw std::runtime_error("the etcd endpoints " + first->endpoint + " and " + member.endpoint +
                               " belong to different clusters");
    }
  }
  if (members.empty()) throw std::runtime_error("no etcd endpoint is configured");
  if (first == nullptr) throw std::runtime_error("no etcd endpoint can be reached: " + failures);
  if (!failures.empty()) {
    WarningA(4, "%s etcd endpoints that do not answer: %s", __func__, failures.c_str());
  }
}

ClusterReport makeReport(const ClusterConfiguration& configuration, EtcdChannel& channel) {
  ClusterReport report;
  auto members = std::async(std::launch::async, [&configuration] {
    return askMembers(impatient(configuration), probeWithQuota);
  });
  const Deadline deadline(std::min(configuration.deadline, kReportPatience));
  etcdserverpb::MemberListResponse list;
  etcdserverpb::AlarmResponse alarms;
  EtcdResult result = channel.memberList(list, deadline);
  if (result.ok()) result = channel.alarms(alarms, deadline);
  report.failure = result.message;
  report.members = members.get();
  for (ClusterMember& member : report.members) member.name = nameOf(list, member.memberId);
  for (const etcdserverpb::AlarmMember& alarm : alarms.alarms()) {
    const std::string name = nameOf(list, alarm.memberid());
    report.alarms.push_back(alarmText(alarm, name.empty() ? "an unknown member" : name));
  }
  return report;
}

}  // namespace EventSystemHost
