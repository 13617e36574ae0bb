#include "bench/systems/ServerProcess.h"

#include <fcntl.h>
#include <grp.h>
#include <pwd.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <fstream>
#include <iterator>
#include <thread>

#include "bench/systems/Queue.h"

namespace EventSystemBench {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds kPatience(30);
constexpr std::chrono::milliseconds kPoll(5);
constexpr int kCannotRun = 127;

bool becomeUser(const User& user) {
  return setgroups(0, nullptr) == 0 && setgid(user.gid) == 0 && setuid(user.uid) == 0;
}

}  // namespace

std::optional<User> unprivilegedUser() {
  if (geteuid() != 0) return std::nullopt;
  for (const char* name : {"postgres", "nobody"}) {
    const passwd* const entry = getpwnam(name);
    if (entry != nullptr) return User{entry->pw_uid, entry->pw_gid};
  }
  throw SystemError("there is no user postgres and no user nobody");
}

ServerProcess::ServerProcess(ServerCommand command) : m_command(std::move(command)) {
  const pid_t parent = getpid();
  m_pid = fork();
  if (m_pid < 0) throw SystemError("cannot fork");
  if (m_pid == 0) runChild(parent);
}

ServerProcess::~ServerProcess() {
  if (m_pid < 0) return;
  kill(m_pid, m_command.stopSignal);
  const auto end = Clock::now() + kPatience;
  while (!hasEnded(WNOHANG)) {
    if (Clock::now() > end) kill(m_pid, SIGKILL);
    std::this_thread::sleep_for(kPoll);
  }
}

// Between fork and exec. The death signal is set after the change of user, which clears it.
void ServerProcess::runChild(pid_t parent) const {
  const std::string log = m_command.directory / "server.log";
  const int file = open(log.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
  if (m_command.user && !becomeUser(*m_command.user)) _exit(kCannotRun);
  if (prctl(PR_SET_PDEATHSIG, m_command.orphanSignal) != 0 || getppid() != parent) {
    _exit(kCannotRun);
  }
  if (file < 0 || dup2(file, 1) < 0 || dup2(file, 2) < 0) _exit(kCannotRun);
  if (chdir(m_command.directory.c_str()) != 0) _exit(kCannotRun);
  std::vector<char*> arguments;
  for (const std::string& argument : m_command.arguments) {
    arguments.push_back(const_cast<char*>(argument.c_str()));
  }
  arguments.push_back(nullptr);
  execvp(arguments.front(), arguments.data());
  _exit(kCannotRun);
}

bool ServerProcess::hasEnded(int waitOptions) {
  if (m_pid >= 0 && waitpid(m_pid, &m_status, waitOptions) == m_pid) m_pid = -1;
  return m_pid < 0;
}

void ServerProcess::waitUntil(const std::function<bool()>& ready) {
  const auto end = Clock::now() + kPatience;
  while (!ready()) {
    if (hasEnded(WNOHANG)) throw SystemError(m_command.arguments.front() + " ended" + lastWords());
    if (Clock::now() > end) {
      throw SystemError(m_command.arguments.front() + " does not answer" + lastWords());
    }
    std::this_thread::sleep_for(kPoll);
  }
}

int ServerProcess::waitForEnd() {
  hasEnded(0);
  return m_status;
}

std::string ServerProcess::lastWords() const {
  std::ifstream log(m_command.directory / "server.log");
  const std::string text{std::istreambuf_iterator<char>(log), std::istreambuf_iterator<char>()};
  constexpr std::size_t kShown = 600;
  return ":\n" + text.substr(text.size() < kShown ? 0 : text.size() - kShown);
}

}  // namespace EventSystemBench
