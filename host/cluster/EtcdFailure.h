// What came of a request to etcd, sorted by what can be done about it.
//
// Thread safety: plain values and pure functions.

#ifndef EVENTSYSTEM_HOST_CLUSTER_ETCDFAILURE_H
#define EVENTSYSTEM_HOST_CLUSTER_ETCDFAILURE_H

#include <string>

namespace grpc {
class Status;
}

namespace EventSystemHost {

enum class EtcdFailure {
  kNone,             // answered
  kUnsettled,        // no answer, or none that says whether it was done: send it again
  kNoMajority,       // the same of every member until the deadline
  kTooManyRequests,  // not done; etcd is behind with its work
  kTokenRefused,     // not done; log in again
  kLeaseGone,        // not done; the lease of a key to be put does not exist any more
  kNoSpace,          // the quota is used up; the request that found this out may have been done
  kLoginNotNeeded,   // authentication is not enabled at etcd
  kLeaseExists,      // a lease with this id was granted before
  kRefused           // anything else: etcd's words say why
};

struct EtcdResult {
  EtcdFailure failure = EtcdFailure::kNone;
  std::string message;     // where and why, in words for the operator; empty when answered
  bool uncertain = false;  // some attempt got no answer, so the request may have been done twice

  bool ok() const { return failure == EtcdFailure::kNone; }
};

// `where` names the endpoint that was asked, or all of them.
EtcdResult resultOf(const grpc::Status& status, const std::string& where);

}  // namespace EventSystemHost

#endif
