#include "host/cluster/EtcdChannel.h"

#include <fstream>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <utility>

#include "EventSystem/platform/HostLog.h"
#include "host/cluster/Endpoint.h"

namespace EventSystemHost {

namespace {

constexpr int kMostLogIns = 3;  // for one request
constexpr std::chrono::milliseconds kFirstPause{20};
constexpr std::chrono::milliseconds kLongestPause{400};
constexpr std::chrono::milliseconds kProbePatience{1000};

std::string contentOf(const std::filesystem::path& file) {
  if (file.empty()) return "";
  std::ifstream stream(file, std::ios::binary);
  std::ostringstream content;
  content << stream.rdbuf();
  if (!stream || content.str().empty()) {
    throw std::runtime_error("the certificate file " + file.string() + " cannot be read");
  }
  return content.str();
}

std::shared_ptr<grpc::ChannelCredentials> credentialsOf(const ClusterConfiguration& configuration) {
  if (configuration.trustedCertificatesFile.empty()) {
    if (!configuration.certificateFile.empty() || !configuration.keyFile.empty()) {
      throw std::runtime_error(
          "a certificate for etcd is set, but no file of trusted certificates");
    }
    return grpc::InsecureChannelCredentials();
  }
  if (configuration.certificateFile.empty() != configuration.keyFile.empty()) {
    throw std::runtime_error("of the certificate for etcd and its key only one is set");
  }
  grpc::SslCredentialsOptions options;
  options.pem_root_certs = contentOf(configuration.trustedCertificatesFile);
  options.pem_cert_chain = contentOf(configuration.certificateFile);
  options.pem_private_key = contentOf(configuration.keyFile);
  return grpc::SslCredentials(options);
}

std::string joined(const std::vector<std::string>& endpoints) {
  std::string all;
  for (const std::string& endpoint : endpoints) all += (all.empty() ? "" : ",") + endpoint;
  return all;
}

}  // namespace

EtcdChannel::EtcdChannel(const ClusterConfiguration& configuration)
    : m_configuration(configuration),
      m_allEndpoints(joined(configuration.endpoints)),
      m_choice(configuration.endpoints.size()) {
  if (configuration.endpoints.empty()) throw std::runtime_error("no etcd endpoint is configured");
  const auto credentials = credentialsOf(configuration);
  for (const std::string& endpoint : configuration.endpoints) {
    checkEndpoint(endpoint);
    m_members.push_back(
        std::make_unique<const EtcdMember>(endpoint, configuration.serverName, credentials));
  }
}

EtcdChannel::~EtcdChannel() = default;

std::string EtcdChannel::token() const {
  const std::lock_guard lock(m_mutex);
  return m_token;
}

EtcdResult EtcdChannel::tryOnce(std::size_t member, const Attempt& attempt,
                                const std::string& token, std::chrono::milliseconds patience) {
  grpc::ClientContext context;
  context.set_deadline(std::chrono::system_clock::now() + patience);
  if (!token.empty()) context.AddMetadata("token", token);
  ++m_roundTrips;
  return resultOf(attempt(*m_members[member], context), m_members[member]->endpoint);
}

// As part of a call. A member is not blamed when it was given less than its share of the time.
EtcdResult EtcdChannel::ask(std::size_t member, const Attempt& attempt, const std::string& token,
                            const Deadline& deadline) {
  const auto begin = Deadline::Clock::now();
  EtcdResult result = tryOnce(member, attempt, token, deadline.attempt());
  const bool early = deadline.passed() && Deadline::Clock::now() - begin < deadline.share();
  if (result.failure == EtcdFailure::kUnsettled && !early) m_choice.avoid(member);
  return result;
}

EtcdResult EtcdChannel::repeat(const Attempt& attempt, const std::string& token,
                               const Deadline& deadline) {
  bool uncertain = false;
  std::string told;
  for (auto pause = kFirstPause;;) {
    const std::size_t member = m_choice.next();
    EtcdResult result = ask(member, attempt, token, deadline);
    uncertain = uncertain || result.uncertain;
    result.uncertain = uncertain;
    const bool unsettled = result.failure == EtcdFailure::kUnsettled;
    if (!unsettled && result.failure != EtcdFailure::kTooManyRequests) return result;
    // The last attempt is often cut short; the one before it knows why.
    if (told.empty() || !deadline.passed()) told = result.message;
    if (deadline.left() <= pause) return givenUp(std::move(result), told);
    if (unsettled && !m_choice.allAvoided()) continue;
    m_members[member]->rest(pause);
    pause = std::min(2 * pause, kLongestPause);
  }
}

// What gRPC has `told` of single members is for the log; a caller wants to know what it means.
EtcdResult EtcdChannel::givenUp(EtcdResult last, const std::string& told) const {
  const std::string where = " (etcd at " + m_allEndpoints + ")";
  if (last.failure == EtcdFailure::kUnsettled) {
    WarningA(4, "%s no member answers; the last one: %s", __func__, told.c_str());
    return {EtcdFailure::kNoMajority, "no majority of the members answers" + where, last.uncertain};
  }
  return {last.failure, told + where, last.uncertain};
}

// A read through a majority: a member that is cut off from the others does not serve either.
void EtcdChannel::probeAvoided() {
  etcdserverpb::RangeRequest request;
  request.set_key("/eventsystem/");
  for (const std::size_t member : m_choice.avoided()) {
    etcdserverpb::RangeResponse answer;
    const EtcdResult result = tryOnce(
        member,
        [&](const EtcdMember& to, grpc::ClientContext& context) {
          context.set_wait_for_ready(true);
          return to.kv->Range(&context, request, &answer);
        },
        token(), kProbePatience);
    if (result.failure != EtcdFailure::kUnsettled) m_choice.forgive(member);
  }
}

EtcdResult EtcdChannel::perform(const Attempt& attempt, const Deadline& deadline) {
  const bool hasUser = !m_configuration.user.empty();
  bool uncertain = false;
  std::optional<std::string> refused;
  for (int logIns = 1;; ++logIns) {
    if (hasUser) {
      EtcdResult logged = logIn(refused, deadline);
      logged.uncertain = uncertain;
      if (!logged.ok()) return logged;
    }
    const std::string used = token();
    EtcdResult result = repeat(attempt, used, deadline);
    uncertain = uncertain || result.uncertain;
    result.uncertain = uncertain;
    const bool again = hasUser && result.failure == EtcdFailure::kTokenRefused;
    if (!again || logIns == kMostLogIns) return result;
    refused = used;
  }
}

EtcdResult EtcdChannel::logIn(const std::optional<std::string>& refused, const Deadline& deadline) {
  const Gate::Pass pass(m_logInGate, deadline);
  if (!pass) return {EtcdFailure::kUnsettled, "logging in to etcd takes too long", false};
  {
    const std::lock_guard lock(m_mutex);
    // Another thread may have logged in since the token was refused.
    if (m_loggedIn && refused != m_token) return {};
  }
  etcdserverpb::AuthenticateRequest request;
  request.set_name(m_configuration.user);
  request.set_password(m_configuration.password);
  etcdserverpb::AuthenticateResponse answer;
  EtcdResult result = repeat(
      [&](const EtcdMember& to, grpc::ClientContext& context) {
        return to.auth->Authenticate(&context, request, &answer);
      },
      "", deadline);
  if (result.failure == EtcdFailure::kLoginNotNeeded) {
    WarningA(4, "%s etcd user \"%s\" is not used: authentication is not enabled at etcd", __func__,
             m_configuration.user.c_str());
    result = {};
  }
  if (!result.ok()) {
    result.message = "etcd user \"" + m_configuration.user + "\" cannot log in: " + result.message;
    return result;
  }
  const std::lock_guard lock(m_mutex);
  m_token = answer.token();
  m_loggedIn = true;
  return {};
}

EtcdResult EtcdChannel::txn(const etcdserverpb::TxnRequest& request,
                            etcdserverpb::TxnResponse& answer, const Deadline& deadline) {
  return perform(
      [&](const EtcdMember& to, grpc::ClientContext& context) {
        return to.kv->Txn(&context, request, &answer);
      },
      deadline);
}

EtcdResult EtcdChannel::range(const etcdserverpb::RangeRequest& request,
                              etcdserverpb::RangeResponse& answer, const Deadline& deadline) {
  return perform(
      [&](const EtcdMember& to, grpc::ClientContext& context) {
        return to.kv->Range(&context, request, &answer);
      },
      deadline);
}

EtcdResult EtcdChannel::deleteRange(const etcdserverpb::DeleteRangeRequest& request,
                                    etcdserverpb::DeleteRangeResponse& answer,
                                    const Deadline& deadline) {
  return perform(
      [&](const EtcdMember& to, grpc::ClientContext& context) {
        return to.kv->DeleteRange(&context, request, &answer);
      },
      deadline);
}

EtcdResult EtcdChannel::grantLease(std::int64_t id, std::chrono::seconds ttl,
                                   const Deadline& deadline) {
  etcdserverpb::LeaseGrantRequest request;
  request.set_id(id);
  request.set_ttl(ttl.count());
  etcdserverpb::LeaseGrantResponse answer;
  const EtcdResult result = perform(
      [&](const EtcdMember& to, grpc::ClientContext& context) {
        return to.lease->LeaseGrant(&context, request, &answer);
      },
      deadline);
  // The id is drawn at random, so the lease that exists is ours: an answer was lost.
  return result.failure == EtcdFailure::kLeaseExists ? EtcdResult{} : result;
}

EtcdResult EtcdChannel::keepLeaseAlive(std::int64_t id, bool& alive, const Deadline& deadline) {
  etcdserverpb::LeaseKeepAliveRequest request;
  request.set_id(id);
  etcdserverpb::LeaseKeepAliveResponse answer;
  EtcdResult result = perform(
      [&](const EtcdMember& to, grpc::ClientContext& context) {
        const auto stream = to.lease->LeaseKeepAlive(&context);
        const bool answered = stream->Write(request) && stream->Read(&answer);
        stream->WritesDone();
        grpc::Status status = stream->Finish();
        if (answered || !status.ok()) return status;
        return grpc::Status(grpc::StatusCode::UNAVAILABLE, "the keep-alive was not answered");
      },
      deadline);
  alive = answer.ttl() > 0;
  return result;
}

EtcdResult EtcdChannel::revokeLease(std::int64_t id, const Deadline& deadline) {
  etcdserverpb::LeaseRevokeRequest request;
  request.set_id(id);
  etcdserverpb::LeaseRevokeResponse answer;
  return ask(
      m_choice.next(),
      [&](const EtcdMember& to, grpc::ClientContext& context) {
        return to.lease->LeaseRevoke(&context, request, &answer);
      },
      token(), deadline);
}

EtcdResult EtcdChannel::memberStatus(etcdserverpb::StatusResponse& answer,
                                     const Deadline& deadline) {
  return ask(
      m_choice.next(),
      [&](const EtcdMember& to, grpc::ClientContext& context) {
        return to.maintenance->Status(&context, etcdserverpb::StatusRequest(), &answer);
      },
      token(), deadline);
}

EtcdResult EtcdChannel::memberList(etcdserverpb::MemberListResponse& answer,
                                   const Deadline& deadline) {
  return perform(
      [&](const EtcdMember& to, grpc::ClientContext& context) {
        return to.cluster->MemberList(&context, etcdserverpb::MemberListRequest(), &answer);
      },
      deadline);
}

EtcdResult EtcdChannel::alarms(etcdserverpb::AlarmResponse& answer, const Deadline& deadline) {
  return perform(
      [&](const EtcdMember& to, grpc::ClientContext& context) {
        return to.maintenance->Alarm(&context, etcdserverpb::AlarmRequest(), &answer);
      },
      deadline);
}

}  // namespace EventSystemHost
