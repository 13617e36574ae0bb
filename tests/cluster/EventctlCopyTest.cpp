// Two hosts whose starts copy their databases to one cluster at the same time.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <system_error>

#include "tests/cluster/ClusterHome.h"
#include "tests/cluster/Eventually.h"

namespace EventSystemTest {
namespace {

using ::testing::ElementsAreArray;

constexpr int kEvents = 50;

class ClusterCopies : public ClusterHome {
 protected:
  ClusterCopies() {
    for (const std::string member : {"alpha", "beta"}) {
      std::string events;
      for (const std::string& name : namesOf(member)) events += serverStatus(name) + '\n';
      const Outcome outcome = runProgram(in(member, {"import", "-"}), {.input = events});
      EXPECT_EQ(outcome.status, 0) << outcome.err;
      joinCluster(homeOf(member), member, endpointsOf(m_etcd), "deadline_ms = 4000\n");
    }
  }

  std::filesystem::path homeOf(const std::string& member) const { return home() / member; }
  Arguments in(const std::string& member, Arguments arguments) const {
    arguments.insert(arguments.begin(), {"--home", homeOf(member).string()});
    return arguments;
  }

  // The servers that a member's events are about, in the order of its database.
  static std::vector<std::string> namesOf(const std::string& member) {
    std::vector<std::string> names;
    for (int i = 1; i <= kEvents; ++i) names.push_back(member + std::to_string(i));
    return names;
  }

  // Starts both; each start copies, and then shows the queue. etcd answers when both have come, so
  // that they begin to copy at the same time.
  void startBoth() {
    const Arguments show{"consume", "--keep", "--json"};
    m_etcd.pause(0);
    Program alpha(in("alpha", show));
    Program beta(in("beta", show));
    EXPECT_TRUE(eventually([&] { return hasSocket(alpha) && hasSocket(beta); }));
    m_etcd.resume(0);
    for (Program* const program : {&alpha, &beta}) {
      const Outcome outcome = program->wait();
      EXPECT_EQ(outcome.status, 0) << outcome.err;
      EXPECT_GE(jsonLines(outcome.out).size(), kEvents + 0U) << "its own at least";
    }
  }

  // Whether it has begun to connect to etcd.
  static bool hasSocket(const Program& program) {
    const auto files = "/proc/" + std::to_string(program.pid()) + "/fd";
    std::error_code gone;  // a process or a descriptor
    for (const auto& file : std::filesystem::directory_iterator(files, gone)) {
      if (std::filesystem::read_symlink(file, gone).string().starts_with("socket:")) return true;
    }
    return false;
  }

  // What the queue holds, by the member it came from, in its order.
  std::map<std::string, std::vector<std::string>> queue() const {
    std::map<std::string, std::vector<std::string>> servers;
    for (const json& event : jsonLines(runProgram(in("alpha", {"list", "--json"})).out)) {
      const auto server = event["fields"]["server"].get<std::string>();
      servers[server.substr(0, server.find_first_of("0123456789"))].push_back(server);
    }
    return servers;
  }

  EtcdCluster m_etcd{1};
};

TEST_F(ClusterCopies, OfTwoHostsAtOnceStoreEachEventOnceInItsHostsOrder) {
  startBoth();
  auto copied = queue();
  EXPECT_EQ(copied.size(), 2U);
  EXPECT_THAT(copied["alpha"], ElementsAreArray(namesOf("alpha")));
  EXPECT_THAT(copied["beta"], ElementsAreArray(namesOf("beta")));
}

TEST_F(ClusterCopies, OfTwoHostsChangeNothingWhenBothStartAgain) {
  startBoth();
  const std::string before = revision(m_etcd);
  startBoth();
  EXPECT_EQ(revision(m_etcd), before);
}

}  // namespace
}  // namespace EventSystemTest
