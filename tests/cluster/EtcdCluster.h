// Real etcd servers on free loopback ports, with their data in a temporary directory.
//
// Thread safety: none, except that clients may use the servers from any thread.

#ifndef EVENTSYSTEM_TESTS_CLUSTER_ETCDCLUSTER_H
#define EVENTSYSTEM_TESTS_CLUSTER_ETCDCLUSTER_H

#include <csignal>
#include <string>
#include <vector>

#include "host/cluster/ClusterClient.h"
#include "tests/cluster/CertificateFiles.h"
#include "tests/cluster/Subprocess.h"
#include "tests/support/TempDir.h"

namespace EventSystemTest {

struct EtcdOptions {
  int members = 1;
  std::vector<std::string> arguments;              // more of etcd's command line
  const CertificateFiles* certificates = nullptr;  // TLS for clients when set; outlives the cluster
};

class EtcdCluster {
 public:
  // Starts all members and waits until they serve.
  explicit EtcdCluster(const EtcdOptions& options);
  explicit EtcdCluster(int members) : EtcdCluster(EtcdOptions{members, {}, nullptr}) {}

  // Member by member, from 0.
  void start(int member);  // with the data that it has
  void kill(int member);   // SIGKILL
  void pause(int member) { m_members.at(index(member)).process.signal(SIGSTOP); }
  void resume(int member) { m_members.at(index(member)).process.signal(SIGCONT); }

  // Waits until all members answer and a majority works. Throws when that takes too long.
  void waitUntilServing() const { waitUntilServing(configuration()); }
  void waitUntilServing(const EventSystemHost::ClusterConfiguration& configuration) const;
  // The same, whoever is down, as long as a majority works.
  void waitUntilMajority() const;

  int leader() const;

  int size() const { return static_cast<int>(m_members.size()); }
  std::string endpoint(int member) const;
  std::vector<std::string> endpoints() const;

  // For clients of this cluster: all endpoints, and certificates when it has TLS.
  EventSystemHost::ClusterConfiguration configuration() const;

  // Runs etcdctl against this cluster: what it printed. Throws std::runtime_error with that when
  // it fails.
  std::string etcdctl(const std::vector<std::string>& arguments) const;

  const std::filesystem::path& directory() const { return m_directory.path(); }

 private:
  struct Member {
    std::string name;
    unsigned short clientPort;
    unsigned short peerPort;
    Subprocess process;
  };

  static std::size_t index(int member) { return static_cast<std::size_t>(member); }
  std::string clientUrl(const Member& member) const;
  std::vector<std::string> commandOf(const Member& member) const;

  TempDir m_directory;
  EtcdOptions m_options;
  std::vector<Member> m_members;
};

}  // namespace EventSystemTest

#endif
