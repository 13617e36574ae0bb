#include "host/cluster/EtcdMember.h"

#include <thread>

namespace EventSystemHost {
namespace {

std::shared_ptr<grpc::Channel> channelTo(
    const std::string& endpoint, const std::string& serverName,
    const std::shared_ptr<grpc::ChannelCredentials>& credentials) {
  grpc::ChannelArguments arguments;
  if (!serverName.empty()) arguments.SetString(GRPC_ARG_DEFAULT_AUTHORITY, serverName);
  // etcd closes connections that ping more often than every 5 s, or without a call.
  arguments.SetInt(GRPC_ARG_KEEPALIVE_TIME_MS, 10'000);
  arguments.SetInt(GRPC_ARG_KEEPALIVE_TIMEOUT_MS, 3'000);
  arguments.SetInt(GRPC_ARG_INITIAL_RECONNECT_BACKOFF_MS, 100);
  arguments.SetInt(GRPC_ARG_MAX_RECONNECT_BACKOFF_MS, 1'000);
  // The least time that one attempt to connect gets, in spite of its name.
  arguments.SetInt(GRPC_ARG_MIN_RECONNECT_BACKOFF_MS, 2'000);
  // A request that is sent again by gRPC itself is one that we do not know of.
  arguments.SetInt(GRPC_ARG_ENABLE_RETRIES, 0);
  arguments.SetInt(GRPC_ARG_USE_LOCAL_SUBCHANNEL_POOL, 1);
  return grpc::CreateCustomChannel("dns:///" + endpoint, credentials, arguments);
}

}  // namespace

EtcdMember::EtcdMember(const std::string& to, const std::string& serverName,
                       const std::shared_ptr<grpc::ChannelCredentials>& credentials)
    : endpoint(to),
      channel(channelTo(to, serverName, credentials)),
      kv(etcdserverpb::KV::NewStub(channel)),
      lease(etcdserverpb::Lease::NewStub(channel)),
      auth(etcdserverpb::Auth::NewStub(channel)),
      maintenance(etcdserverpb::Maintenance::NewStub(channel)),
      cluster(etcdserverpb::Cluster::NewStub(channel)) {}

void EtcdMember::rest(std::chrono::milliseconds pause) const {
  if (channel->GetState(true) == GRPC_CHANNEL_READY) {
    std::this_thread::sleep_for(pause);
  } else {
    channel->WaitForConnected(std::chrono::system_clock::now() + pause);
  }
}

}  // namespace EventSystemHost
