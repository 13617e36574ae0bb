#include "host/config/DistinctFiles.h"

#include <map>
#include <string>
#include <system_error>
#include <utility>

#include "host/Host.h"

namespace EventSystemHost {

namespace {

struct Use {
  std::string what;
  std::string entry;  // of host.ini; empty when the place is fixed
};

std::filesystem::path resolved(const std::filesystem::path& file) {
  std::error_code error;
  const std::filesystem::path absolute = std::filesystem::absolute(file);
  std::filesystem::path canonical = std::filesystem::weakly_canonical(absolute, error);
  return error ? absolute.lexically_normal() : canonical;
}

class Uses {
 public:
  explicit Uses(std::filesystem::path hostFile) : m_hostFile(std::move(hostFile)) {}

  void add(const std::filesystem::path& file, const Use& use) { addResolved(resolved(file), use); }

  void addResolved(const std::filesystem::path& file, const Use& use) {
    const auto [known, isNew] = m_uses.emplace(file, use);
    if (isNew) return;
    const Use& other = known->second;
    const std::string& entry = use.entry.empty() ? other.entry : use.entry;
    throw HostError(m_hostFile.string() + ": " + entry + ": " + file.string() + " would be both " +
                    describe(other) + " and " + describe(use) + "; give each a file of its own");
  }

 private:
  static std::string describe(const Use& use) {
    return use.entry.empty() ? use.what : use.what + " (" + use.entry + ")";
  }

  std::filesystem::path m_hostFile;
  std::map<std::filesystem::path, Use> m_uses;
};

// The log moves through log.1.txt, log.2.txt and so on when it is log.txt.
void addLog(Uses& uses, const HostConfiguration& configuration) {
  if (configuration.logFile == "-") return;
  const std::string entry = "[log] file";
  uses.add(configuration.logFile, {"the log", entry});
  const std::filesystem::path directory = resolved(configuration.logFile).parent_path();
  const std::string stem = configuration.logFile.stem().string() + ".";
  const std::string extension = configuration.logFile.extension().string();
  for (std::size_t i = 1; i < configuration.logMaxFiles; ++i) {
    std::string name = stem;
    name.append(std::to_string(i)).append(extension);
    uses.addResolved(directory / name, {"an older log", entry});
  }
}

}  // namespace

void requireDistinctFiles(const HostConfiguration& configuration) {
  Uses uses(configuration.hostFile);
  uses.add(configuration.hostFile, {"host.ini", ""});
  uses.add(configuration.limitsFile, {"OrbCentral.ini", ""});
  const std::string database = "[database] file";
  uses.add(configuration.databaseFile, {"the database", database});
  for (const char* suffix : {"-wal", "-shm", "-journal", ".lock", ".reserve"}) {
    uses.add(configuration.databaseFile.string() + suffix,
             {std::string("the database's ") + suffix + " file", database});
  }
  uses.add(configuration.databaseDirectory / "orbdb.ini",
           {"the table definitions", "[database] directory"});
  uses.add(configuration.auditDirectory / "audit.db", {"the audit database", "[audit] directory"});
  addLog(uses, configuration);
}

}  // namespace EventSystemHost
