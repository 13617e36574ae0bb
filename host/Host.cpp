#include "host/Host.h"

#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <utility>

#include "host/CopiedRows.h"
#include "host/Membership.h"
#include "host/cluster/ClusterService.h"
#include "host/config/ConfigRegistry.h"
#include "host/config/ConfigurationLoader.h"
#include "host/config/DistinctFiles.h"
#include "host/database/Database.h"
#include "host/database/DatabaseLocation.h"
#include "host/database/WriterLock.h"
#include "host/files/PrivateFiles.h"
#include "host/logging/Log.h"

namespace EventSystemHost {

namespace {

std::atomic<bool> hostLives{false};

// A claim on being the process's one Host.
class OnlyHost {
 public:
  OnlyHost() {
    if (hostLives.exchange(true)) throw HostError("a process has one Host at a time");
  }
  ~OnlyHost() { hostLives = false; }
  OnlyHost(const OnlyHost&) = delete;
  OnlyHost& operator=(const OnlyHost&) = delete;
};

class OpenLog {
 public:
  explicit OpenLog(const HostConfiguration& configuration) { openLog(configuration); }
  ~OpenLog() { closeLog(); }
  OpenLog(const OpenLog&) = delete;
  OpenLog& operator=(const OpenLog&) = delete;
};

class PublishedConfiguration {
 public:
  explicit PublishedConfiguration(const HostConfiguration& configuration) {
    publishConfiguration(configuration);
  }
  ~PublishedConfiguration() { withdrawConfiguration(); }
  PublishedConfiguration(const PublishedConfiguration&) = delete;
  PublishedConfiguration& operator=(const PublishedConfiguration&) = delete;
};

class OpenDatabase {
 public:
  OpenDatabase(const HostConfiguration& configuration, Access access)
      : m_database(access == Access::kReadOnly ? Database::openForReading(configuration)
                                               : Database::openForWriting(configuration)) {
    setCurrentDatabase(m_database);
  }
  ~OpenDatabase() {
    setCurrentDatabase(nullptr);
    m_database->close();
  }
  OpenDatabase(const OpenDatabase&) = delete;
  OpenDatabase& operator=(const OpenDatabase&) = delete;

  Database& get() const { return *m_database; }

 private:
  std::shared_ptr<Database> m_database;
};

// The process's service at etcd, in cluster mode.
class RunningCluster {
 public:
  RunningCluster(const HostConfiguration& configuration, Access access) {
    try {
      startCluster(configuration.cluster, access == Access::kReadWrite
                                              ? std::optional(membershipOf(configuration))
                                              : std::nullopt);
    } catch (const std::runtime_error& problem) {
      throw HostError(configuration.hostFile.string() + " [cluster]: " + problem.what());
    }
  }
  ~RunningCluster() { stopCluster(); }
  RunningCluster(const RunningCluster&) = delete;
  RunningCluster& operator=(const RunningCluster&) = delete;
};

// A reader in cluster mode needs the database only for what it knows of data selections.
std::unique_ptr<OpenDatabase> openDatabase(const HostConfiguration& configuration, Access access) {
  std::error_code error;
  const bool needed = access == Access::kReadWrite || !configuration.clusterMode ||
                      std::filesystem::exists(configuration.databaseFile, error);
  if (access == Access::kServiceOnly || !needed) return nullptr;
  return std::make_unique<OpenDatabase>(configuration, access);
}

}  // namespace

// Opened in this order, closed in the reverse one. The lock comes before the log: two writers
// must not rotate one file.
class Host::Parts {
 public:
  Parts(const HostConfiguration& configuration, Access access)
      : m_lock(access == Access::kReadWrite ? lockDatabase(configuration) : nullptr),
        m_log(configuration),
        m_published(configuration),
        m_database(openDatabase(configuration, access)),
        m_cluster(configuration.clusterMode && access != Access::kReadOnly
                      ? std::make_unique<RunningCluster>(configuration, access)
                      : nullptr),
        m_reader(configuration.clusterMode ? std::make_unique<ClusterReader>(
                                                 configuration.cluster, configuration.clusterQueue)
                                           : nullptr) {}

