#include "tests/e2e/Program.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <sstream>
#include <stdexcept>
#include <string_view>
#include <tuple>
#include <utility>

namespace EventSystemTest {
namespace {

using Clock = std::chrono::steady_clock;
using Out = Surroundings::Out;

constexpr std::chrono::seconds kPatience(60);

int require(int result, const char* what) {
  if (result < 0) throw std::runtime_error(std::string(what) + " failed");
  return result;
}

void closeIfOpen(int& descriptor) {
  if (descriptor >= 0) ::close(std::exchange(descriptor, -1));
}

std::pair<int, int> makePipe() {
  std::array<int, 2> ends{};
  require(::pipe2(ends.data(), O_CLOEXEC), "pipe");
  return {ends[0], ends[1]};
}

// A pseudo-terminal that passes text on as it is.
std::pair<int, int> makeTerminal() {
  const int master = require(::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC), "posix_openpt");
  require(::grantpt(master), "grantpt");
  require(::unlockpt(master), "unlockpt");
  const int slave =
      require(::open(::ptsname(master), O_RDWR | O_NOCTTY | O_CLOEXEC), "open terminal");
  termios settings{};
  require(::tcgetattr(slave, &settings), "tcgetattr");
  ::cfmakeraw(&settings);
  require(::tcsetattr(slave, TCSANOW, &settings), "tcsetattr");
  winsize size{};
  size.ws_row = 24;
  size.ws_col = 80;
  require(::ioctl(slave, TIOCSWINSZ, &size), "window size");
  return {master, slave};
}

// Holds all of `text` to be read.
int inputOf(const std::string& text) {
  std::string name = "/tmp/eventctl-input-XXXXXX";
  const int file = require(::mkostemp(name.data(), O_CLOEXEC), "mkostemp");
  ::unlink(name.c_str());
  if (::write(file, text.data(), text.size()) != static_cast<ssize_t>(text.size())) {
    throw std::runtime_error("cannot write the input");
  }
  require(static_cast<int>(::lseek(file, 0, SEEK_SET)), "lseek");
  return file;
}

bool concernsDisplay(std::string_view entry) {
  for (const std::string_view name : {"NO_COLOR=", "CLICOLOR_FORCE=", "COLUMNS="}) {
    if (entry.starts_with(name)) return true;
  }
  return false;
}

std::vector<std::string> environmentWith(std::vector<std::string> added) {
  for (char** entry = environ; *entry != nullptr; ++entry) {
    if (!concernsDisplay(*entry)) added.emplace_back(*entry);
  }
  return added;
}

std::vector<char*> pointersOf(std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  for (std::string& text : texts) pointers.push_back(text.data());
  pointers.push_back(nullptr);
  return pointers;
}

// False at the end of the stream.
bool readSome(int descriptor, std::string& text) {
  std::array<char, 16 * 1024> piece;
  const ssize_t bytes = ::read(descriptor, piece.data(), piece.size());
  if (bytes > 0) text.append(piece.data(), static_cast<std::size_t>(bytes));
  return bytes > 0;
}

}  // namespace

