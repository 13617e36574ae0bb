// A program started by a test: it ends with its object, and with the test's process.
//
// Thread safety: none; start it from the main thread.

#ifndef EVENTSYSTEM_TESTS_CLUSTER_SUBPROCESS_H
#define EVENTSYSTEM_TESTS_CLUSTER_SUBPROCESS_H

#include <sys/types.h>

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace EventSystemTest {

class Subprocess {
 public:
  Subprocess() = default;  // holds nothing

  // What the program prints goes to `output`, after what is there.
  Subprocess(const std::vector<std::string>& command, const std::filesystem::path& output);
  ~Subprocess() { kill(); }

  Subprocess(Subprocess&& other) noexcept : m_pid(std::exchange(other.m_pid, 0)) {}
  Subprocess& operator=(Subprocess&& other) noexcept {
    std::swap(m_pid, other.m_pid);
    return *this;
  }

  bool running() const { return m_pid != 0; }
  void signal(int number) const;

  // SIGKILL, and waits.
  void kill();

  // Waits for its end: its exit status, or -1 when a signal ended it.
  int wait();

 private:
  pid_t m_pid = 0;
};

// Runs a program to its end: what it printed, by way of the file `output`. Throws
// std::runtime_error with what it printed when it fails.
std::string runProgram(const std::vector<std::string>& command,
                       const std::filesystem::path& output);

}  // namespace EventSystemTest

#endif
