#include "apps/eventd/metrics/ProcessFigures.h"

#include <sys/resource.h>
#include <unistd.h>

#include <ctime>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <system_error>
#include <vector>

namespace EventApps {
namespace {

constexpr double kNanoseconds = 1e9;

double secondsOf(clockid_t clock) {
  timespec time{};
  ::clock_gettime(clock, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / kNanoseconds;
}

std::uint64_t countOpenFiles() {
  std::error_code error;
  std::filesystem::directory_iterator files("/proc/self/fd", error);
  if (error) return 0;
  const auto count = std::distance(files, std::filesystem::directory_iterator());
  return static_cast<std::uint64_t>(count) - 1;  // one is that of the listing
}

// The fields of /proc/self/stat from the third on; the second, the name, may hold anything.
std::vector<std::string> statusFields() {
  std::ifstream file("/proc/self/stat");
  std::string line;
  std::getline(file, line);
  const std::size_t name = line.rfind(')');
  if (name == std::string::npos) return {};
  std::istringstream rest(line.substr(name + 1));
  return {std::istream_iterator<std::string>(rest), {}};
}

std::uint64_t numberAt(const std::vector<std::string>& fields, std::size_t place) {
  constexpr std::size_t kFirst = 3;  // as proc(5) counts them
  return place - kFirst < fields.size() ? std::stoull(fields[place - kFirst]) : 0;
}

}  // namespace

ProcessFigures processFigures() {
  constexpr std::size_t kThreads = 20;
  constexpr std::size_t kVirtualBytes = 23;
  constexpr std::size_t kResidentPages = 24;
  const auto fields = statusFields();
  rlimit files{};
  ::getrlimit(RLIMIT_NOFILE, &files);
  return {secondsOf(CLOCK_PROCESS_CPUTIME_ID),
          numberAt(fields, kResidentPages) * static_cast<std::uint64_t>(::sysconf(_SC_PAGESIZE)),
          numberAt(fields, kVirtualBytes),
          countOpenFiles(),
          files.rlim_cur,
          numberAt(fields, kThreads)};
}

double processStartTime() {
  constexpr std::size_t kStartTime = 22;
  const auto ticks = static_cast<double>(numberAt(statusFields(), kStartTime));
  const double sinceBoot = ticks / static_cast<double>(::sysconf(_SC_CLK_TCK));
  return secondsOf(CLOCK_REALTIME) - secondsOf(CLOCK_BOOTTIME) + sinceBoot;
}

}  // namespace EventApps
