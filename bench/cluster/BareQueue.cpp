#include "bench/cluster/BareQueue.h"

#include <grpcpp/grpcpp.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <stdexcept>

namespace Bench {
namespace {

using etcdserverpb::Compare;
using etcdserverpb::TxnRequest;
using etcdserverpb::TxnResponse;

constexpr unsigned long kWindow = 64;

std::string padded(unsigned long number) {
  std::array<char, 24> text{};
  std::snprintf(text.data(), text.size(), "%020lu", number);
  return text.data();
}

unsigned long idOf(const std::string& key) {
  return std::stoul(key.substr(key.size() - 20));
}

void check(const grpc::Status& status) {
  if (!status.ok()) throw std::runtime_error("etcd: " + status.error_message());
}

void compare(TxnRequest& request, const std::string& key, std::int64_t revision,
             const std::string& value) {
  Compare& modified = *request.add_compare();
  modified.set_target(Compare::MOD);
  modified.set_key(key);
  modified.set_mod_revision(revision);
  if (revision == 0) return;
  Compare& same = *request.add_compare();
  same.set_target(Compare::VALUE);
  same.set_key(key);
  same.set_value(value);
}

void put(TxnRequest& request, const std::string& key, const std::string& value,
         std::int64_t lease = 0) {
  auto& operation = *request.add_success()->mutable_request_put();
  operation.set_key(key);
  operation.set_value(value);
  operation.set_lease(lease);
}

std::shared_ptr<grpc::Channel> channelTo(const std::string& endpoint) {
  return grpc::CreateChannel(endpoint, grpc::InsecureChannelCredentials());
}

}  // namespace

BareQueue::BareQueue(const std::vector<std::string>& endpoints, const std::string& queue,
                     const std::string& text, const std::string& dsid)
    : m_prefix("/eventsystem/" + queue + "/" + dsid + "/"), m_value(kMember + ("\n" + text)) {
  for (const std::string& endpoint : endpoints) {
    m_members.push_back(etcdserverpb::KV::NewStub(channelTo(endpoint)));
  }
  grantLease(endpoints.front());
  m_sequence.name = m_prefix + "seq";
  m_mark.name = m_prefix + "last/" + std::to_string(getpid()) + "-" + std::to_string(m_lease);
}

void BareQueue::grantLease(const std::string& endpoint) {
  grpc::ClientContext context;
  context.set_wait_for_ready(true);
  etcdserverpb::LeaseGrantRequest request;
  request.set_ttl(3600);
  etcdserverpb::LeaseGrantResponse answer;
  check(etcdserverpb::Lease::NewStub(channelTo(endpoint))->LeaseGrant(&context, request, &answer));
  m_lease = answer.id();
}

std::string BareQueue::eventKey(unsigned long id) const {
  return m_prefix + "e/" + padded(id);
}

TxnResponse BareQueue::send(const TxnRequest& request) {
  grpc::ClientContext context;
  TxnResponse answer;
  check(member().Txn(&context, request, &answer));
  return answer;
}

void BareQueue::add() {
  ++m_token;
  while (!tryToAdd()) {
  }
}

bool BareQueue::tryToAdd() {
  const unsigned long id = m_sequence.revision == 0 ? 1 : std::stoul(m_sequence.value) + 1;
  const std::string sequence = padded(id);
  const std::string mark = padded(m_token) + " " + padded(id);
  TxnRequest request;
  compare(request, m_sequence.name, m_sequence.revision, m_sequence.value);
  compare(request, m_mark.name, m_mark.revision, m_mark.value);
  put(request, eventKey(id), m_value);
  put(request, m_sequence.name, sequence);
  put(request, m_mark.name, mark, m_lease);
  request.add_failure()->mutable_request_range()->set_key(m_sequence.name);
  request.add_failure()->mutable_request_range()->set_key(m_mark.name);
  const TxnResponse answer = send(request);
  if (answer.succeeded()) {
    m_sequence.value = sequence;
    m_mark.value = mark;
    m_sequence.revision = m_mark.revision = answer.header().revision();
    return true;
  }
  const auto& found = answer.responses(0).response_range();
  if (found.kvs_size() > 0) {
    m_sequence.revision = found.kvs(0).mod_revision();
    m_sequence.value = found.kvs(0).value();
  }
  return false;
}

unsigned long BareQueue::next(unsigned long afterId) {
  TxnRequest request;
  auto& events = *request.add_success()->mutable_request_range();
  events.set_key(eventKey(afterId + 1));
  events.set_range_end(eventKey(afterId + kWindow) + '\0');
  events.set_limit(1);
  request.add_success()->mutable_request_range()->set_key(m_sequence.name);
  const TxnResponse answer = send(request);
  const auto& found = answer.responses(0).response_range();
  return found.kvs_size() == 0 ? 0 : idOf(found.kvs(0).key());
}

unsigned long BareQueue::nextOfAll(unsigned long afterId) {
  etcdserverpb::RangeRequest request;
  request.set_key(eventKey(afterId + 1));
  request.set_range_end(m_prefix + "e0");  // '0' follows '/'
  request.set_limit(1);
  grpc::ClientContext context;
  etcdserverpb::RangeResponse answer;
  check(member().Range(&context, request, &answer));
  return answer.kvs_size() == 0 ? 0 : idOf(answer.kvs(0).key());
}

void BareQueue::remove(unsigned long id) {
  etcdserverpb::DeleteRangeRequest request;
  request.set_key(eventKey(id));
  grpc::ClientContext context;
  etcdserverpb::DeleteRangeResponse answer;
  check(member().DeleteRange(&context, request, &answer));
}

void BareQueue::fill(unsigned long first, unsigned long last) {
  constexpr unsigned long kAtOnce = 100;  // etcd takes 128 operations in one transaction
  for (unsigned long id = first; id <= last;) {
    TxnRequest request;
    for (unsigned long i = 0; i < kAtOnce && id <= last; ++i, ++id) {
      put(request, eventKey(id), m_value);
    }
    put(request, m_sequence.name, padded(id - 1));
    send(request);
  }
}

void BareQueue::removeAll(unsigned long first, unsigned long last) {
  constexpr unsigned long kAtOnce = 5000;
  for (unsigned long id = first; id <= last; id += kAtOnce) {
    etcdserverpb::DeleteRangeRequest request;
    request.set_key(eventKey(id));
    request.set_range_end(eventKey(std::min(id + kAtOnce - 1, last)) + '\0');
    grpc::ClientContext context;
    etcdserverpb::DeleteRangeResponse answer;
    check(member().DeleteRange(&context, request, &answer));
  }
}

}  // namespace Bench
