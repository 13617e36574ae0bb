#include "apps/etcd_nodes/Subprocess.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "apps/etcd_nodes/Descriptor.h"

namespace EtcdNodes {
namespace {

Descriptor openFile(const char* file, int flags) {
  Descriptor descriptor(::open(file, flags | O_CLOEXEC, 0600));
  if (descriptor.get() < 0) {
    throw std::runtime_error(std::string("cannot open ") + file + ": " + std::strerror(errno));
  }
  return descriptor;
}

std::vector<char*> pointersOf(const std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  pointers.reserve(texts.size() + 1);
  for (const std::string& text : texts) pointers.push_back(const_cast<char*>(text.c_str()));
  pointers.push_back(nullptr);
  return pointers;
}

// With what is added first: of two settings of one variable, the first counts.
std::vector<std::string> environmentWith(std::vector<std::string> added) {
  for (char** entry = environ; *entry != nullptr; ++entry) added.emplace_back(*entry);
  return added;
}

// All that the child needs, made before it is forked: until exec, a child of a process with
// threads can do no more than system calls.
struct Start {
  char* const* arguments;
  char* const* environment;
  const char* directory;  // null: the caller's own
  int input;
  int output;
  pid_t parent;
};

[[noreturn]] void becomeProgram(const Start& start) {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  if (getppid() != start.parent) _exit(126);
  setpgid(0, 0);
  sigset_t none;
  sigemptyset(&none);
  sigprocmask(SIG_SETMASK, &none, nullptr);
  if (start.directory != nullptr && chdir(start.directory) != 0) _exit(126);
  dup2(start.input, STDIN_FILENO);
  dup2(start.output, STDOUT_FILENO);
  dup2(start.output, STDERR_FILENO);
  execvpe(start.arguments[0], start.arguments, start.environment);
  _exit(127);
}

pid_t forkProgram(const Start& start) {
  const pid_t pid = fork();
  if (pid < 0) throw std::runtime_error(std::string("cannot fork: ") + std::strerror(errno));
  if (pid == 0) becomeProgram(start);
  return pid;
}

}  // namespace

Subprocess::Subprocess(const std::vector<std::string>& command, const Surroundings& surroundings) {
  const Descriptor nowhere = openFile("/dev/null", O_RDWR);
  const std::vector<std::string> variables = environmentWith(surroundings.environment);
  const std::vector<char*> arguments = pointersOf(command);
  const std::vector<char*> environment = pointersOf(variables);
  Start start{};
  start.arguments = arguments.data();
  start.environment = environment.data();
  if (!surroundings.directory.empty()) start.directory = surroundings.directory.c_str();
  start.input = surroundings.input >= 0 ? surroundings.input : nowhere.get();
  start.output = surroundings.output >= 0 ? surroundings.output : nowhere.get();
  start.parent = getpid();
  m_pid = forkProgram(start);
}

Subprocess::Subprocess(const std::vector<std::string>& command,
                       const std::filesystem::path& output) {
  const Descriptor file = openFile(output.c_str(), O_WRONLY | O_CREAT | O_APPEND);
  Surroundings surroundings;
  surroundings.output = file.get();
  *this = Subprocess(command, surroundings);
}

bool Subprocess::running() {
  reap(WNOHANG);
  return m_pid != 0;
}

// On a busy machine a process goes on for a while, until the thread that is to take SIGSTOP gets
// its turn.
void Subprocess::signal(int number) const {
  if (m_pid == 0) return;
  ::kill(m_pid, number);
  if (number != SIGSTOP) return;
  siginfo_t ignored{};
  while (waitid(P_PID, static_cast<id_t>(m_pid), &ignored, WSTOPPED | WEXITED | WNOWAIT) != 0 &&
         errno == EINTR) {
  }
}

void Subprocess::kill() {
  signal(SIGKILL);
  wait();
}

int Subprocess::wait() {
  reap(0);
  return m_status;
}

void Subprocess::reap(int flags) {
  if (m_pid == 0) return;
  int status = 0;
  pid_t found = 0;
  while ((found = waitpid(m_pid, &status, flags)) < 0 && errno == EINTR) {
  }
  if (found == 0) return;
  m_status = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
  m_pid = 0;
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

}  // namespace EtcdNodes
