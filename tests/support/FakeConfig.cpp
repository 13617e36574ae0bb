#include <mutex>

#include "EventSystem/platform/HostConfig.h"
#include "EventSystem/platform/HostText.h"
#include "tests/support/FakeHostInternals.h"

using namespace EventSystemTest;

namespace {

std::mutex configurationMutex;

bool asksFor(const char* section, ConfigSection wantedSection, const char* entry,
             ConfigEntry wantedEntry) {
  return section == _kvr_config_section_string_table_[wantedSection] &&
         entry == _kvr_config_entry_string_table_[wantedEntry];
}

std::optional<int> limit(const char* section, const char* entry) {
  const FakeConfiguration& values = state().configuration;
  if (asksFor(section, kSectionEventLimits, entry, kEntryEventAgeLimit)) return values.ageLimit;
  if (asksFor(section, kSectionEventLimits, entry, kEntryEventCountLimit)) {
    return values.countLimit;
  }
  return std::nullopt;
}

}  // namespace

void ConfigManager::lock() {
  {
    const Guard guard;
    host().enter({CallKind::kConfig, "lock", "", {}});
  }
  configurationMutex.lock();
  const Guard guard;
  ++state().configurationLocks;
}

void ConfigManager::unlock() {
  {
    const Guard guard;
    --state().configurationLocks;
  }
  configurationMutex.unlock();
}

extern "C" {

ConfigManager configManager;

const char* const _kvr_config_section_string_table_[] = {"fake limits section",
                                                         "fake audit section"};
const char* const _kvr_config_entry_string_table_[] = {"fake age entry", "fake count entry",
                                                       "fake audit directory entry"};

int QMConfigLocate(const char* component, char* path, unsigned int size) {
  const Guard guard;
  const std::optional<int> failure = host().enter(
      {CallKind::kConfig, "QMConfigLocate", shown(component) + ", " + std::to_string(size), {}});
  const std::optional<std::string>& file = state().configuration.centralFile;
  if (failure || !file || shown(component) != "OrbCentral") return 0;
  kvrstrcpy(path, file->c_str(), size);
  return 1;
}

int InifileLoadA(const char* path) {
  const Guard guard;
  const std::optional<int> failure =
      host().enter({CallKind::kConfig, "InifileLoadA", shown(path), {}});
  if (failure) return *failure;
  state().loadedFiles.insert(path);
  return 0;
}

int InifileReleaseA(const char* path) {
  const Guard guard;
  const std::optional<int> failure =
      host().enter({CallKind::kConfig, "InifileReleaseA", shown(path), {}});
  if (failure) return *failure;
  state().loadedFiles.erase(path);
  return 0;
}

int InifileGetIntegerA(const char* section, const char* entry, int* value, int defaultValue,
                       const char* path) {
  const Guard guard;
  const std::optional<int> failure =
      host().enter({CallKind::kConfig,
                    "InifileGetIntegerA",
                    shown(section) + ", " + shown(entry) + ", " + std::to_string(defaultValue) +
                        ", " + shown(path),
                    {}});
  const bool loaded = state().loadedFiles.count(path) != 0;
  const std::optional<int> found = loaded ? limit(section, entry) : std::nullopt;
  *value = failure ? defaultValue : found.value_or(defaultValue);
  return failure.value_or(0);
}

int InifileGetValueA(const char* section, const char* entry, char* value, unsigned int size,
                     const char* defaultValue, const char* path) {
  const Guard guard;
  const std::optional<int> failure =
      host().enter({CallKind::kConfig,
                    "InifileGetValueA",
                    shown(section) + ", " + shown(entry) + ", " + std::to_string(size) + ", \"" +
                        shown(defaultValue) + "\", " + shown(path),
                    {}});
  const FakeConfiguration& configuration = state().configuration;
  const bool known = shown(path) == configuration.configFile &&
                     asksFor(section, kSectionAudit, entry, kEntryAuditDirectory) &&
                     configuration.auditDirectory;
  kvrstrcpy(value, known && !failure ? configuration.auditDirectory->c_str() : defaultValue, size);
  return failure.value_or(0);
}

int QMDSIDValidate(unsigned int dsid) {
  const Guard guard;
  const std::optional<int> failure =
      host().enter({CallKind::kConfig, "QMDSIDValidate", std::to_string(dsid), {}});
  return failure || state().invalidDataSelections.count(dsid) != 0 ? 0 : 1;
}

}  // extern "C"
