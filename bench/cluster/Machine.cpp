#include "bench/cluster/Machine.h"

#include <fstream>
#include <sstream>
#include <thread>

#include "apps/etcd_nodes/Subprocess.h"

namespace Bench {
namespace {

// The value after the first line that begins so.
std::string field(const std::filesystem::path& file, const std::string& name) {
  std::ifstream stream(file);
  for (std::string line; std::getline(stream, line);) {
    const auto colon = line.find(':');
    if (line.rfind(name, 0) == 0 && colon != std::string::npos) {
      return line.substr(line.find_first_not_of(' ', colon + 1));
    }
  }
  return "unknown";
}

std::string lineOf(const std::string& text, int number) {
  std::istringstream stream(text);
  std::string line;
  for (int i = 0; i <= number; ++i) std::getline(stream, line);
  return line;
}

}  // namespace

std::string describeMachine(const std::filesystem::path& directory) {
  const auto output = directory / "output";
  const std::string disk = lineOf(
      EtcdNodes::runProgram({"df", "--output=source,fstype,target", directory.string()}, output),
      1);
  const std::string etcd = lineOf(EtcdNodes::runProgram({"etcd", "--version"}, output), 0);
  return "machine: " + field("/proc/cpuinfo", "model name") + ", " +
         std::to_string(std::thread::hardware_concurrency()) + " cores, " +
         field("/proc/meminfo", "MemTotal") + "\netcd's data: " + disk + "\n" + etcd + "\n";
}

}  // namespace Bench
