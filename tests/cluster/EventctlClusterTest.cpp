// The whole host in cluster mode: eventctl, the library's cluster stores and a real etcd.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

#include "tests/cluster/EtcdCluster.h"

namespace EventSystemTest {
namespace {

using testing::HasSubstr;

class EventctlCluster : public testing::Test {
 protected:
  // What the command printed; throws when it fails.
  std::string eventctl(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {EVENTCTL, "--home", m_home.path().string()});
    const std::filesystem::path output = m_home.path() / ("out" + std::to_string(++m_runs));
    return runProgram(arguments, output);
  }

  void configure(const std::string& endpoints) {
    std::ofstream(m_home.path() / "host.ini")
        << "[cluster]\ncluster_mode = 1\nmember = node1\nendpoints = " << endpoints << '\n';
  }

  static long lines(const std::string& text) { return std::count(text.begin(), text.end(), '\n'); }

  TempDir m_home;
  int m_runs = 0;
};

TEST_F(EventctlCluster, CopiesTheDatabasesEventsOnceAlsoAfterTheyWereConsumed) {
  for (int i = 0; i < 3; ++i) eventctl({"add", "legacy", "--payload", "kept" + std::to_string(i)});
  const EtcdCluster etcd(1);
  configure(etcd.endpoint(0));

  eventctl({"add", "legacy", "--payload", "added"});
  const std::string seen = eventctl({"consume", "--json"});
  EXPECT_EQ(lines(seen), 4);
  EXPECT_LT(seen.find("kept0"), seen.find("kept1"));
  EXPECT_LT(seen.find("kept1"), seen.find("kept2"));
  EXPECT_LT(seen.find("kept2"), seen.find("added"));
  EXPECT_EQ(lines(eventctl({"consume", "--json"})), 0) << "the start copied the rows again";
}

TEST_F(EventctlCluster, TakesEveryLineOfAnImportAsANewEventWhateverIdItCarries) {
  const EtcdCluster etcd(1);
  configure(etcd.endpoint(0));
  const std::filesystem::path file = m_home.path() / "two.events";
  const char* const line =
      "EVENT{version:1;type:6;id:7;date:1700000000;ABILITIESEVENT{flags:0x1;server:a;}}\n";
  std::ofstream(file) << line << line;
  eventctl({"import", file.string()});
  EXPECT_EQ(lines(eventctl({"consume", "--json"})), 2);
}

TEST_F(EventctlCluster, SaysWhichEndpointsDoNotAnswer) {
  configure("127.0.0.1:1");
  try {
    eventctl({"add", "legacy", "--payload", "lost"});
    FAIL() << "it was stored without a cluster";
  } catch (const std::runtime_error& problem) {
    EXPECT_THAT(problem.what(), HasSubstr("127.0.0.1:1"));
    EXPECT_THAT(problem.what(), HasSubstr("[cluster]"));
  }
}

}  // namespace
}  // namespace EventSystemTest
