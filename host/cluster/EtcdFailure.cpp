#include "host/cluster/EtcdFailure.h"

#include <grpcpp/support/status.h>

#include <string_view>

namespace EventSystemHost {
namespace {

bool says(const grpc::Status& status, std::string_view words) {
  return status.error_message().find(words) != std::string::npos;
}

EtcdFailure exhausted(const grpc::Status& status) {
  if (says(status, "database space exceeded")) return EtcdFailure::kNoSpace;
  return says(status, "too many requests") ? EtcdFailure::kTooManyRequests : EtcdFailure::kRefused;
}

EtcdFailure failureOf(const grpc::Status& status) {
  switch (status.error_code()) {
    case grpc::StatusCode::OK:
      return EtcdFailure::kNone;
    case grpc::StatusCode::UNAVAILABLE:
    case grpc::StatusCode::DEADLINE_EXCEEDED:
    case grpc::StatusCode::CANCELLED:
    case grpc::StatusCode::ABORTED:
    case grpc::StatusCode::INTERNAL:
    case grpc::StatusCode::UNKNOWN:
      return EtcdFailure::kUnsettled;
    case grpc::StatusCode::RESOURCE_EXHAUSTED:
      return exhausted(status);
    case grpc::StatusCode::UNAUTHENTICATED:
      return EtcdFailure::kTokenRefused;
    default:
      break;
  }
  if (says(status, "revision of auth store is old")) return EtcdFailure::kTokenRefused;
  if (says(status, "user name is empty")) return EtcdFailure::kTokenRefused;
  if (says(status, "requested lease not found")) return EtcdFailure::kLeaseGone;
  if (says(status, "lease already exists")) return EtcdFailure::kLeaseExists;
  if (says(status, "authentication is not enabled")) return EtcdFailure::kLoginNotNeeded;
  return EtcdFailure::kRefused;
}

std::string advice(EtcdFailure failure) {
  switch (failure) {
    case EtcdFailure::kNoSpace:
      return "no space: raise the quota or compact and defragment, then disarm the alarm: ";
    case EtcdFailure::kTooManyRequests:
      return "too many requests: etcd is behind with its work: ";
    default:
      return "";
  }
}

}  // namespace

EtcdResult resultOf(const grpc::Status& status, const std::string& where) {
  const EtcdFailure failure = failureOf(status);
  if (failure == EtcdFailure::kNone) return {};
  const bool late = status.error_code() == grpc::StatusCode::DEADLINE_EXCEEDED;
  const std::string words = late ? "no answer in time" : status.error_message();
  return {failure, advice(failure) + where + ": " + words, failure == EtcdFailure::kUnsettled};
}

}  // namespace EventSystemHost
