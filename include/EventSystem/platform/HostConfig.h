// The host's configuration, as the library reads it. Declarations only.
//
// Thread safety: the library takes and releases configManager's mutex around each reading of a
// value. The ini calls are made during construction of the stores.

#ifndef EVENTSYSTEM_PLATFORM_HOSTCONFIG_H
#define EVENTSYSTEM_PLATFORM_HOSTCONFIG_H

#include "EventSystem/Export.h"

struct EVENTSYSTEM_HOST_API ConfigManager {
  void lock();  // the configuration mutex; works with std::lock_guard
  void unlock();

  unsigned char clusterMode;           // non-zero: cluster mode
  char databaseConfigDirectory[4096];  // holds "orbdb.ini"; empty: not configured
  char clusterQueue[1024];             // text A of the cluster calls
  char clusterMember[1024];            // text B of the cluster calls
  char configFile[4096];               // the ini handle that holds the audit directory
};

// Rows of the two string tables below: the host's names for what the library looks up.
enum ConfigSection { kSectionEventLimits, kSectionAudit, kSectionCount };
enum ConfigEntry {
  kEntryEventAgeLimit,    // days
  kEntryEventCountLimit,  // events
  kEntryAuditDirectory,   // holds "audit.db"
  kEntryCount
};

extern "C" {

EVENTSYSTEM_HOST_API extern ConfigManager configManager;

EVENTSYSTEM_HOST_API extern const char* const _kvr_config_section_string_table_[];
EVENTSYSTEM_HOST_API extern const char* const _kvr_config_entry_string_table_[];

// Writes the path of a component's configuration file, at most `size` bytes with the terminator.
// Nonzero on success.
EVENTSYSTEM_HOST_API int QMConfigLocate(const char* component, char* path, unsigned int size);

// Reads an ini file into memory under its path, or forgets it.
EVENTSYSTEM_HOST_API int InifileLoadA(const char* path);
EVENTSYSTEM_HOST_API int InifileReleaseA(const char* path);

// An entry of a loaded ini file, or the default when it is absent.
EVENTSYSTEM_HOST_API int InifileGetIntegerA(const char* section, const char* entry, int* value,
                                            int defaultValue, const char* path);
EVENTSYSTEM_HOST_API int InifileGetValueA(const char* section, const char* entry, char* value,
                                          unsigned int size, const char* defaultValue,
                                          const char* path);

// Nonzero when the data selection exists and is valid.
EVENTSYSTEM_HOST_API int QMDSIDValidate(unsigned int dsid);

}  // extern "C"

#endif
