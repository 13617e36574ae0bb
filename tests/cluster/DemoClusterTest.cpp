// The tour of the cluster mode as a person runs it.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <fstream>
#include <sstream>
#include <thread>

#include "apps/etcd_nodes/Subprocess.h"
#include "tests/cluster/Processes.h"
#include "tests/support/TempDir.h"

namespace EventSystemTest {
namespace {

using EtcdNodes::Subprocess;
using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

std::string contentOf(const std::filesystem::path& file) {
  std::ostringstream text;
  text << std::ifstream(file).rdbuf();
  return text.str();
}

class DemoCluster : public testing::Test {
 protected:
  Subprocess start(const std::vector<std::string>& more = {}) const {
    std::vector<std::string> command = {EVENTCTL, "demo", "--cluster", "--home", tour().string()};
    command.insert(command.end(), more.begin(), more.end());
    return Subprocess(command, m_directory.path() / "out");
  }

  std::filesystem::path tour() const { return m_directory.path() / "tour"; }
  std::string printed() const { return contentOf(m_directory.path() / "out"); }

  // False when the tour has ended before, or time has run out.
  bool waitForOutput(Subprocess& running, const std::string& text) const {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(60);
    while (printed().find(text) == std::string::npos) {
      if (!running.running() || std::chrono::steady_clock::now() > end) return false;
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return true;
  }

  void expectNothingLeft() const {
    EXPECT_THAT(processesWith(tour().string()), IsEmpty());
    EXPECT_FALSE(std::filesystem::exists(tour()));
  }

  TempDir m_directory;
};

TEST_F(DemoCluster, ProvesThatNothingIsLostAndLeavesNothing) {
  const int status = start().wait();
  const std::string text = printed();
  EXPECT_EQ(status, 0) << text;
  EXPECT_THAT(text,
              AllOf(HasSubstr(" is killed\n"), HasSubstr("a new leader\n"),
                    HasSubstr("acknowledged events are there"),
                    HasSubstr("exactly the other half is there"), HasSubstr("7 of 7 checks")));
  EXPECT_THAT(text, Not(HasSubstr("[FAILED]")));
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    EXPECT_LE(line.size(), 80u) << line;
    EXPECT_EQ(line.find('\x1b'), std::string::npos) << line;
  }
  expectNothingLeft();
}

TEST_F(DemoCluster, FailsWhenAnAcknowledgedEventIsTakenAway) {
  Subprocess running = start();
  ASSERT_TRUE(waitForOutput(running, " is back\n")) << printed();
  const std::string configuration = contentOf(tour() / "host-a" / "host.ini");
  const std::size_t endpoints = configuration.find("127.0.0.1:");
  EtcdNodes::runProgram(
      {"env", "ETCDCTL_API=3", "etcdctl",
       "--endpoints=" +
           configuration.substr(endpoints, configuration.find('\n', endpoints) - endpoints),
       "del", "/eventsystem/events/0000000004/e/00000000000000000005"},
      m_directory.path() / "etcdctl.log");
  EXPECT_EQ(running.wait(), 1);
  EXPECT_THAT(printed(), AllOf(HasSubstr("[FAILED]"), HasSubstr("6 of 7 checks")));
  expectNothingLeft();
}

TEST_F(DemoCluster, EndsEverythingWhenItIsInterruptedWhileHostsWrite) {
  for (const int number : {SIGINT, SIGTERM}) {
    Subprocess running = start();
    ASSERT_TRUE(waitForOutput(running, " is killed\n")) << printed();
    EXPECT_THAT(processesWith(tour().string()), Not(IsEmpty()));
    running.signal(number);
    EXPECT_EQ(running.wait(), 1);
    EXPECT_THAT(printed(), HasSubstr("eventctl: the tour was interrupted\n"));
    expectNothingLeft();
    std::filesystem::remove(m_directory.path() / "out");
  }
}

TEST_F(DemoCluster, LeavesNoProcessWhenItIsKilledAndTakesOverWhatItLeft) {
  Subprocess running = start();
  ASSERT_TRUE(waitForOutput(running, " is killed\n")) << printed();
  running.kill();
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(60);
  while (!processesWith(tour().string()).empty() && std::chrono::steady_clock::now() < end) {
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  EXPECT_THAT(processesWith(tour().string()), IsEmpty());
  EXPECT_TRUE(std::filesystem::exists(tour() / "etcd-1"));

  std::filesystem::remove(m_directory.path() / "out");
  Subprocess second = start();
  ASSERT_TRUE(waitForOutput(second, "Three etcd nodes")) << printed();
  second.signal(SIGINT);
  second.wait();
  expectNothingLeft();
}

TEST_F(DemoCluster, KeepsItsDirectoryWhenAskedTo) {
  Subprocess running = start({"--keep"});
  ASSERT_TRUE(waitForOutput(running, "Three etcd nodes")) << printed();
  running.signal(SIGINT);
  running.wait();
  EXPECT_THAT(processesWith(tour().string()), IsEmpty());
  EXPECT_TRUE(std::filesystem::exists(tour() / "host-a" / "events.db"));
}

TEST_F(DemoCluster, SaysWhatToInstallWhereThereIsNoEtcd) {
  EtcdNodes::runProgram(
      {"sh", "-c", "! PATH=/nonexistent " EVENTCTL " demo --cluster --home " + tour().string()},
      m_directory.path() / "out");
  EXPECT_THAT(printed(), HasSubstr("install the Debian package etcd-server"));
  expectNothingLeft();
}

TEST_F(DemoCluster, RefusesADirectoryThatHoldsAnythingElse) {
  std::filesystem::create_directories(tour() / "host-a");
  EXPECT_EQ(start().wait(), 1);
  EXPECT_THAT(printed(), HasSubstr("holds host-a, which is not of the tour"));
  EXPECT_TRUE(std::filesystem::is_empty(tour() / "host-a"));
}

TEST_F(DemoCluster, RefusesADirectoryThatAnotherTourUses) {
  Subprocess running = start();
  ASSERT_TRUE(waitForOutput(running, "Three etcd nodes")) << printed();
  EXPECT_EQ(start().wait(), 1);
  EXPECT_THAT(printed(), HasSubstr("another tour uses " + tour().string()));
  EXPECT_TRUE(std::filesystem::exists(tour() / "host-a"));
}

}  // namespace
}  // namespace EventSystemTest
