// Certificates for one test, made with the openssl program: an authority, a server and a client
// certificate signed by it.
//
// Thread safety: none.

#ifndef EVENTSYSTEM_TESTS_CLUSTER_CERTIFICATEFILES_H
#define EVENTSYSTEM_TESTS_CLUSTER_CERTIFICATEFILES_H

#include <string>
#include <vector>

#include "host/cluster/ClusterConfiguration.h"
#include "tests/support/TempDir.h"

namespace EventSystemTest {

class CertificateFiles {
 public:
  // `serverNames` is the subject's alternative names: "DNS:etcd.example,IP:127.0.0.1".
  explicit CertificateFiles(const std::string& serverNames);

  // What etcd is told: it asks its clients for a certificate of this authority.
  std::vector<std::string> serverArguments() const;

  // Trusts the authority, and shows the client certificate.
  void configure(EventSystemHost::ClusterConfiguration& configuration) const;

 private:
  void run(const std::vector<std::string>& command) const;
  void sign(const std::string& name, const std::string& extensions) const;
  std::filesystem::path file(const std::string& name) const { return m_directory.path() / name; }

  TempDir m_directory;
};

}  // namespace EventSystemTest

#endif
