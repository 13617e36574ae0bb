// The connection to one member of the etcd cluster.
//
// Thread safety: any thread.

#ifndef EVENTSYSTEM_HOST_CLUSTER_ETCDMEMBER_H
#define EVENTSYSTEM_HOST_CLUSTER_ETCDMEMBER_H

#include <grpcpp/grpcpp.h>

#include <chrono>
#include <memory>
#include <string>

#include "etcd.grpc.pb.h"

namespace EventSystemHost {

struct EtcdMember {
  // Connects when the first request is sent. `serverName` empty: the certificate must be for the
  // endpoint's host.
  EtcdMember(const std::string& endpoint, const std::string& serverName,
             const std::shared_ptr<grpc::ChannelCredentials>& credentials);

  // Waits this long, but less when a connection comes to be meanwhile. Connections are made only
  // while some thread waits inside gRPC, so to sleep would not do.
  void rest(std::chrono::milliseconds pause) const;

  const std::string endpoint;
  const std::shared_ptr<grpc::Channel> channel;
  const std::unique_ptr<etcdserverpb::KV::Stub> kv;
  const std::unique_ptr<etcdserverpb::Lease::Stub> lease;
  const std::unique_ptr<etcdserverpb::Auth::Stub> auth;
  const std::unique_ptr<etcdserverpb::Maintenance::Stub> maintenance;
  const std::unique_ptr<etcdserverpb::Cluster::Stub> cluster;
};

}  // namespace EventSystemHost

#endif
