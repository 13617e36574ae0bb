#include "EventSystem/OrbDBEventStorage.h"

#include <algorithm>
#include <cstdio>
#include <limits>
#include <memory>
#include <mutex>

#include "AuditImport.h"
#include "DatabaseTable.h"
#include "EventRow.h"
#include "EventSystem/ResultCode.h"
#include "EventSystem/platform/HostConfig.h"
#include "EventSystem/platform/HostLog.h"
#include "PlatformGuard.h"

namespace EventSystem {
namespace {

constexpr char kEvents[] = "events";
constexpr char kProperties[] = "eventproperties";
constexpr char kMaxIdKey[] = "1";  // the row of the highest id ever handed out
constexpr char kMaxIdFilter[] = "propname=maxid";

// The highest id that the table has stored; 0 when it cannot be read.
unsigned long storedMaxId(DatabaseTable& properties) {
  long value = 0;
  properties.getNumber(kMaxIdKey, "propvalue", value);
  return static_cast<unsigned long>(value);
}

void locateAuditDatabase(char (&path)[4096], const char* operation) {
  { const std::lock_guard<ConfigManager> settled(configManager); }
  char directory[4096] = "";
  guarded(operation, "InifileGetValueA", 0, [&] {
    return InifileGetValueA(_kvr_config_section_string_table_[kSectionAudit],
                            _kvr_config_entry_string_table_[kEntryAuditDirectory], directory,
                            sizeof directory, "", configManager.configFile);
  });
  joinPath(path, directory, "audit.db");
}

// What is wrong with a row, counted and logged; with `fix` a misfiled one is filed anew.
int checkRow(EventStorage& store, DatabaseTable& events, const EventRow& row, bool fix) {
  constexpr char kFunction[] = "checkConsistency";
  int problems = 0;
  const std::unique_ptr<Event> event = row.parse();
  if (event == nullptr) {
    ErrorA(32, "%s Event id %lu has an invalid event string: %s", kFunction, row.eventId,
           row.eventString);
    ++problems;
  }
  if (row.id == row.eventId) return problems;
  if (!fix) {
    ErrorA(105, "%s The event filename (%lu) does not match the event ID (%lu).", kFunction, row.id,
           row.eventId);
    return problems + 2;
  }
  warnOfRefiling(row);
  if (event != nullptr && store.writeEvent(event.get()) == kSuccess) {
    deleteRewrittenRow(events, row.id);
  }
  return problems + 1;
}

}  // namespace

OrbDBEventStorage::OrbDBEventStorage()
    : m_initialized(false), m_auditDbPath(), m_importing(false), m_walked(nullptr) {
  char iniPath[4096];
  if (!locateDatabaseIni(iniPath)) return;
  const bool complete = createTables(iniPath);
  locateAuditDatabase(m_auditDbPath, __func__);
  // Without the ids that are there, numbering would start over and ids be given twice.
  if (!complete || OrbDBEventStorage::populateIdCache() != kSuccess) return;
  m_initialized = true;
  PopuAuditEventDB(true);
  OrbDBEventStorage::checkConsistency(true);
}

OrbDBEventStorage::~OrbDBEventStorage() = default;

bool OrbDBEventStorage::createTables(const char* iniPath) {
  constexpr char kFunction[] = "OrbDBEventStorage";
  bool complete = true;
  if (!databaseHasTable(kEvents, kFunction)) {
    InfoA(kSuccess, "%s Events table missing.  Adding from ini file: %s", kFunction, iniPath);
    if (!createTable(kEvents, iniPath, kFunction)) {
      ErrorA(kStoreFailure, "%s Failed to add the events table in OrbDB", kFunction);
      complete = false;
    }
  }
  if (!databaseHasTable(kProperties, kFunction)) {
    InfoA(kSuccess, "%s EventProperties table missing.  Adding from ini file: %s", kFunction,
          iniPath);
    if (!createTable(kProperties, iniPath, kFunction)) {
      ErrorA(kStoreFailure, "%s Failed to add the eventproperties table in OrbDB", kFunction);
      complete = false;
    }
    if (!insertInitialRows(kProperties, iniPath, kFunction)) {
      ErrorA(kStoreFailure, "%s Failed to add initial values for eventproperties", kFunction);
      complete = false;
    }
  }
  return complete;
}

int OrbDBEventStorage::readEvent(unsigned long id, Event** event) {
  if (!isUsable(m_initialized, __func__)) return kStoreFailure;
  const int result = readEventRow(kEvents, id, event);
  if (event == nullptr) return result;
  if (*event != nullptr) {
    noteWalked(m_walked, *event);
  } else if (result == kGeneralFailure) {
    deleteEvent(id);
  }
  return result;
}

int OrbDBEventStorage::getNextEvent(unsigned long afterId, Event** event) {
  if (!isUsable(m_initialized, __func__)) {
    if (event != nullptr) *event = nullptr;
    return kStoreFailure;
  }
  PopuAuditEventDB(false);
  return EventStorage::getNextEvent(afterId, event);
}

int OrbDBEventStorage::writeEvent(Event* event) {
  if (!isUsable(m_initialized, __func__)) return kStoreFailure;
  if (event == nullptr) {
    ErrorA(kStoreFailure, "%s New event is NULL!", __func__);
    return kGeneralFailure;
  }
  if (checkLimits(m_walked) != kSuccess) {
    ErrorA(kStorageLimits, "%s Cannot add a new event.  Storage limits reached", __func__);
    return kStorageLimits;
  }
  const unsigned long id = getNewID();
  if (id == 0) {
    ErrorA(kStoreFailure, "%s Failed to get a new event id", __func__);
    return kStoreFailure;
  }
  assignEventId(event, id);
  // Before the row: one that memory was too short to enter would be hidden until the next start.
  addIdToCache(id);
  const int result = addEventRow(kEvents, *event, id, std::nullopt);
  if (result != kSuccess) removeIdFromCache(id);
  return result;
}

void OrbDBEventStorage::deleteEvent(unsigned long id) {
  if (!isUsable(m_initialized, __func__)) return;
  // A row that could not be deleted leaves the cache too: consumers do not meet it again.
  if (deleteEventRow(kEvents, id)) removeIdFromCache(id);
}

int OrbDBEventStorage::populateIdCache() {
  DatabaseTable events(kEvents, __func__);
  if (!events) {
    ErrorA(kStoreFailure, "%s Failed to get the events table in OrbDB", __func__);
    return kStoreFailure;
  }
  m_idCache.clear();
  unsigned long id = 0;
  for (bool row = events.firstRow(nullptr); row; row = events.nextRow(nullptr)) {
    if (!events.getDecimal("eventid", id)) continue;
    addIdToCache(id);
    m_maxId = std::max(m_maxId, id);
  }
  DatabaseTable properties(kProperties, __func__);
  if (!properties) {
    ErrorA(kStoreFailure, "%s Failed to get the eventproperties table in OrbDB", __func__);
    return kStoreFailure;
  }
  long stored = 0;
  const int status = properties.getNumber(kMaxIdKey, "propvalue", stored);
  // To begin again at 0 is right for a table without the row alone, not for one that cannot be
  // read.
  if (status == DatabaseTable::kNoAnswer || (status != 0 && properties.firstRow(kMaxIdFilter))) {
    ErrorA(kStoreFailure, "%s Failed to read the max event id in the eventproperties table",
           __func__);
    return kStoreFailure;
  }
  m_maxId = std::max(m_maxId, static_cast<unsigned long>(stored));
  return kSuccess;
}

unsigned long OrbDBEventStorage::getNextEventID() {
  // Behind the last id there is none: numbering must not start over.
  return m_maxId == std::numeric_limits<unsigned long>::max() ? 0 : ++m_maxId;
}

unsigned long OrbDBEventStorage::getNewID() {
  DatabaseTable properties(kProperties, __func__);
  if (!properties) {
    ErrorA(kStoreFailure, "%s Failed to get the eventproperties table in OrbDB", __func__);
    return 0;
  }
  const unsigned long id = getNextEventID();
  if (id == 0) return 0;
  char assignments[1024];
  snprintf(assignments, sizeof assignments, "propname=maxid,propvalue=%lu", id);
  if (properties.updateRecord(kMaxIdKey, assignments) > 0) {
    WarningA(kStoreFailure, "%s Failed to set the max event id in the eventproperties table",
             __func__);
  }
  return id;
}

unsigned int OrbDBEventStorage::PopuAuditEventDB(bool force) {
  if (!isUsable(m_initialized, __func__)) return kStoreFailure;
  // The import's own writes may walk the queue, which asks for an import: the rows are already
  // being handled.
  if (m_importing) return kSuccess;
  struct Importing {
    explicit Importing(bool& flag) : m_flag(flag) { m_flag = true; }
    ~Importing() { m_flag = false; }
    bool& m_flag;
  };
  const Importing importing(m_importing);
  if (force) InfoA(kSuccess, "%s orbd init poping off-line events.", __func__);
  return static_cast<unsigned int>(AuditImport(m_auditDbPath, *this).run());
}

int OrbDBEventStorage::checkConsistency(bool fix) {
  InfoA(kSuccess, "%s Starting consistency check", __func__);
  DatabaseTable events(kEvents, __func__);
  if (!events) {
    ErrorA(kStoreFailure, "%s Failed to get the events table in OrbDB", __func__);
    return 1;
  }
  int problems = 0;
  unsigned long largestId = 0;
  EventRow row;
  Columns columns;
  for (bool found = events.firstRow(columns); found; found = events.nextRow(columns)) {
    if (!row.load(columns)) {
      ++problems;
      continue;
    }
    largestId = std::max(largestId, row.eventId);
    problems += checkRow(*this, events, row, fix);
  }
  problems += checkMaxId(largestId);
  InfoA(kSuccess, "%s Ending consistency check", __func__);
  return problems;
}

int OrbDBEventStorage::checkMaxId(unsigned long largestId) {
  constexpr char kFunction[] = "checkConsistency";
  DatabaseTable properties(kProperties, kFunction);
  if (!properties) {
    ErrorA(kStoreFailure, "%s Failed to get the eventproperties table in OrbDB", kFunction);
    return 1;
  }
  const unsigned long stored = storedMaxId(properties);
  if (largestId <= stored) return 0;
  ErrorA(kGeneralFailure,
         "%s The max ID in the database (%lu) is smaller than the largest ID found (%lu).",
         kFunction, stored, largestId);
  return 1;
}

}  // namespace EventSystem
