#include "tests/support/ForkedProcess.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <stdexcept>

namespace EventSystemTest {

ForkedProcess::ForkedProcess(const std::function<void(int output)>& work) {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
  const pid_t parent = getpid();
  m_pid = fork();
  if (m_pid < 0) throw std::runtime_error("no process");
  if (m_pid == 0) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != parent) _exit(1);
    close(ends[0]);
    work(ends[1]);
    _exit(0);
  }
  close(ends[1]);
  m_input = ends[0];
}

ForkedProcess::~ForkedProcess() {
  kill();
  wait();
  close(m_input);
}

std::size_t ForkedProcess::read(void* buffer, std::size_t size) const {
  for (;;) {
    const ssize_t got = ::read(m_input, buffer, size);
    if (got >= 0) return static_cast<std::size_t>(got);
    if (errno != EINTR) return 0;
  }
}

void ForkedProcess::kill() const {
  if (m_pid > 0) ::kill(m_pid, SIGKILL);
}

int ForkedProcess::wait() {
  int status = 0;
  if (m_pid <= 0) return status;
  while (waitpid(m_pid, &status, 0) < 0 && errno == EINTR) continue;
  m_pid = 0;
  return status;
}

void tellParent(int output, const void* data, std::size_t size) {
  const char* next = static_cast<const char*>(data);
  while (size > 0) {
    const ssize_t written = write(output, next, size);
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) _exit(1);
    next += written;
    size -= static_cast<std::size_t>(written);
  }
}

}  // namespace EventSystemTest
