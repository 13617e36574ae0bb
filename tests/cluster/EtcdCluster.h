// Real etcd servers with their data in a temporary directory, and what tests ask of them.
//
// Thread safety: none, except that clients may use the servers from any thread.

#ifndef EVENTSYSTEM_TESTS_CLUSTER_ETCDCLUSTER_H
#define EVENTSYSTEM_TESTS_CLUSTER_ETCDCLUSTER_H

#include <filesystem>
#include <string>
#include <vector>

#include "apps/etcd_nodes/NodeGroup.h"
#include "host/cluster/ClusterClient.h"
#include "tests/cluster/CertificateFiles.h"
#include "tests/support/TempDir.h"

namespace EventSystemTest {

struct EtcdOptions {
  int members = 1;
  std::vector<std::string> arguments;              // more of etcd's command line
  const CertificateFiles* certificates = nullptr;  // TLS for clients when set; outlives the cluster
  std::filesystem::path directory =
      std::filesystem::temp_directory_path();  // of the directory with their data
};

class EtcdCluster {
 public:
  // Starts all members and waits until they serve.
  explicit EtcdCluster(const EtcdOptions& options);
  explicit EtcdCluster(int members) : EtcdCluster(optionsFor(members)) {}

  // Member by member, from 0.
  void start(int member) { m_nodes.start(member); }  // with the data that it has
  void kill(int member) { m_nodes.kill(member); }    // SIGKILL
  void pause(int member) { m_nodes.pause(member); }
  void resume(int member) { m_nodes.resume(member); }
  bool running(int member) { return m_nodes.running(member); }

  // Waits until all members answer and a majority works. Throws when that takes too long.
  void waitUntilServing() const { waitUntilServing(configuration()); }
  void waitUntilServing(const EventSystemHost::ClusterConfiguration& configuration) const;
  // The same, whoever is down, as long as a majority works.
  void waitUntilMajority() const;

  int leader() const;

  int size() const { return m_nodes.size(); }
  std::string endpoint(int member) const { return m_nodes.endpoint(member); }
  std::vector<std::string> endpoints() const { return m_nodes.endpoints(); }

  // For clients of this cluster: all endpoints, and certificates when it has TLS.
  EventSystemHost::ClusterConfiguration configuration() const;

  // Runs etcdctl against this cluster: what it printed. Throws std::runtime_error with that when
  // it fails.
  std::string etcdctl(const std::vector<std::string>& arguments) const;

  const std::filesystem::path& directory() const { return m_directory.path(); }

 private:
  static EtcdOptions optionsFor(int members) {
    EtcdOptions options;
    options.members = members;
    return options;
  }

  TempDir m_directory;
  EtcdOptions m_options;
  EtcdNodes::NodeGroup m_nodes;
};

}  // namespace EventSystemTest

#endif
