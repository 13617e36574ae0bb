// The values of host.ini and OrbCentral.ini, checked, with defaults filled in.
//
// Thread safety: plain values.

#ifndef EVENTSYSTEM_HOST_CONFIG_HOSTCONFIGURATION_H
#define EVENTSYSTEM_HOST_CONFIG_HOSTCONFIGURATION_H

#include <cstddef>
#include <filesystem>
#include <string>

#include "host/cluster/ClusterConfiguration.h"

namespace EventSystemHost {

enum class LogLevel { kOff, kError, kWarning, kInfo, kTrace };

enum class LogFormat {
  kText,  // time, level, code and text, for people
  kJson   // the same as one JSON object a line, for programs
};

// What a returned call of the database has been promised; see docs/operations.md.
enum class Durability {
  kStrict,  // survives power loss
  kGroup,   // survives power loss once waitDurable() returns
  kRelaxed  // survives the death of the process
};

struct HostConfiguration {
  std::filesystem::path home;
  std::filesystem::path hostFile;    // home/host.ini, whether or not it exists
  std::filesystem::path limitsFile;  // home/OrbCentral.ini, whether or not it exists

  // [server]
  std::string serverName;  // "name"; default: the machine's host name

  // [cluster]
  bool clusterMode = false;   // "cluster_mode": 0 or 1
  std::string clusterQueue;   // "queue"; default "events"
  std::string clusterMember;  // "member"; default: serverName

  // "endpoints", separated by commas, default 127.0.0.1:2379; "deadline_ms"; "ca_file",
  // "certificate_file", "key_file"; "server_name"; "user", "password"; "lease_seconds"
  ClusterConfiguration cluster;

  // [audit]
  std::filesystem::path auditDirectory;  // "directory"; default home/audit

  // [database]
  std::filesystem::path databaseFile;           // "file"; default home/events.db
  std::filesystem::path databaseDirectory;      // "directory", holds orbdb.ini; default home
  Durability durability = Durability::kStrict;  // "durability": strict, group or relaxed
  std::uintmax_t reserveBytes = 0;              // HostOptions

  // [log]
  LogLevel logLevel = LogLevel::kWarning;  // "level": off, error, warning, info or trace
  std::filesystem::path
      logFile;  // "file", "-" for standard error; default home/log/eventsystem.log
  LogFormat logFormat = LogFormat::kText;  // "format": text or json
  std::size_t logMaxBytes = 10u << 20;     // "max_bytes" of one file before it is rotated
  std::size_t logMaxFiles = 5;             // "max_files" kept, the current one included

  // OrbCentral.ini, [events]
  int ageLimitDays = 0;    // "age_limit_days"; 0: no limit
  int countLimit = 50000;  // "count_limit"; 0: no limit
};

}  // namespace EventSystemHost

#endif
