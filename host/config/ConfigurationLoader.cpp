#include "host/config/ConfigurationLoader.h"

#include <unistd.h>

#include <array>
#include <charconv>
#include <functional>
#include <limits>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "host/Host.h"
#include "host/config/IniFile.h"

namespace EventSystemHost {

namespace {

// The age limit in seconds is 32-bit arithmetic in the library; more days would wrap around.
constexpr int kMaxAgeLimitDays = 24855;
constexpr std::size_t kMinLogBytes = 1024;
constexpr std::size_t kMaxLogFiles = 1000;
constexpr std::size_t kMaxClusterText = 1023;  // what configManager has room for
constexpr std::size_t kMaxClusterName = 128;
constexpr std::size_t kMaxPath = 4095;

// Says what is allowed by throwing it as text.
struct NotAllowed {
  std::string allowed;
};

using Reader = std::function<void(const std::string& value)>;

struct KnownEntry {
  std::string section;
  std::string name;
  Reader read;
};

template <typename Number>
Reader number(Number& target, Number low, Number high) {
  return [&target, low, high](const std::string& value) {
    Number parsed{};
    const char* end = value.data() + value.size();
    const auto [stop, error] = std::from_chars(value.data(), end, parsed);
    if (error != std::errc() || stop != end || parsed < low || parsed > high) {
      throw NotAllowed{"a number from " + std::to_string(low) + " to " + std::to_string(high)};
    }
    target = parsed;
  };
}

template <typename Choice, std::size_t N>
Reader choice(Choice& target, std::array<std::pair<const char*, Choice>, N> choices) {
  return [&target, choices](const std::string& value) {
    std::string allowed = "one of";
    for (const auto& [name, meaning] : choices) {
      if (value == name) {
        target = meaning;
        return;
      }
      allowed += std::string(" ") + name;
    }
    throw NotAllowed{allowed};
  };
}

Reader text(std::string& target, std::size_t maxLength) {
  return [&target, maxLength](const std::string& value) {
    if (value.empty() || value.size() > maxLength) {
      throw NotAllowed{"a text of 1 to " + std::to_string(maxLength) + " bytes"};
    }
    target = value;
  };
}

Reader path(std::filesystem::path& target, const std::filesystem::path& home, bool allowDash) {
  return [&target, home, allowDash](const std::string& value) {
    if (value.empty() || value.size() > kMaxPath) throw NotAllowed{"a path"};
    // A relative path is relative to the home, wherever the program was started.
    target = allowDash && value == "-" ? std::filesystem::path(value) : home / value;
  };
}

// What can stand in the keys of the cluster service.
Reader clusterName(std::string& target) {
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

Reader endpoints(std::vector<std::string>& target) {
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

template <typename Duration>
Reader duration(Duration& target, long low, long high) {
  return [&target, low, high](const std::string& value) {
    long count = 0;
    number(count, low, high)(value);
    target = Duration(count);
  };
}

void readEntries(const std::filesystem::path& file, const std::vector<KnownEntry>& known) {
  const IniFile ini = IniFile::load(file);
  for (const IniFile::Entry& entry : ini.entries()) {
    std::string inSection;
    bool found = false;
    for (const KnownEntry& candidate : known) {
      if (candidate.section != entry.section) continue;
      inSection += " " + candidate.name;
      if (candidate.name != entry.name) continue;
      found = true;
      try {
        candidate.read(entry.value);
      } catch (const NotAllowed& problem) {
        throw HostError(describe(file, entry) + "allowed is " + problem.allowed);
      }
    }
    if (found) continue;
    std::string sections;
    for (const KnownEntry& candidate : known) {
      if (sections.find("[" + candidate.section + "]") != std::string::npos) continue;
      sections += " [" + candidate.section + "]";
    }
    throw HostError(describe(file, entry) +
                    (inSection.empty()
                         ? "unknown section; the sections are" + sections
                         : "unknown entry; the entries of this section are" + inSection));
  }
}

std::string machineName() {
  char name[256] = {};
  return gethostname(name, sizeof name - 1) == 0 && name[0] != '\0' ? name : "localhost";
}

std::vector<KnownEntry> hostEntries(HostConfiguration& to, int& clusterMode) {
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
  return {
      {"server", "name", text(to.serverName, kMaxClusterText)},
      {"cluster", "cluster_mode", number(clusterMode, 0, 1)},
      {"cluster", "queue", clusterName(to.clusterQueue)},
      {"cluster", "member", clusterName(to.clusterMember)},
      {"cluster", "endpoints", endpoints(to.cluster.endpoints)},
      {"cluster", "deadline_ms", duration(to.cluster.deadline, 100, 600000)},
      {"cluster", "ca_file", path(to.cluster.trustedCertificatesFile, to.home, false)},
      {"cluster", "certificate_file", path(to.cluster.certificateFile, to.home, false)},
      {"cluster", "key_file", path(to.cluster.keyFile, to.home, false)},
      {"cluster", "server_name", text(to.cluster.serverName, kMaxClusterText)},
      {"cluster", "user", text(to.cluster.user, kMaxClusterText)},
      {"cluster", "password", text(to.cluster.password, kMaxClusterText)},
      {"cluster", "lease_seconds", duration(to.cluster.leaseTtl, 60, 86400)},
      {"audit", "directory", path(to.auditDirectory, to.home, false)},
      {"database", "file", path(to.databaseFile, to.home, false)},
      {"database", "directory", path(to.databaseDirectory, to.home, false)},
      {"database", "durability", choice(to.durability, durabilities)},
      {"log", "level", choice(to.logLevel, levels)},
      {"log", "file", path(to.logFile, to.home, true)},
      {"log", "max_bytes",
       number(to.logMaxBytes, kMinLogBytes, std::numeric_limits<std::size_t>::max() / 2)},
      {"log", "max_files", number(to.logMaxFiles, std::size_t{1}, kMaxLogFiles)},
  };
}

}  // namespace

HostConfiguration loadConfiguration(const std::filesystem::path& home) {
  HostConfiguration configuration;
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

  int clusterMode = 0;
  readEntries(configuration.hostFile, hostEntries(configuration, clusterMode));
  configuration.clusterMode = clusterMode != 0;
  if (configuration.clusterMember.empty()) configuration.clusterMember = configuration.serverName;

  readEntries(
      configuration.limitsFile,
      {{"events", "age_limit_days", number(configuration.ageLimitDays, 0, kMaxAgeLimitDays)},
       {"events", "count_limit",
        number(configuration.countLimit, 0, std::numeric_limits<int>::max())}});
  return configuration;
}

}  // namespace EventSystemHost
