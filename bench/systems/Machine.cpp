#include "bench/systems/Machine.h"

#include <fcntl.h>
#include <linux/magic.h>
#include <sys/resource.h>
#include <sys/utsname.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <thread>

#include "bench/systems/Queue.h"
#include "host/files/FileDescriptor.h"

namespace EventSystemBench {
namespace {

std::string processorName() {
  std::ifstream file("/proc/cpuinfo");
  for (std::string line; std::getline(file, line);) {
    const std::size_t colon = line.find(": ");
    if (line.starts_with("model name") && colon != std::string::npos) return line.substr(colon + 2);
  }
  return "unknown";
}

// The mount with the longest path that `directory` is below.
std::string fileSystemOf(const std::filesystem::path& directory) {
  const std::string inside = std::filesystem::canonical(directory).string() + "/";
  std::ifstream mounts("/proc/self/mounts");
  std::string found = "unknown";
  std::size_t length = 0;
  for (std::string line; std::getline(mounts, line);) {
    std::istringstream fields(line);
    std::string device;
    std::string place;
    std::string type;
    fields >> device >> place >> type;
    if (!place.ends_with('/')) place += '/';
    if (inside.starts_with(place) && place.size() >= length) {
      length = place.size();
      found = type;
      found += " on ";
      found += device;
    }
  }
  return found;
}

double secondsOf(const timeval& time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

// Processor time that this process and the servers that have ended have used.
double ownSeconds() {
  double seconds = 0;
  for (const auto who : {RUSAGE_SELF, RUSAGE_CHILDREN}) {
    rusage usage{};
    getrusage(who, &usage);
    seconds += secondsOf(usage.ru_utime) + secondsOf(usage.ru_stime);
  }
  return seconds;
}

struct ProcessorTime {
  double all;   // seconds since the start of the machine, of all processors
  double busy;  // what was not idle; a virtual machine's stolen time is busy too
};

ProcessorTime processorTime() {
  std::ifstream file("/proc/stat");
  std::string label;
  double user = 0;
  double nice = 0;
  double system = 0;
  double idle = 0;
  double waiting = 0;
  double interrupts = 0;
  double softInterrupts = 0;
  double stolen = 0;
  file >> label >> user >> nice >> system >> idle >> waiting >> interrupts >> softInterrupts >>
      stolen;
  const auto ticks = static_cast<double>(sysconf(_SC_CLK_TCK));
  const double busy = (user + nice + system + interrupts + softInterrupts + stolen) / ticks;
  return {busy + (idle + waiting) / ticks, busy};
}

}  // namespace

Disturbance::Disturbance() {
  const ProcessorTime now = processorTime();
  m_all = now.all;
  m_others = now.busy - ownSeconds();
}

double Disturbance::byOthers() const {
  const ProcessorTime now = processorTime();
  return std::max(0.0, (now.busy - ownSeconds() - m_others) / (now.all - m_all));
}

Machine thisMachine(const std::filesystem::path& directory) {
  utsname system{};
  uname(&system);
  double load = 0;
  getloadavg(&load, 1);
  return {processorName(), std::thread::hardware_concurrency(),
          std::string(system.sysname) + " " + system.release, fileSystemOf(directory), load};
}

bool isInMemory(const std::filesystem::path& directory) {
  struct statfs status {};
  if (statfs(directory.c_str(), &status) != 0) {
    throw SystemError("cannot look at " + directory.string());
  }
  return status.f_type == TMPFS_MAGIC || status.f_type == RAMFS_MAGIC;
}

std::vector<double> flushTimes(const std::filesystem::path& directory, int times) {
  using Clock = std::chrono::steady_clock;
  const std::filesystem::path path = directory / "flush";
  std::vector<double> seconds;
  {
    const EventSystemHost::FileDescriptor file(
        open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
    const std::string page(4096, 'x');
    for (int i = 0; i <= times; ++i) {
      if (pwrite(file.get(), page.data(), page.size(), 0) < 0) throw SystemError("cannot write");
      const auto start = Clock::now();
      if (fdatasync(file.get()) != 0) throw SystemError("cannot flush");
      // The first one makes the file as long as it is.
      if (i > 0) seconds.push_back(std::chrono::duration<double>(Clock::now() - start).count());
    }
  }
  std::filesystem::remove(path);
  return seconds;
}

}  // namespace EventSystemBench
