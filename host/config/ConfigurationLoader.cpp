#include "host/config/ConfigurationLoader.h"

#include <unistd.h>

#include <array>
#include <limits>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "host/Host.h"
#include "host/config/EntryReader.h"

namespace EventSystemHost {

namespace {

// The age limit in seconds is 32-bit arithmetic in the library; more days would wrap around.
constexpr int kMaxAgeLimitDays = 24855;
constexpr std::size_t kMinLogBytes = 1024;
constexpr std::size_t kMaxLogFiles = 1000;
constexpr std::size_t kMaxClusterText = 1023;  // what configManager has room for
constexpr std::size_t kMaxClusterName = 128;

// A file, or "-" for standard error.
EntryReader logEntry(std::filesystem::path& target, const std::filesystem::path& home) {
  return [&target, home](const std::string& value) {
    if (value == "-") {
      target = value;
    } else {
      pathEntry(target, home)(value);
    }
  };
}

// What can stand in the keys of the cluster service.
EntryReader clusterName(std::string& target) {
  return [&target](const std::string& value) {
    constexpr std::string_view kAllowed =
        "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789._-";
    if (value.empty() || value.size() > kMaxClusterName ||
        value.find_first_not_of(kAllowed) != std::string::npos) {
      throw NotAllowed{"a name of 1 to " + std::to_string(kMaxClusterName) +
                       " letters, digits, '.', '_' and '-'"};
    }
    target = value;
  };
}

EntryReader endpoints(std::vector<std::string>& target) {
  return [&target](const std::string& value) {
    target.clear();
    std::istringstream list(value);
    for (std::string endpoint; std::getline(list, endpoint, ',');) {
      endpoint.erase(0, endpoint.find_first_not_of(" \t"));
      endpoint.erase(endpoint.find_last_not_of(" \t") + 1);
      if (endpoint.find(':') == std::string::npos) target.clear();
      if (endpoint.find(':') == std::string::npos) break;
      target.push_back(endpoint);
    }
    if (target.empty()) throw NotAllowed{"host:port of every etcd member, separated by commas"};
  };
}

std::string machineName() {
  char name[256] = {};
  return gethostname(name, sizeof name - 1) == 0 && name[0] != '\0' ? name : "localhost";
}

std::vector<KnownEntry> hostEntries(HostConfiguration& to) {
  constexpr std::array<std::pair<const char*, Durability>, 3> durabilities = {
      {{"strict", Durability::kStrict},
       {"group", Durability::kGroup},
       {"relaxed", Durability::kRelaxed}}};
  constexpr std::array<std::pair<const char*, LogLevel>, 5> levels = {
      {{"off", LogLevel::kOff},
       {"error", LogLevel::kError},
       {"warning", LogLevel::kWarning},
       {"info", LogLevel::kInfo},
       {"trace", LogLevel::kTrace}}};
  constexpr std::array<std::pair<const char*, LogFormat>, 2> formats = {
      {{"text", LogFormat::kText}, {"json", LogFormat::kJson}}};
  return {
      {"server", "name", textEntry(to.serverName, kMaxClusterText)},
      {"cluster", "cluster_mode", switchEntry(to.clusterMode)},
      {"cluster", "queue", clusterName(to.clusterQueue)},
      {"cluster", "member", clusterName(to.clusterMember)},
      {"cluster", "endpoints", endpoints(to.cluster.endpoints)},
      {"cluster", "deadline_ms", durationEntry(to.cluster.deadline, 100, 600000)},
      {"cluster", "ca_file", pathEntry(to.cluster.trustedCertificatesFile, to.home)},
      {"cluster", "certificate_file", pathEntry(to.cluster.certificateFile, to.home)},
      {"cluster", "key_file", pathEntry(to.cluster.keyFile, to.home)},
      {"cluster", "server_name", textEntry(to.cluster.serverName, kMaxClusterText)},
      {"cluster", "user", textEntry(to.cluster.user, kMaxClusterText)},
      {"cluster", "password", textEntry(to.cluster.password, kMaxClusterText)},
      {"cluster", "lease_seconds", durationEntry(to.cluster.leaseTtl, 60, 86400)},
      {"audit", "directory", pathEntry(to.auditDirectory, to.home)},
      {"database", "file", pathEntry(to.databaseFile, to.home)},
      {"database", "directory", pathEntry(to.databaseDirectory, to.home)},
      {"database", "durability", choiceEntry(to.durability, durabilities)},
      {"log", "level", choiceEntry(to.logLevel, levels)},
      {"log", "file", logEntry(to.logFile, to.home)},
      {"log", "format", choiceEntry(to.logFormat, formats)},
      {"log", "max_bytes",
       numberEntry(to.logMaxBytes, kMinLogBytes, std::numeric_limits<std::size_t>::max() / 2)},
      {"log", "max_files", numberEntry(to.logMaxFiles, std::size_t{1}, kMaxLogFiles)},
  };
}

}  // namespace

HostConfiguration loadConfiguration(const std::filesystem::path& home, Durability durability) {
  HostConfiguration configuration;
  configuration.durability = durability;
  configuration.home = home;
  configuration.hostFile = home / "host.ini";
  configuration.limitsFile = home / "OrbCentral.ini";
  configuration.serverName = machineName();
  configuration.clusterQueue = "events";
  configuration.cluster.endpoints = {"127.0.0.1:2379"};
  configuration.auditDirectory = home / "audit";
  configuration.databaseFile = home / "events.db";
  configuration.databaseDirectory = home;
  configuration.logFile = home / "log" / "eventsystem.log";

  readEntries(configuration.hostFile, hostEntries(configuration));
  if (configuration.clusterMember.empty()) configuration.clusterMember = configuration.serverName;

  readEntries(
      configuration.limitsFile,
      {{"events", "age_limit_days", numberEntry(configuration.ageLimitDays, 0, kMaxAgeLimitDays)},
       {"events", "count_limit",
        numberEntry(configuration.countLimit, 0, std::numeric_limits<int>::max())}});
  return configuration;
}

}  // namespace EventSystemHost
