// The processes that run on this machine.
//
// Thread safety: any thread.

#ifndef EVENTSYSTEM_TESTS_CLUSTER_PROCESSES_H
#define EVENTSYSTEM_TESTS_CLUSTER_PROCESSES_H

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <system_error>
#include <vector>

namespace EventSystemTest {

// The command lines and working directories of all processes that have `text` in one of them.
inline std::vector<std::string> processesWith(const std::string& text) {
  std::vector<std::string> found;
  for (const auto& process : std::filesystem::directory_iterator("/proc")) {
    std::ostringstream command;
    command << std::ifstream(process.path() / "cmdline").rdbuf();
    std::error_code ignored;  // no process, or one that has ended
    const auto directory = std::filesystem::read_symlink(process.path() / "cwd", ignored);
    std::string line = command.str() + " in " + directory.string();
    std::replace(line.begin(), line.end(), '\0', ' ');
    if (line.find(text) != std::string::npos) found.push_back(line);
  }
  return found;
}

}  // namespace EventSystemTest

#endif
