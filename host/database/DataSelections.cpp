#include "EventSystem/platform/HostConfig.h"
#include "host/database/Database.h"

int QMDSIDValidate(unsigned int dsid) {
  const auto database = EventSystemHost::currentDatabase();
  return database && database->hasDataSelection(dsid) ? 1 : 0;
}
