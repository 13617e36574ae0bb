#include "host/Host.h"

#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <utility>

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
  explicit RunningCluster(const HostConfiguration& configuration) {
    try {
      startCluster(configuration.cluster);
    } catch (const std::runtime_error& problem) {
      throw HostError(configuration.hostFile.string() + " [cluster]: " + problem.what());
    }
  }
  ~RunningCluster() { stopCluster(); }
  RunningCluster(const RunningCluster&) = delete;
  RunningCluster& operator=(const RunningCluster&) = delete;
};

HostConfiguration configure(const HostOptions& options) {
  const std::filesystem::path home = options.home.empty() ? defaultHome() : options.home;
  HostConfiguration configuration = loadConfiguration(std::filesystem::absolute(home));
  if (options.access == Access::kReadOnly) {
    configuration.logFile = "-";
    configuration.logLevel = std::min(configuration.logLevel, LogLevel::kWarning);
  }
  if (options.logLevel) configuration.logLevel = *options.logLevel;
  if (options.logFile) configuration.logFile = *options.logFile;
  configuration.databaseFile = locateDatabase(configuration.databaseFile);
  requireDistinctFiles(configuration);
  return configuration;
}

}  // namespace

// Opened in this order, closed in the reverse one. The lock comes before the log: two writers
// must not rotate one file.
class Host::Parts {
 public:
  Parts(const HostConfiguration& configuration, Access access)
      : m_lock(access == Access::kReadOnly ? nullptr : lockDatabase(configuration)),
        m_log(configuration),
        m_published(configuration),
        m_database(configuration, access),
        m_cluster(configuration.clusterMode && access == Access::kReadWrite
                      ? std::make_unique<RunningCluster>(configuration)
                      : nullptr) {}

  Database& database() { return m_database.get(); }

  bool belongToThisProcess() const { return m_process == getpid(); }

 private:
  static std::unique_ptr<WriterLock> lockDatabase(const HostConfiguration& configuration) {
    makePrivateDirectories(configuration.home);
    makePrivateDirectories(configuration.databaseFile.parent_path());
    return std::make_unique<WriterLock>(configuration.databaseFile);
  }

  const pid_t m_process = getpid();
  OnlyHost m_only;
  std::unique_ptr<WriterLock> m_lock;
  OpenLog m_log;
  PublishedConfiguration m_published;
  OpenDatabase m_database;
  std::unique_ptr<RunningCluster> m_cluster;
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

Host::Host(const HostOptions& options)
    : m_configuration(configure(options)),
      m_parts(std::make_unique<Parts>(m_configuration, options.access)) {}

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
  return m_parts->database().damage();
}

int Host::waitDurable() {
  return m_parts->database().waitDurable();
}

}  // namespace EventSystemHost
