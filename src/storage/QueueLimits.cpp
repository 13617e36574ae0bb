#include "QueueLimits.h"

#include "EventSystem/platform/HostConfig.h"
#include "EventSystem/platform/HostLog.h"

namespace EventSystem {

void readQueueLimits(int& ageLimit, int& countLimit) {
  constexpr char kFunction[] = "loadLimits";
  if (TraceOn()) __Trace("%s Loading event storage limits", kFunction);

  char path[4096] = "";
  if (QMConfigLocate("OrbCentral", path, sizeof path - 1) == 0) {
    WarningA(2, "%s Unable to find orb config file path", kFunction);
    return;
  }
  InifileReleaseA(path);  // so that the file is read afresh
  InifileLoadA(path);

  const char* const section = _kvr_config_section_string_table_[kSectionEventLimits];
  int age = ageLimit;
  InifileGetIntegerA(section, _kvr_config_entry_string_table_[kEntryEventAgeLimit], &age,
                     kDefaultAgeLimit, path);
  if (TraceOn()) {
    __Trace("%s Original age limit: %d.  New age limit: %d", kFunction, ageLimit, age);
  }
  int count = countLimit;
  InifileGetIntegerA(section, _kvr_config_entry_string_table_[kEntryEventCountLimit], &count,
                     kDefaultCountLimit, path);
  if (TraceOn()) {
    __Trace("%s Original count limit: %d.  New count limit: %d", kFunction, countLimit, count);
  }
  ageLimit = age;
  countLimit = count;
}

}  // namespace EventSystem
