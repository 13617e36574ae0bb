#include "apps/eventctl/ChildProcess.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <utility>

#include "apps/eventctl/CommandError.h"

namespace EventCtl {
namespace {

class Pipe {
 public:
  Pipe() {
    if (::pipe2(m_ends.data(), O_CLOEXEC) != 0) {
      throw CommandError(std::string("cannot make a pipe: ") + std::strerror(errno));
    }
  }
  ~Pipe() {
    closeWriteEnd();
    ::close(m_ends[0]);
  }
  Pipe(const Pipe&) = delete;
  Pipe& operator=(const Pipe&) = delete;

  int readEnd() const { return m_ends[0]; }
  int writeEnd() const { return m_ends[1]; }
  void closeWriteEnd() {
    if (m_ends[1] >= 0) ::close(std::exchange(m_ends[1], -1));
  }

 private:
  std::array<int, 2> m_ends;
};

// What a child is to find when it starts.
class SpawnSettings {
 public:
  SpawnSettings(const std::filesystem::path& directory, int output) {
    ::posix_spawn_file_actions_init(&m_actions);
    ::posix_spawn_file_actions_addchdir_np(&m_actions, directory.c_str());
    ::posix_spawn_file_actions_adddup2(&m_actions, output, STDOUT_FILENO);
    ::posix_spawn_file_actions_adddup2(&m_actions, output, STDERR_FILENO);
    ::posix_spawnattr_init(&m_attributes);
    sigset_t none;
    sigemptyset(&none);
    ::posix_spawnattr_setsigmask(&m_attributes, &none);
    ::posix_spawnattr_setflags(&m_attributes, POSIX_SPAWN_SETSIGMASK);
  }
  ~SpawnSettings() {
    ::posix_spawn_file_actions_destroy(&m_actions);
    ::posix_spawnattr_destroy(&m_attributes);
  }
  SpawnSettings(const SpawnSettings&) = delete;
  SpawnSettings& operator=(const SpawnSettings&) = delete;

  const posix_spawn_file_actions_t* actions() const { return &m_actions; }
  const posix_spawnattr_t* attributes() const { return &m_attributes; }

 private:
  posix_spawn_file_actions_t m_actions;
  posix_spawnattr_t m_attributes;
};

std::vector<char*> pointersOf(std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  pointers.reserve(texts.size() + 1);
  for (std::string& text : texts) pointers.push_back(text.data());
  pointers.push_back(nullptr);
  return pointers;
}

// With what is added first: of two settings of one variable, the first counts.
std::vector<std::string> environmentWith(std::vector<std::string> added) {
  for (char** entry = environ; *entry != nullptr; ++entry) added.emplace_back(*entry);
  return added;
}

void readLines(int descriptor, const std::function<void(const std::string&)>& line) {
  std::string pending;
  std::array<char, 4096> piece;
  ssize_t bytes = 0;
  while ((bytes = ::read(descriptor, piece.data(), piece.size())) != 0) {
    if (bytes < 0 && errno == EINTR) continue;
    if (bytes < 0) break;
    pending.append(piece.data(), static_cast<std::size_t>(bytes));
    for (std::size_t end = pending.find('\n'); end != std::string::npos; end = pending.find('\n')) {
      line(pending.substr(0, end));
      pending.erase(0, end + 1);
    }
  }
  if (!pending.empty()) line(pending);
}

int waitFor(pid_t process, const std::string& name) {
  int status = 0;
  while (::waitpid(process, &status, 0) < 0) {
    if (errno != EINTR) throw CommandError("lost sight of " + name + ": " + std::strerror(errno));
  }
  if (WIFEXITED(status)) return WEXITSTATUS(status);
  throw CommandError(name + " ended by signal " + std::to_string(WTERMSIG(status)));
}

}  // namespace

int runSelf(const std::vector<std::string>& arguments, const std::filesystem::path& directory,
            const std::vector<std::string>& environment,
            const std::function<void(const std::string&)>& line) {
  const std::string program = std::filesystem::read_symlink("/proc/self/exe").string();
  std::vector<std::string> command = {"eventctl"};
  command.insert(command.end(), arguments.begin(), arguments.end());
  std::vector<std::string> variables = environmentWith(environment);
  Pipe pipe;
  const SpawnSettings settings(directory, pipe.writeEnd());
  pid_t process = 0;
  const int error =
      ::posix_spawn(&process, program.c_str(), settings.actions(), settings.attributes(),
                    pointersOf(command).data(), pointersOf(variables).data());
  if (error != 0) throw CommandError("cannot start " + program + ": " + std::strerror(error));
  pipe.closeWriteEnd();
  readLines(pipe.readEnd(), line);
  return waitFor(process, program);
}

}  // namespace EventCtl
