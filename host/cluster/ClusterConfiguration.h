// How this host reaches its etcd cluster. Plain values; an empty text means "not set".
//
// Thread safety: plain values.

#ifndef EVENTSYSTEM_HOST_CLUSTER_CLUSTERCONFIGURATION_H
#define EVENTSYSTEM_HOST_CLUSTER_CLUSTERCONFIGURATION_H

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

namespace EventSystemHost {

struct ClusterConfiguration {
  // "host:port" or "[IPv6]:port" of every member of the etcd cluster: one that is missing here is
  // one that cannot take over.
  std::vector<std::string> endpoints;

  // What one call of ClusterAPI may take, fail-over included. etcd itself gives up after 7 s.
  std::chrono::milliseconds deadline{8000};

  // TLS is used when the file of trusted certificates (PEM) is set; certificate and key are this
  // host's own, for an etcd that asks its clients for one.
  std::filesystem::path trustedCertificatesFile;
  std::filesystem::path certificateFile;
  std::filesystem::path keyFile;

  // A name that the certificate of every member carries. Not set: each has the host of its own
  // endpoint in its certificate.
  std::string serverName;

  // For an etcd with authentication enabled.
  std::string user;
  std::string password;

  // How long the tokens of this process outlive it when it dies, and how long it may be cut off
  // from etcd before it can no longer tell whether a write that got no answer was stored.
  std::chrono::seconds leaseTtl{3600};
};

}  // namespace EventSystemHost

#endif