  // Null where none is needed.
  Database* database() { return m_database ? &m_database->get() : nullptr; }

  ClusterReader* reader() { return m_reader.get(); }

  bool belongToThisProcess() const { return m_process == getpid(); }

 private:
  static std::unique_ptr<WriterLock> lockDatabase(const HostConfiguration& configuration) {
    makePrivateDirectories(configuration.home);
    makePrivateDirectories(configuration.databaseFile.parent_path());
    requireOwn(configuration.home);
    requireOwn(configuration.databaseFile.parent_path());
    requireOwn(configuration.databaseFile);
    return std::make_unique<WriterLock>(configuration.databaseFile);
  }

  const pid_t m_process = getpid();
  OnlyHost m_only;
  std::unique_ptr<WriterLock> m_lock;
  OpenLog m_log;
  PublishedConfiguration m_published;
  std::unique_ptr<OpenDatabase> m_database;
  std::unique_ptr<RunningCluster> m_cluster;
  std::unique_ptr<ClusterReader> m_reader;
};

std::filesystem::path defaultHome() {
  const char* state = std::getenv("XDG_STATE_HOME");
  if (state != nullptr && state[0] == '/') return std::filesystem::path(state) / "eventsystem";
  const char* home = std::getenv("HOME");
  if (home == nullptr || home[0] == '\0') {
    throw HostError("neither XDG_STATE_HOME nor HOME is set; name a home directory");
  }
  return std::filesystem::path(home) / ".local" / "state" / "eventsystem";
}

HostConfiguration effectiveConfiguration(const HostOptions& options) {
  const std::filesystem::path home = options.home.empty() ? defaultHome() : options.home;
  HostConfiguration configuration =
      loadConfiguration(std::filesystem::absolute(home), options.durability);
  if (options.access != Access::kReadWrite) {
    configuration.logFile = "-";
    configuration.logLevel = std::min(configuration.logLevel, LogLevel::kWarning);
  }
  configuration.reserveBytes = options.reserveBytes;
  if (options.logLevel) configuration.logLevel = *options.logLevel;
  if (options.logFile) configuration.logFile = *options.logFile;
  configuration.databaseFile = locateDatabase(configuration.databaseFile);
  requireDistinctFiles(configuration);
  if (options.access == Access::kServiceOnly && !configuration.clusterMode) {
    throw HostError(configuration.hostFile.string() +
                    ": [cluster] cluster_mode is 0: the queues are " +
                    "in the database, not at a service");
  }
  return configuration;
}

Host::Host(const HostOptions& options)
    : m_configuration(effectiveConfiguration(options)),
      m_parts(std::make_unique<Parts>(m_configuration, options.access)) {
  const bool copies = m_configuration.clusterMode && options.access == Access::kReadWrite;
  if (copies) forgetCopiesOfGoneRows(m_configuration);
}

// After fork() the copy in the child has no thread, and shares locks and files with the parent's.
// It is kept, because nothing of it may be released before the child ends.
Host::~Host() {
  if (m_parts->belongToThisProcess()) return;
  static std::atomic<Parts*> kept{nullptr};
  kept.store(m_parts.release());
}

const HostConfiguration& Host::configuration() const {
  return m_configuration;
}

std::string Host::damage() const {
  Database* const database = m_parts->database();
  return database == nullptr ? "" : database->damage();
}

std::string Host::lackOfSpace() const {
  Database* const database = m_parts->database();
  return database == nullptr ? "" : database->lackOfSpace();
}

// What a call at the cluster service has done is durable when the call returns.
int Host::waitDurable() {
  Database* const database = m_parts->database();
  return database == nullptr ? 0 : database->waitDurable();
}

ClusterReader* Host::cluster() const {
  return m_parts->reader();
}

ClusterCall Host::lastClusterCall() const {
  return EventSystemHost::lastClusterCall();
}

}  // namespace EventSystemHost
