// The way to the etcd cluster: each request goes to one member, and again to another until it is
// answered or its deadline ends; with it the log-in.
//
// Every member has a gRPC channel of its own rather than all of them one with a balancer: when a
// request gets no answer, gRPC tells of a balanced channel only that some member was silent, and
// goes on to ask it until a keep-alive fails 13 s later. Here the silent member is known, passed by
// at once, and asked again when it answers. And the certificate of each can be in its own name.
//
// Every request that goes through here may be sent more than once, also after a first try was
// carried out: callers see to it that this does no harm.
//
// Thread safety: any thread.

#ifndef EVENTSYSTEM_HOST_CLUSTER_ETCDCHANNEL_H
#define EVENTSYSTEM_HOST_CLUSTER_ETCDCHANNEL_H

#include <grpcpp/grpcpp.h>

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "etcd.grpc.pb.h"
#include "host/cluster/ClusterConfiguration.h"
#include "host/cluster/Deadline.h"
#include "host/cluster/EtcdFailure.h"
#include "host/cluster/EtcdMember.h"
#include "host/cluster/Gate.h"
#include "host/cluster/MemberChoice.h"

namespace EventSystemHost {

class EtcdChannel {
 public:
  // Connects when the first request is sent. Throws std::runtime_error when an endpoint makes no
  // sense, there is none, or a certificate file cannot be read.
  explicit EtcdChannel(const ClusterConfiguration& configuration);
  ~EtcdChannel();

  EtcdChannel(const EtcdChannel&) = delete;
  EtcdChannel& operator=(const EtcdChannel&) = delete;

  EtcdResult txn(const etcdserverpb::TxnRequest& request, etcdserverpb::TxnResponse& answer,
                 const Deadline& deadline);
  EtcdResult range(const etcdserverpb::RangeRequest& request, etcdserverpb::RangeResponse& answer,
                   const Deadline& deadline);
  EtcdResult deleteRange(const etcdserverpb::DeleteRangeRequest& request,
                         etcdserverpb::DeleteRangeResponse& answer, const Deadline& deadline);

  EtcdResult grantLease(std::int64_t id, std::chrono::seconds ttl, const Deadline& deadline);
  // Sets `alive` to whether etcd still knows the lease.
  EtcdResult keepLeaseAlive(std::int64_t id, bool& alive, const Deadline& deadline);
  // Sent once.
  EtcdResult revokeLease(std::int64_t id, const Deadline& deadline);

  // Sent once: the answer is about the member that gives it.
  EtcdResult memberStatus(etcdserverpb::StatusResponse& answer, const Deadline& deadline);
  EtcdResult memberList(etcdserverpb::MemberListResponse& answer, const Deadline& deadline);
  EtcdResult alarms(etcdserverpb::AlarmResponse& answer, const Deadline& deadline);

  // Asks the members that have failed to answer whether they do so again. To be called now and
  // then; may take a second for each.
  void probeAvoided();

  // Requests sent so far.
  // All of them, separated by commas.
  const std::string& endpoints() const { return m_allEndpoints; }

  unsigned long roundTrips() const { return m_roundTrips; }

 private:
  using Attempt = std::function<grpc::Status(const EtcdMember&, grpc::ClientContext&)>;

  EtcdResult perform(const Attempt& attempt, const Deadline& deadline);
  EtcdResult repeat(const Attempt& attempt, const std::string& token, const Deadline& deadline);
  EtcdResult tryOnce(std::size_t member, const Attempt& attempt, const std::string& token,
                     std::chrono::milliseconds patience);
  EtcdResult ask(std::size_t member, const Attempt& attempt, const std::string& token,
                 const Deadline& deadline);
  EtcdResult givenUp(EtcdResult last, const std::string& told) const;
  std::string token() const;
  // `refused` is the token that etcd did not take, when there was one.
  EtcdResult logIn(const std::optional<std::string>& refused, const Deadline& deadline);

  const ClusterConfiguration m_configuration;
  const std::string m_allEndpoints;
  std::vector<std::unique_ptr<const EtcdMember>> m_members;
  MemberChoice m_choice;

  mutable std::mutex m_mutex;  // guards the members up to the next blank line
  std::string m_token;
  bool m_loggedIn = false;

  Gate m_logInGate;  // one log-in at a time
  std::atomic<unsigned long> m_roundTrips{0};
};

}  // namespace EventSystemHost

#endif
