// A forked process that writes to its parent until it is done or killed. It is killed when its
// owner is destroyed, and when the parent dies.
//
// Thread safety: none; the parent must have one thread only when it makes one.

#ifndef EVENTSYSTEM_TESTS_SUPPORT_FORKEDPROCESS_H
#define EVENTSYSTEM_TESTS_SUPPORT_FORKEDPROCESS_H

#include <sys/types.h>

#include <cstddef>
#include <functional>

namespace EventSystemTest {

class ForkedProcess {
 public:
  // Runs `work` in the new process, with the writing end of a pipe.
  explicit ForkedProcess(const std::function<void(int output)>& work);
  ~ForkedProcess();

  ForkedProcess(const ForkedProcess&) = delete;
  ForkedProcess& operator=(const ForkedProcess&) = delete;

  pid_t pid() const { return m_pid; }

  // The reading end.
  int input() const { return m_input; }

  // Up to `size` bytes that it wrote; 0 when it has ended and nothing is left to read.
  std::size_t read(void* buffer, std::size_t size) const;

  void kill() const;

  // Waits for its end; the status as waitpid() tells it.
  int wait();

 private:
  pid_t m_pid = 0;
  int m_input = -1;
};

// Writes all of it, or ends the process where nobody reads any more.
void tellParent(int output, const void* data, std::size_t size);

}  // namespace EventSystemTest

#endif
