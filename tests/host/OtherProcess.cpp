#include "tests/host/OtherProcess.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <stdexcept>

namespace EventSystemTest {

OtherProcess::OtherProcess(const std::string& task, const std::filesystem::path& home) {
  std::array<int, 2> input{};
  std::array<int, 2> output{};
  if (pipe2(input.data(), O_CLOEXEC) != 0 || pipe2(output.data(), O_CLOEXEC) != 0) {
    throw std::runtime_error("no pipe");
  }
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, input[0], STDIN_FILENO);
  posix_spawn_file_actions_adddup2(&actions, output[1], STDOUT_FILENO);
  std::string program = HOST_PROCESS;
  std::string taskText = task;
  std::string homeText = home.string();
  std::array<char*, 4> arguments = {program.data(), taskText.data(), homeText.data(), nullptr};
  const int failed =
      posix_spawn(&m_pid, program.c_str(), &actions, nullptr, arguments.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  close(input[0]);
  close(output[1]);
  m_input = input[1];
  m_output = output[0];
  if (failed != 0) throw std::runtime_error("cannot start " + program);
}

OtherProcess::~OtherProcess() {
  close(m_input);
  close(m_output);
  if (m_pid > 0) {
    kill();
    wait();
  }
}

std::string OtherProcess::readLine() {
  std::string line;
  char c = 0;
  while (true) {
    const ssize_t got = read(m_output, &c, 1);
    if (got < 0 && errno == EINTR) continue;
    if (got != 1 || c == '\n') return line;
    line += c;
  }
}

void OtherProcess::goOn() {
  [[maybe_unused]] const ssize_t written = write(m_input, "\n", 1);
}

void OtherProcess::kill() {
  ::kill(m_pid, SIGKILL);
}

int OtherProcess::wait() {
  int status = 0;
  while (waitpid(m_pid, &status, 0) < 0 && errno == EINTR) {
  }
  m_pid = -1;
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace EventSystemTest
