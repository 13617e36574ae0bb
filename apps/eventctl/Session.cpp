#include "apps/eventctl/Session.h"

#include <string>
#include <thread>
#include <utility>

#include "EventSystem/ResultCode.h"
#include "EventSystem/platform/HostConfig.h"
#include "apps/common/ClusterQueueReader.h"
#include "apps/common/DatabaseQueueReader.h"
#include "apps/common/Failure.h"

namespace EventApps {

using EventSystemHost::Access;
using EventSystemHost::Host;
using EventSystemHost::HostOptions;

namespace {

// One host lives at a time.
struct DamageRecord {
  Host* open = nullptr;
  std::string met;

  void update() {
    if (open != nullptr && met.empty()) met = open->damage();
  }
};

DamageRecord& damageRecord() {
  static DamageRecord record;
  return record;
}

}  // namespace

void HostCloser::operator()(Host* host) const {
  damageRecord().update();
  damageRecord().open = nullptr;
  delete host;
}

std::string damageMet() {
  damageRecord().update();
  return damageRecord().met;
}

HostOptions hostOptions(const GlobalOptions& options, Access access) {
  HostOptions host;
  host.home = options.home;
  host.access = access;
  host.logLevel = options.logLevel;
  if (options.verbose) {
    host.logFile = "-";
    host.logLevel = options.logLevel.value_or(EventSystemHost::LogLevel::kInfo);
  }
  // A reader shows what is wrong with a row itself; its log would be standard error.
  const bool quiet = access == Access::kReadOnly && !options.verbose && !options.logLevel;
  if (quiet) host.logLevel = EventSystemHost::LogLevel::kOff;
  return host;
}

OpenHost openHost(const HostOptions& options, std::chrono::milliseconds wait,
                  const StopAsked& stop) {
  constexpr std::chrono::milliseconds kPause(20);
  const auto end = std::chrono::steady_clock::now() + wait;
  while (true) {
    try {
      OpenHost host(std::make_unique<Host>(options).release());
      damageRecord().open = host.get();
      return host;
    } catch (const EventSystemHost::DatabaseBusy&) {
      if (std::chrono::steady_clock::now() >= end || (stop && stop())) throw;
    }
    std::this_thread::sleep_for(kPause);
  }
}

OpenHost openReader(const GlobalOptions& options) {
  return openHost(hostOptions(options, Access::kReadOnly), options.wait);
}

OpenHost openWriter(const GlobalOptions& options) {
  return openHost(hostOptions(options, Access::kReadWrite), options.wait);
}

}  // namespace EventApps
