#include "tests/cluster/Subprocess.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace EventSystemTest {
namespace {

int waitFor(pid_t pid) {
  int status = 0;
  while (waitpid(pid, &status, 0) < 0 && errno == EINTR) {
  }
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace

Subprocess::Subprocess(const std::vector<std::string>& command,
                       const std::filesystem::path& output) {
  std::vector<char*> arguments;
  for (const std::string& argument : command)
    arguments.push_back(const_cast<char*>(argument.c_str()));
  arguments.push_back(nullptr);
  const std::string file = output.string();
  const pid_t parent = getpid();
  const pid_t pid = fork();
  if (pid < 0) throw std::runtime_error("fork failed");
  if (pid > 0) {
    m_pid = pid;
    return;
  }
  // Only what is allowed between fork and exec of a process with threads.
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  if (getppid() != parent) _exit(126);
  const int to = open(file.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
  dup2(to, STDOUT_FILENO);
  dup2(to, STDERR_FILENO);
  execvp(arguments[0], arguments.data());
  _exit(127);
}

void Subprocess::signal(int number) const {
  if (m_pid != 0) ::kill(m_pid, number);
}

void Subprocess::kill() {
  signal(SIGKILL);
  wait();
}

int Subprocess::wait() {
  return m_pid == 0 ? -1 : waitFor(std::exchange(m_pid, 0));
}

std::string runProgram(const std::vector<std::string>& command,
                       const std::filesystem::path& output) {
  std::filesystem::remove(output);
  const int status = Subprocess(command, output).wait();
  std::ostringstream printed;
  printed << std::ifstream(output).rdbuf();
  if (status != 0) throw std::runtime_error(command[0] + " failed: " + printed.str());
  return printed.str();
}

}  // namespace EventSystemTest
