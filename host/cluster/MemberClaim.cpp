#include "host/cluster/MemberClaim.h"

#include "host/cluster/EtcdKeys.h"
#include "host/cluster/WriteTransaction.h"

namespace EventSystemHost {
namespace {

// Puts the value where there is none; `owner` is the value that is there then.
EtcdResult putIfAbsent(EtcdChannel& channel, const std::string& key, const std::string& value,
                       std::string& owner, const Deadline& deadline) {
  etcdserverpb::TxnRequest request;
  require(request, key, {});
  etcdserverpb::PutRequest& put = *request.add_success()->mutable_request_put();
  put.set_key(key);
  put.set_value(value);
  request.add_failure()->mutable_request_range()->set_key(key);
  etcdserverpb::TxnResponse answer;
  EtcdResult result = channel.txn(request, answer, deadline);
  if (!result.ok()) return result;
  owner = value;
  const bool told = !answer.succeeded() && answer.responses_size() == 1 &&
                    answer.responses(0).response_range().kvs_size() == 1;
  if (told) owner = answer.responses(0).response_range().kvs(0).value();
  return result;
}

}  // namespace

EtcdResult claimMember(EtcdChannel& channel, const std::string& queue, const std::string& member,
                       const MemberHome& home, const Deadline& deadline) {
  const std::string key = memberKey(queue, member);
  KeyState claim;
  // Looked at first: a service without space for a claim may still know this one.
  EtcdResult result = readKey(channel, key, claim, deadline);
  if (!result.ok()) return result;
  std::string owner = claim.value;
  if (claim.revision == 0) {
    result = putIfAbsent(channel, key, home.identity + '\n' + home.place, owner, deadline);
    if (!result.ok()) return result;
  }
  if (owner.starts_with(home.identity + '\n')) return {};
  const auto line = owner.find('\n');
  const std::string place = line == std::string::npos ? "another home" : owner.substr(line + 1);
  return {EtcdFailure::kRefused,
          "the member \"" + member + "\" of the queue \"" + queue + "\" is " + place +
              "; give this home a member of its own, or, when that one is gone for good: "
              "etcdctl del " +
              key,
          false};
}

}  // namespace EventSystemHost
