// Processes that end without warning, and processes that want the same database.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <functional>

#include "tests/integration/QueueHome.h"

namespace EventSystemTest {
namespace {

using testing::HasSubstr;

// A forked process that writes numbers to its parent until it is killed or done.
class Child {
 public:
  explicit Child(const std::function<void(int output)>& work) {
    int ends[2];
    if (pipe(ends) != 0) abort();
    m_pid = fork();
    if (m_pid == 0) {
      close(ends[0]);
      work(ends[1]);
      _exit(0);
    }
    close(ends[1]);
    m_input = ends[0];
  }

  ~Child() {
    kill();
    close(m_input);
  }

  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;

  // The next number; 0 when the child has closed its end.
  unsigned long next() {
    unsigned long number = 0;
    return read(m_input, &number, sizeof number) == static_cast<ssize_t>(sizeof number) ? number
                                                                                        : 0;
  }

  void kill() {
    if (m_pid <= 0) return;
    ::kill(m_pid, SIGKILL);
    waitpid(m_pid, nullptr, 0);
    m_pid = 0;
  }

  pid_t pid() const { return m_pid; }

 private:
  pid_t m_pid = 0;
  int m_input = -1;
};

void tell(int output, unsigned long number) {
  if (write(output, &number, sizeof number) != static_cast<ssize_t>(sizeof number)) _exit(1);
}

class ProcessDeath : public testing::TestWithParam<const char*> {};

TEST_P(ProcessDeath, LosesNoAcknowledgedEvent) {
  const QueueHome home;
  home.write("host.ini", std::string("[log]\nlevel = off\n[database]\ndurability = ") + GetParam());
  std::vector<unsigned long> acknowledged;
  for (int round = 0; round < 3; ++round) {
    Child child([&home](int output) {
      RunningQueue queue(home);
      for (;;) tell(output, queue.add());
    });
    for (int i = 0; i < 50; ++i) acknowledged.push_back(child.next());
    child.kill();
    while (const unsigned long id = child.next()) acknowledged.push_back(id);
  }
  RunningQueue queue(home);
  const std::vector<unsigned long> found = queue.ids();
  EXPECT_TRUE(std::is_sorted(acknowledged.begin(), acknowledged.end()));
  EXPECT_TRUE(std::includes(found.begin(), found.end(), acknowledged.begin(), acknowledged.end()));
  EXPECT_LE(found.size(), acknowledged.size() + 3) << "at most the call under way of each life";
  EXPECT_GT(queue.add(), acknowledged.back());
}

INSTANTIATE_TEST_SUITE_P(EachDurability, ProcessDeath,
                         testing::Values("strict", "group", "relaxed"),
                         [](const auto& each) { return std::string(each.param); });

TEST(TwoProcesses, CannotWriteTheSameDatabase) {
  const QueueHome home;
  Child owner([&home](int output) {
    RunningQueue queue(home);
    tell(output, queue.add());
    pause();
  });
  ASSERT_EQ(owner.next(), 1U);
  try {
    RunningQueue second(home);
    FAIL() << "the second writer was let in";
  } catch (const EventSystemHost::DatabaseBusy& busy) {
    EXPECT_THAT(busy.what(), HasSubstr(home.database().string()));
    EXPECT_THAT(busy.what(), HasSubstr(std::to_string(owner.pid())));
  }
  owner.kill();
  RunningQueue successor(home);
  EXPECT_EQ(successor.add(), 2U);
}

}  // namespace
}  // namespace EventSystemTest
