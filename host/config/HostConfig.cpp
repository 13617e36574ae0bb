#include "EventSystem/platform/HostConfig.h"

#include <charconv>
#include <cstring>
#include <map>
#include <mutex>
#include <string>
#include <system_error>

#include "EventSystem/platform/HostLog.h"
#include "EventSystem/platform/HostText.h"
#include "host/Host.h"
#include "host/config/ConfigRegistry.h"
#include "host/config/IniFile.h"

ConfigManager configManager{};

const char* const _kvr_config_section_string_table_[] = {"events", "audit", nullptr};
const char* const _kvr_config_entry_string_table_[] = {"age_limit_days", "count_limit", "directory",
                                                       nullptr};

namespace {

using EventSystemHost::IniFile;

constexpr int kConfigurationError = 4;

std::mutex& configurationMutex() {
  static std::mutex mutex;
  return mutex;
}

// The files by the path they were loaded with. `effective` holds the entries of host.ini with
// their defaults filled in, and answers before the file of that path does.
struct Registry {
  std::mutex mutex;
  std::map<std::string, IniFile> loaded;
  std::map<std::string, IniFile> effective;
  std::string limitsFile;
};

Registry& registry() {
  static Registry instance;
  return instance;
}

// Call with the registry's mutex held.
const std::string* findEntry(const char* section, const char* entry, const char* path) {
  if (section == nullptr || entry == nullptr || path == nullptr) return nullptr;
  for (const auto* files : {&registry().effective, &registry().loaded}) {
    const auto file = files->find(path);
    if (file == files->end()) continue;
    if (const std::string* value = file->second.find(section, entry)) return value;
  }
  return nullptr;
}

}  // namespace

void ConfigManager::lock() {
  configurationMutex().lock();
}
void ConfigManager::unlock() {
  configurationMutex().unlock();
}

int QMConfigLocate(const char* component, char* path, unsigned int size) {
  const std::lock_guard lock(registry().mutex);
  const std::string& file = registry().limitsFile;
  if (component == nullptr || path == nullptr || file.empty()) return 0;
  if (std::strcmp(component, "OrbCentral") != 0 || file.size() >= size) return 0;
  kvrstrcpy(path, file.c_str(), size);
  return 1;
}

int InifileLoadA(const char* path) {
  if (path == nullptr) return 1;
  try {
    IniFile file = IniFile::load(path);
    const std::lock_guard lock(registry().mutex);
    registry().loaded[path] = std::move(file);
    return 0;
  } catch (const std::exception& problem) {
    return ErrorA(kConfigurationError, "%s", problem.what());
  }
}

int InifileReleaseA(const char* path) {
  if (path == nullptr) return 1;
  const std::lock_guard lock(registry().mutex);
  registry().loaded.erase(path);
  return 0;
}

int InifileGetIntegerA(const char* section, const char* entry, int* value, int defaultValue,
                       const char* path) {
  if (value == nullptr) return 1;
  const std::lock_guard lock(registry().mutex);
  *value = defaultValue;
  const std::string* text = findEntry(section, entry, path);
  if (text == nullptr) return 0;
  int parsed = 0;
  const char* end = text->data() + text->size();
  const auto [stop, error] = std::from_chars(text->data(), end, parsed);
  if (error != std::errc() || stop != end) {
    return ErrorA(kConfigurationError, "%s: [%s] %s = \"%.64s\": not a 32-bit number, %d is used",
                  path, section, entry, text->c_str(), defaultValue);
  }
  *value = parsed;
  return 0;
}

int InifileGetValueA(const char* section, const char* entry, char* value, unsigned int size,
                     const char* defaultValue, const char* path) {
  if (value == nullptr || size == 0) return 1;
  const std::lock_guard lock(registry().mutex);
  const std::string* text = findEntry(section, entry, path);
  kvrstrcpy(value, text != nullptr ? text->c_str() : defaultValue, size);
  return 0;
}

namespace EventSystemHost {

namespace {

// In cluster mode the database is a copy to fall back to, which nobody drains: were it full, the
// audit records that pass through it would be refused and lost.
void liftLimits(IniFile& limits) {
  for (const int entry : {kEntryEventAgeLimit, kEntryEventCountLimit}) {
    limits.set(_kvr_config_section_string_table_[kSectionEventLimits],
               _kvr_config_entry_string_table_[entry], "0");
  }
}

}  // namespace

void publishConfiguration(const HostConfiguration& configuration) {
  const std::string hostFile = configuration.hostFile.string();
  {
    Registry& files = registry();
    const std::lock_guard lock(files.mutex);
    files.limitsFile = configuration.limitsFile.string();
    files.effective[hostFile].set(_kvr_config_section_string_table_[kSectionAudit],
                                  _kvr_config_entry_string_table_[kEntryAuditDirectory],
                                  configuration.auditDirectory.string());
    if (configuration.clusterMode) liftLimits(files.effective[files.limitsFile]);
  }
  const std::lock_guard lock(configManager);
  const auto fill = [](auto& target, const std::string& value) {
    kvrstrcpy(target, value.c_str(), sizeof target);
  };
  configManager.clusterMode = configuration.clusterMode ? 1 : 0;
  fill(configManager.databaseConfigDirectory, configuration.databaseDirectory.string());
  fill(configManager.clusterQueue, configuration.clusterQueue);
  fill(configManager.clusterMember, configuration.clusterMember);
  fill(configManager.configFile, hostFile);
}

void withdrawConfiguration() {
  {
    Registry& files = registry();
    const std::lock_guard lock(files.mutex);
    files.loaded.clear();
    files.effective.clear();
    files.limitsFile.clear();
  }
  const std::lock_guard lock(configManager);
  configManager = ConfigManager{};
}

}  // namespace EventSystemHost
