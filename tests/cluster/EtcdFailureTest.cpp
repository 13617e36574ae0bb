#include <grpcpp/support/status.h>
#include <gtest/gtest.h>

#include "host/cluster/EtcdFailure.h"

namespace EventSystemHost {
namespace {

EtcdResult resultOf(grpc::StatusCode code, const std::string& words) {
  return EventSystemHost::resultOf(grpc::Status(code, words), "etcd-1:2379");
}

TEST(EtcdFailure, IsNoneForAnAnswer) {
  const EtcdResult result = EventSystemHost::resultOf(grpc::Status::OK, "etcd-1:2379");
  EXPECT_TRUE(result.ok());
  EXPECT_EQ(result.message, "");
}

TEST(EtcdFailure, TellsNoSpaceAndTooManyRequestsApart) {
  const auto code = grpc::StatusCode::RESOURCE_EXHAUSTED;
  const EtcdResult full = resultOf(code, "etcdserver: mvcc: database space exceeded");
  EXPECT_EQ(full.failure, EtcdFailure::kNoSpace);
  EXPECT_EQ(full.message,
            "no space: raise the quota or compact and defragment, then disarm the alarm: "
            "etcd-1:2379: etcdserver: mvcc: database space exceeded");
  const EtcdResult busy = resultOf(code, "etcdserver: too many requests");
  EXPECT_EQ(busy.failure, EtcdFailure::kTooManyRequests);
  EXPECT_EQ(busy.message,
            "too many requests: etcd is behind with its work: etcd-1:2379: "
            "etcdserver: too many requests");
  EXPECT_EQ(resultOf(code, "message too large").failure, EtcdFailure::kRefused);
}

TEST(EtcdFailure, LeavesOpenWhetherARequestWithoutAnAnswerWasDone) {
  for (const auto code : {grpc::StatusCode::UNAVAILABLE, grpc::StatusCode::DEADLINE_EXCEEDED,
                          grpc::StatusCode::CANCELLED, grpc::StatusCode::UNKNOWN,
                          grpc::StatusCode::INTERNAL, grpc::StatusCode::ABORTED}) {
    const EtcdResult result = resultOf(code, "words");
    EXPECT_EQ(result.failure, EtcdFailure::kUnsettled) << code;
    EXPECT_TRUE(result.uncertain) << code;
  }
  EXPECT_EQ(resultOf(grpc::StatusCode::DEADLINE_EXCEEDED, "Deadline Exceeded").message,
            "etcd-1:2379: no answer in time");
}

TEST(EtcdFailure, KnowsARefusedToken) {
  EXPECT_EQ(resultOf(grpc::StatusCode::UNAUTHENTICATED, "etcdserver: invalid auth token").failure,
            EtcdFailure::kTokenRefused);
  for (const char* words :
       {"etcdserver: user name is empty", "etcdserver: revision of auth store is old"}) {
    EXPECT_EQ(resultOf(grpc::StatusCode::INVALID_ARGUMENT, words).failure,
              EtcdFailure::kTokenRefused);
  }
}

TEST(EtcdFailure, KnowsWhatHasItsOwnRemedy) {
  EXPECT_EQ(resultOf(grpc::StatusCode::NOT_FOUND, "etcdserver: requested lease not found").failure,
            EtcdFailure::kLeaseGone);
  EXPECT_EQ(
      resultOf(grpc::StatusCode::FAILED_PRECONDITION, "etcdserver: lease already exists").failure,
      EtcdFailure::kLeaseExists);
  EXPECT_EQ(
      resultOf(grpc::StatusCode::FAILED_PRECONDITION, "etcdserver: authentication is not enabled")
          .failure,
      EtcdFailure::kLoginNotNeeded);
  EXPECT_EQ(resultOf(grpc::StatusCode::PERMISSION_DENIED, "etcdserver: permission denied").failure,
            EtcdFailure::kRefused);
}

}  // namespace
}  // namespace EventSystemHost
