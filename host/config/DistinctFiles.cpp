#include "host/config/DistinctFiles.h"

#include <map>
#include <string>
#include <system_error>
#include <vector>

#include "host/Host.h"

namespace EventSystemHost {

namespace {

struct Use {
  std::filesystem::path file;
  std::string what;
  std::string entry;  // of host.ini; empty when the place is fixed
};

std::filesystem::path resolved(const std::filesystem::path& file) {
  std::error_code error;
  const std::filesystem::path absolute = std::filesystem::absolute(file);
  std::filesystem::path canonical = std::filesystem::weakly_canonical(absolute, error);
  return error ? absolute.lexically_normal() : canonical;
}

std::string describe(const Use& use) {
  return use.entry.empty() ? use.what : use.what + " (" + use.entry + ")";
}

// The log moves through log.1.txt, log.2.txt and so on when it is log.txt.
void addLog(std::vector<Use>& uses, const HostConfiguration& configuration) {
  if (configuration.logFile == "-") return;
  const std::string entry = "[log] file";
  uses.push_back({resolved(configuration.logFile), "the log", entry});
  const std::filesystem::path directory = resolved(configuration.logFile).parent_path();
  const std::string stem = configuration.logFile.stem().string() + ".";
  const std::string extension = configuration.logFile.extension().string();
  for (std::size_t i = 1; i < configuration.logMaxFiles; ++i) {
    std::string name = stem;
    name.append(std::to_string(i)).append(extension);
    uses.push_back({directory / name, "an older log", entry});
  }
}

std::vector<Use> usesOf(const HostConfiguration& configuration) {
  std::vector<Use> uses;
  const auto add = [&](const std::filesystem::path& file, const std::string& what,
                       const std::string& entry) {
    uses.push_back({resolved(file), what, entry});
  };
  add(configuration.hostFile, "host.ini", "");
  add(configuration.limitsFile, "OrbCentral.ini", "");
  const std::string database = "[database] file";
  add(configuration.databaseFile, "the database", database);
  for (const char* suffix : {"-wal", "-shm", "-journal", ".lock", ".reserve"}) {
    add(configuration.databaseFile.string() + suffix,
        std::string("the database's ") + suffix + " file", database);
  }
  add(configuration.databaseDirectory / "orbdb.ini", "the table definitions",
      "[database] directory");
  add(configuration.auditDirectory / "audit.db", "the audit database", "[audit] directory");
  addLog(uses, configuration);
  return uses;
}

void requireOther(const std::filesystem::path& file, const std::filesystem::path& used) {
  if (isSameFile(file, used)) {
    throw HostError(file.string() + ": is " + used.string() + ", a file in use");
  }
}

}  // namespace

void requireDistinctFiles(const HostConfiguration& configuration) {
  std::map<std::filesystem::path, Use> known;
  for (const Use& use : usesOf(configuration)) {
    const auto [found, isNew] = known.emplace(use.file, use);
    if (isNew) continue;
    const Use& other = found->second;
    const std::string& entry = use.entry.empty() ? other.entry : use.entry;
    throw HostError(configuration.hostFile.string() + ": " + entry + ": " + use.file.string() +
                    " would be both " + describe(other) + " and " + describe(use) +
                    "; give each a file of its own");
  }
}

bool isSameFile(const std::filesystem::path& one, const std::filesystem::path& other) {
  std::error_code error;
  return resolved(one) == resolved(other) || std::filesystem::equivalent(one, other, error);
}

void requireNotInUse(const std::filesystem::path& file, const HostConfiguration& configuration) {
  for (const Use& use : usesOf(configuration)) requireOther(file, use.file);
  const ClusterConfiguration& cluster = configuration.cluster;
  for (const auto& read :
       {cluster.trustedCertificatesFile, cluster.certificateFile, cluster.keyFile}) {
    if (!read.empty()) requireOther(file, read);
  }
}

}  // namespace EventSystemHost
