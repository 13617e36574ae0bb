// The reference host's own interface: what a program does before and after it uses the library.
//
// One Host lives at a time; while it lives, everything in EventSystem/platform/ works: the
// configuration is read, the log is open, and the database is open for this process.
//
// Thread safety: create and destroy it from the main thread, while no other thread uses the
// library; the accessors may be called from any thread.

#ifndef EVENTSYSTEM_HOST_HOST_H
#define EVENTSYSTEM_HOST_HOST_H

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>

#include "EventSystem/Export.h"
#include "host/cluster/ClusterReader.h"
#include "host/cluster/LastCall.h"
#include "host/config/HostConfiguration.h"

namespace EventSystemHost {

// Why a host cannot start, in words for the operator: what is wrong, where, and what to do.
class EVENTSYSTEM_HOST_API HostError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Another process has the database open for writing.
class EVENTSYSTEM_HOST_API DatabaseBusy : public HostError {
 public:
  using HostError::HostError;
};

enum class Access {
  kReadWrite,  // creates what is missing; the only writer of the database file
  // Beside a running writer or alone; changes nothing, neither in the database, which must exist
  // unless the queues are elsewhere (cluster mode), nor at the cluster service.
  kReadOnly,
  // Beside a running writer or alone, in cluster mode: the cluster service is read and written, the
  // database is not opened.
  kServiceOnly
};

struct HostOptions {
  // Where configuration and data are. Empty: defaultHome().
  std::filesystem::path home;
  Access access = Access::kReadWrite;
  // Overrides [log] of host.ini when set. A host beside the writer shares no log file with it:
  // unless set here, its log is standard error, with warnings and errors only.
  std::optional<LogLevel> logLevel;
  std::optional<std::filesystem::path> logFile;  // "-" is standard error
  // In force unless [database] of host.ini says another.
  Durability durability = Durability::kStrict;
  // How many bytes the only writer keeps back on the database's disk, for deleting events when it
  // is full.
  std::uintmax_t reserveBytes = 0;
};

// $XDG_STATE_HOME/eventsystem, or ~/.local/state/eventsystem where that is not set.
EVENTSYSTEM_HOST_API std::filesystem::path defaultHome();

// The configuration that a host with these options would have; nothing is opened or created.
// Throws HostError.
EVENTSYSTEM_HOST_API HostConfiguration effectiveConfiguration(const HostOptions& options);

class EVENTSYSTEM_HOST_API Host {
 public:
  // Reads home/host.ini and home/OrbCentral.ini (both optional), opens log and database, and
  // fills configManager. Throws HostError, or DatabaseBusy when another process writes.
  explicit Host(const HostOptions& options);

  // Makes every call durable, closes database and log.
  ~Host();

  Host(const Host&) = delete;
  Host& operator=(const Host&) = delete;

  // The effective configuration: the files with defaults filled in.
  const HostConfiguration& configuration() const;

  // Returns when everything that returned before this call survives power loss: at once in strict
  // durability, after at most one flush otherwise. 0 on success, a database status on failure.
  // Any thread; callers that wait at the same time share one flush.
  int waitDurable();

  // The queues at the cluster service, for reading; null outside cluster mode. Nothing is connected
  // before it is asked for something.
  ClusterReader* cluster() const;

  // What came of the calling thread's last call of the cluster service: among it the id that an
  // event got there, which the library does not pass on. To be asked after a call of the library
  // that went to the service.
  ClusterCall lastClusterCall() const;

  // What this process has found damaged in the database, in words for the operator; empty when
  // nothing. From then on the database takes no writes: what cannot be read, ids handed out before
  // among it, must not be written over. Any thread; waits for nothing.
  std::string damage() const;

  // Why the database takes no more rows, when its last one did not fit on the disk, in words for
  // the operator; empty when it did. Reading goes on, and deleting for as long as what is kept back
  // lasts. Any thread.
  std::string lackOfSpace() const;

 private:
  class Parts;  // what it has open

  HostConfiguration m_configuration;
  std::unique_ptr<Parts> m_parts;
};

}  // namespace EventSystemHost

#endif
