#include "apps/eventd/Systemd.h"

#include <systemd/sd-daemon.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <numeric>

#include "apps/common/Failure.h"

namespace EventApps::Systemd {

std::vector<int> takeSockets() {
  const int count = ::sd_listen_fds(1);
  if (count < 0) {
    throw Failure(std::string("the sockets of the service manager cannot be taken over: ") +
                  std::strerror(-count));
  }
  std::vector<int> sockets(static_cast<std::size_t>(count));
  std::iota(sockets.begin(), sockets.end(), SD_LISTEN_FDS_START);
  return sockets;
}

bool hasManager() {
  return std::getenv("NOTIFY_SOCKET") != nullptr;
}

void tellReady(const std::string& status) {
  ::sd_notify(0, ("READY=1\nSTATUS=" + status).c_str());
}

void tellReloading() {
  timespec now{};
  ::clock_gettime(CLOCK_MONOTONIC, &now);
  constexpr long kMicroseconds = 1000000;
  const long time = now.tv_sec * kMicroseconds + now.tv_nsec / 1000;
  ::sd_notify(0, ("RELOADING=1\nMONOTONIC_USEC=" + std::to_string(time)).c_str());
}

void tellStopping() {
  ::sd_notify(0, "STOPPING=1\nSTATUS=finishing what was accepted");
}

std::optional<std::chrono::milliseconds> watchdogInterval() {
  std::uint64_t microseconds = 0;
  if (::sd_watchdog_enabled(0, &microseconds) <= 0) return std::nullopt;
  constexpr std::uint64_t kPart = 3;  // a late one must not be the last one
  return std::chrono::duration_cast<std::chrono::milliseconds>(
      std::chrono::microseconds(microseconds / kPart));
}

void tellAlive() {
  ::sd_notify(0, "WATCHDOG=1");
}

}  // namespace EventApps::Systemd
