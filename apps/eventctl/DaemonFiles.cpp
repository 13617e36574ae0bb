#include "apps/eventctl/DaemonFiles.h"

#include <string>

#include "host/Host.h"
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

}  // namespace EventApps
