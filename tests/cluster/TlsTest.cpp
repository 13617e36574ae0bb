#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/cluster/CertificateFiles.h"
#include "tests/cluster/EtcdCluster.h"
#include "tests/cluster/QueueReader.h"

namespace EventSystemTest {
namespace {

using EventSystemHost::ClusterClient;
using EventSystemHost::ClusterConfiguration;
using testing::AllOf;
using testing::HasSubstr;

std::string startFailure(ClusterConfiguration configuration) {
  configuration.deadline = std::chrono::seconds(4);
  try {
    const ClusterClient client(configuration);
  } catch (const std::runtime_error& failure) {
    return failure.what();
  }
  return "";
}

TEST(ClusterTls, ReachesSeveralMembers) {
  const CertificateFiles certificates("IP:127.0.0.1");
  EtcdCluster etcd({3, {}, &certificates});
  ClusterClient client(etcd.configuration());
  for (unsigned long id = 1; id <= 6; ++id) ASSERT_EQ(store(client, "event"), id);
  for (const auto& member : client.report().members) {
    EXPECT_EQ(member.quotaBytes, std::int64_t{2} << 30);
  }
  const int leader = etcd.leader();
  etcd.kill(leader);
  EXPECT_EQ(store(client, "event"), 7u);
  EXPECT_EQ(allEvents(client).size(), 7u);
}

TEST(ClusterTls, ChecksTheNameThatIsConfigured) {
  const CertificateFiles certificates("DNS:etcd.example,IP:127.0.0.1");
  EtcdCluster etcd({1, {}, &certificates});
  ClusterConfiguration configuration = etcd.configuration();
  configuration.serverName = "etcd.example";
  EXPECT_EQ(startFailure(configuration), "");
  configuration.serverName = "other.example";
  EXPECT_THAT(startFailure(configuration),
              AllOf(HasSubstr(etcd.endpoint(0)), HasSubstr("certificate")));
}

TEST(ClusterTls, SaysThatACertificateIsNotTrusted) {
  const CertificateFiles certificates("IP:127.0.0.1");
  const CertificateFiles others("IP:127.0.0.1");
  EtcdCluster etcd({1, {}, &certificates});
  ClusterConfiguration configuration = etcd.configuration();
  others.configure(configuration);
  EXPECT_THAT(startFailure(configuration),
              AllOf(HasSubstr(etcd.endpoint(0)), HasSubstr("certificate")));
}

TEST(ClusterTls, SaysThatItsOwnCertificateIsMissing) {
  const CertificateFiles certificates("IP:127.0.0.1");
  EtcdCluster etcd({1, {}, &certificates});
  ClusterConfiguration configuration = etcd.configuration();
  configuration.certificateFile.clear();
  configuration.keyFile.clear();
  EXPECT_THAT(startFailure(configuration),
              AllOf(HasSubstr(etcd.endpoint(0)), HasSubstr("certificate")));
}

TEST(ClusterTls, SaysThatTheServerWantsTls) {
  const CertificateFiles certificates("IP:127.0.0.1");
  EtcdCluster etcd({1, {}, &certificates});
  ClusterConfiguration configuration;
  configuration.endpoints = etcd.endpoints();
  EXPECT_THAT(startFailure(configuration), AllOf(HasSubstr(etcd.endpoint(0)), HasSubstr("TLS")));
}

TEST(ClusterTls, SaysThatTheServerDoesNotTrustItsCertificate) {
  const CertificateFiles certificates("IP:127.0.0.1");
  const CertificateFiles others("IP:127.0.0.1");
  EtcdCluster etcd({1, {}, &certificates});
  ClusterConfiguration configuration = etcd.configuration();
  ClusterConfiguration other;
  others.configure(other);
  configuration.certificateFile = other.certificateFile;
  configuration.keyFile = other.keyFile;
  EXPECT_THAT(startFailure(configuration),
              AllOf(HasSubstr(etcd.endpoint(0)), HasSubstr("certificate of this host")));
}

TEST(ClusterTls, SaysThatTheServerHasNoTls) {
  const CertificateFiles certificates("IP:127.0.0.1");
  EtcdCluster etcd(1);
  ClusterConfiguration configuration = etcd.configuration();
  certificates.configure(configuration);
  EXPECT_THAT(startFailure(configuration),
              AllOf(HasSubstr(etcd.endpoint(0)), HasSubstr("has it TLS at all?")));
}

TEST(ClusterTls, SaysWhichFileCannotBeRead) {
  ClusterConfiguration configuration;
  configuration.endpoints = {"127.0.0.1:2379"};
  configuration.trustedCertificatesFile = "/nowhere/ca.crt";
  EXPECT_THAT(startFailure(configuration), HasSubstr("/nowhere/ca.crt"));
  configuration.trustedCertificatesFile.clear();
  configuration.certificateFile = "/nowhere/client.crt";
  EXPECT_THAT(startFailure(configuration), HasSubstr("no file of trusted certificates"));
}

}  // namespace
}  // namespace EventSystemTest
