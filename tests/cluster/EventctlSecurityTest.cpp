// eventctl with a cluster that asks for certificates or a password, as host.ini tells them.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/cluster/CertificateFiles.h"
#include "tests/cluster/ClusterHome.h"

namespace EventSystemTest {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

// Every way to the service: of a host that writes, and of one that reads.
const std::vector<Arguments> kWays{
    {"add", "legacy", "--payload", "x"}, {"list"}, {"consume", "--limit", "1"}};

class ClusterSecurity : public ClusterHome {
 protected:
  void expectWork() const {
    EXPECT_EQ(add("node"), 1U);
    EXPECT_THAT(ids(), ElementsAre(1));
    EXPECT_EQ(jsonLines(output({"consume", "--json"})).size(), 1U);
  }

  // Each way fails and says which member it was and what was wrong; a start of a host also says
  // where its settings are.
  void expectFailures(const EtcdCluster& etcd, const std::string& what) const {
    for (const Arguments& way : kWays) {
      const Outcome outcome = run(way);
      EXPECT_EQ(outcome.status, 1) << way.front();
      EXPECT_THAT(outcome.err, AllOf(HasSubstr(etcd.endpoint(0)), HasSubstr(what)));
      EXPECT_THAT(outcome.err, HasSubstr(way.front() == "list"
                                             ? "the cluster service cannot be read"
                                             : (home() / "host.ini").string() + " [cluster]: "));
    }
  }
};

class ClusterWithCertificates : public ClusterSecurity {
 protected:
  // host.ini names the files of `trusted` for the authority, and of `shown` for this host.
  void joinWith(const CertificateFiles& trusted, const CertificateFiles* shown) const {
    EventSystemHost::ClusterConfiguration files;
    trusted.configure(files);
    std::string lines =
        "deadline_ms = 4000\nca_file = " + files.trustedCertificatesFile.string() + '\n';
    if (shown != nullptr) {
      shown->configure(files);
      lines += "certificate_file = " + files.certificateFile.string() +
               "\nkey_file = " + files.keyFile.string() + '\n';
    }
    joinCluster(endpointsOf(m_etcd), lines);
  }

  const CertificateFiles m_certificates{"IP:127.0.0.1"};
  const EtcdCluster m_etcd{EtcdOptions{1, {}, &m_certificates}};
};

TEST_F(ClusterWithCertificates, WorksWithTheRightOnes) {
  joinWith(m_certificates, &m_certificates);
  expectWork();
}

TEST_F(ClusterWithCertificates, SaysThatTheAuthorityIsTheWrongOne) {
  const CertificateFiles others("IP:127.0.0.1");
  joinWith(others, &m_certificates);
  expectFailures(m_etcd, "certificate");
}

TEST_F(ClusterWithCertificates, SaysThatItsOwnIsMissing) {
  joinWith(m_certificates, nullptr);
  expectFailures(m_etcd, "certificate");
}

class ClusterWithUsers : public ClusterSecurity {
 protected:
  ClusterWithUsers() {
    m_etcd.etcdctl({"user", "add", "root:secret"});
    m_etcd.etcdctl({"role", "add", "root"});
    m_etcd.etcdctl({"user", "grant-role", "root", "root"});
    m_etcd.etcdctl({"auth", "enable"});
  }

  void joinAs(const std::string& lines) const {
    joinCluster(endpointsOf(m_etcd), "deadline_ms = 4000\n" + lines);
  }

  const EtcdCluster m_etcd{EtcdOptions{1, {"--bcrypt-cost=4"}, nullptr}};
};

TEST_F(ClusterWithUsers, WorksWithTheRightPassword) {
  joinAs("user = root\npassword = secret\n");
  expectWork();
}

TEST_F(ClusterWithUsers, SaysThatThePasswordIsWrongAndDoesNotShowIt) {
  joinAs("user = root\npassword = guess\n");
  expectFailures(m_etcd, "etcd user \"root\" cannot log in: ");
  for (const Arguments& way : kWays) EXPECT_THAT(run(way).err, Not(HasSubstr("guess")));
}

TEST_F(ClusterWithUsers, SaysThatAUserIsMissing) {
  joinAs("");
  expectFailures(m_etcd, "user name is empty");
}

}  // namespace
}  // namespace EventSystemTest
