#include "apps/eventctl/DaemonFiles.h"

#include <string>

#include "apps/common/Failure.h"
#include "host/Host.h"
#include "host/config/DistinctFiles.h"
#include "host/config/IniFile.h"

namespace EventApps {
namespace {

// A relative path is relative to the home.
std::filesystem::path fileOf(const std::filesystem::path& home, const char* section,
                             const char* entry, const char* fallback) {
  const auto ini = EventSystemHost::IniFile::load(home / "eventd.ini");
  const std::string* const named = ini.find(section, entry);
  return home / (named == nullptr || named->empty() ? std::string(fallback) : *named);
}

}  // namespace

std::filesystem::path homeOf(const GlobalOptions& options) {
  return std::filesystem::absolute(options.home.empty() ? EventSystemHost::defaultHome()
                                                        : options.home);
}

std::filesystem::path socketOfHome(const std::filesystem::path& home) {
  return fileOf(home, "unix", "path", "eventd.sock");
}

std::filesystem::path tokensOfHome(const std::filesystem::path& home) {
  return fileOf(home, "access", "tokens_file", "eventd.tokens");
}

void requireFreeForOutput(const std::filesystem::path& file, const GlobalOptions& options) {
  EventSystemHost::HostOptions host;  // of the one that writes, and has a log
  host.home = options.home;
  const auto configuration = EventSystemHost::effectiveConfiguration(host);
  EventSystemHost::requireNotInUse(file, configuration);
  const std::filesystem::path& home = configuration.home;
  for (const auto& used :
       {home / "eventd.ini", tokensOfHome(home),
        configuration.databaseDirectory / "eventd-tables.ini",
        fileOf(home, "tls", "certificate_file", ""), fileOf(home, "tls", "key_file", ""),
        fileOf(home, "tls", "client_ca_file", "")}) {
    if (!EventSystemHost::isSameFile(file, used)) continue;
    throw Failure(file.string() + ": is " + used.string() + ", a file of the daemon");
  }
}

}  // namespace EventApps