std::vector<std::string> linesOf(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

Program::Program(const std::vector<std::string>& arguments, const Surroundings& surroundings) {
  openStreams(surroundings);
  spawn(arguments, surroundings);
  closeIfOpen(m_childInput);
  closeIfOpen(m_childOutput);
  closeIfOpen(m_childError);
}

Program::~Program() {
  if (m_pid > 0) {
    ::kill(m_pid, SIGKILL);
    ::waitpid(m_pid, nullptr, 0);
  }
  for (int* const descriptor : {&m_input, &m_output, &m_error}) closeIfOpen(*descriptor);
}

void Program::openStreams(const Surroundings& surroundings) {
  if (surroundings.terminalInput) {
    std::tie(m_input, m_childInput) = makeTerminal();
  } else if (surroundings.keepInputOpen) {
    std::tie(m_childInput, m_input) = makePipe();
  } else {
    m_childInput = inputOf(surroundings.input);
  }
  std::tie(m_error, m_childError) = makePipe();
  switch (surroundings.out) {
    case Out::kPipe:
      std::tie(m_output, m_childOutput) = makePipe();
      break;
    case Out::kBrokenPipe:
      std::tie(m_output, m_childOutput) = makePipe();
      closeIfOpen(m_output);
      break;
    case Out::kTerminal:
      std::tie(m_output, m_childOutput) = makeTerminal();
      break;
    case Out::kFile:
      m_childOutput = require(
          ::open(surroundings.outFile.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600), "open");
      break;
    case Out::kClosed:
      break;
  }
}

void Program::spawn(const std::vector<std::string>& arguments, const Surroundings& surroundings) {
  const std::string program =
      surroundings.program.empty() ? EVENTCTL_PROGRAM : surroundings.program.string();
  std::vector<std::string> command = {program};
  command.insert(command.end(), arguments.begin(), arguments.end());
  std::vector<std::string> environment = environmentWith(surroundings.environment);
  posix_spawn_file_actions_t actions;
  ::posix_spawn_file_actions_init(&actions);
  if (!surroundings.directory.empty()) {
    ::posix_spawn_file_actions_addchdir_np(&actions, surroundings.directory.c_str());
  }
  ::posix_spawn_file_actions_adddup2(&actions, m_childInput, STDIN_FILENO);
  ::posix_spawn_file_actions_adddup2(&actions, m_childError, STDERR_FILENO);
  if (m_childOutput >= 0) {
    ::posix_spawn_file_actions_adddup2(&actions, m_childOutput, STDOUT_FILENO);
  } else {
    ::posix_spawn_file_actions_addclose(&actions, STDOUT_FILENO);
  }
  const int error = ::posix_spawn(&m_pid, program.c_str(), &actions, nullptr,
                                  pointersOf(command).data(), pointersOf(environment).data());
  ::posix_spawn_file_actions_destroy(&actions);
  if (error != 0) throw std::runtime_error("cannot start " + program);
}

void Program::write(const std::string& text) {
  if (::write(m_input, text.data(), text.size()) != static_cast<ssize_t>(text.size())) {
    throw std::runtime_error("the program does not take its input");
  }
}

void Program::closeInput() {
  closeIfOpen(m_input);
}

void Program::closeOutput() {
  closeIfOpen(m_output);
}

void Program::signal(int number) {
  ::kill(m_pid, number);
}

bool Program::waitUntil(const std::function<bool(const Outcome&)>& condition) {
  const auto end = Clock::now() + kPatience;
  while (!condition(m_outcome)) {
    if (!gather(end)) return false;
  }
  return true;
}

bool Program::waitForOutput(const std::string& text) {
  return waitUntil(
      [&](const Outcome& outcome) { return outcome.out.find(text) != std::string::npos; });
}

bool Program::waitForError(const std::string& text) {
  return waitUntil(
      [&](const Outcome& outcome) { return outcome.err.find(text) != std::string::npos; });
}

Outcome Program::wait() {
  const auto end = Clock::now() + kPatience;
  while (gather(end)) {
  }
  if (Clock::now() >= end) throw std::runtime_error("the program does not end");
  int status = 0;
  require(::waitpid(m_pid, &status, 0), "waitpid");
  m_pid = -1;
  m_outcome.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  return m_outcome;
}

// False when both streams have ended or time has run out.
bool Program::gather(Clock::time_point end) {
  if (m_output < 0 && m_error < 0) return false;
  const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now());
  if (left.count() <= 0) return false;
  std::array<pollfd, 2> waits = {{{.fd = m_output, .events = POLLIN, .revents = 0},
                                  {.fd = m_error, .events = POLLIN, .revents = 0}}};
  if (::poll(waits.data(), waits.size(), static_cast<int>(left.count())) < 0) return errno == EINTR;
  if (waits[0].revents != 0 && !readSome(m_output, m_outcome.out)) closeIfOpen(m_output);
  if (waits[1].revents != 0 && !readSome(m_error, m_outcome.err)) closeIfOpen(m_error);
  return true;
}

Outcome runProgram(const std::vector<std::string>& arguments, const Surroundings& surroundings) {
  return Program(arguments, surroundings).wait();
}

}  // namespace EventSystemTest
