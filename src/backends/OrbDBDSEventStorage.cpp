#include "EventSystem/OrbDBDSEventStorage.h"

#include <algorithm>
#include <cstdio>
#include <limits>
#include <memory>
#include <set>

#include "DatabaseTable.h"
#include "EventRow.h"
#include "EventSystem/ResultCode.h"
#include "EventSystem/platform/HostConfig.h"
#include "EventSystem/platform/HostLog.h"
#include "FirstDsid.h"
#include "PlatformGuard.h"

namespace EventSystem {
namespace {

constexpr char kEvents[] = "dsevents";
constexpr char kProperties[] = "eventproperties";

// The filter that finds the row of a data selection's highest id.
struct MaxIdFilter {
  explicit MaxIdFilter(unsigned int dsid) {
    snprintf(text, sizeof text, "propname=maxid_%d", static_cast<int>(dsid));
  }
  char text[1024];
};

bool isValid(unsigned int dsid) {
  return guarded("populateIdCache", "QMDSIDValidate", 0, [&] { return QMDSIDValidate(dsid); }) != 0;
}

// What is wrong with a row, counted and logged; with `fix` a misfiled one is filed anew.
int checkRow(DSEventStorage& store, DatabaseTable& events, const EventRow& row, bool fix) {
  constexpr char kFunction[] = "checkConsistency";
  int problems = 0;
  const std::unique_ptr<Event> event = row.parse();
  if (event == nullptr) {
    ErrorA(32, "%s Event id %lu with data selection (%d) has an invalid event string: %s",
           kFunction, row.eventId, row.dsid, row.eventString);
    ++problems;
  }
  if (row.id == row.eventId) return problems;
  if (!fix) {
    ErrorA(105,
           "%s The event filename (%lu) with data selection (%d) does not match the event ID "
           "(%lu).",
           kFunction, row.id, row.dsid, row.eventId);
    return problems + 2;
  }
  warnOfRefiling(row);
  if (event != nullptr &&
      store.writeEvent(event.get(), static_cast<unsigned int>(row.dsid)) == kSuccess) {
    deleteRewrittenRow(events, row.id);
  }
  return problems + 1;
}

}  // namespace

OrbDBDSEventStorage::OrbDBDSEventStorage() : m_initialized(false) {
  char iniPath[4096];
  if (!locateDatabaseIni(iniPath)) return;
  if (!databaseHasTable(kEvents, __func__)) {
    InfoA(-1, "%s DSEvents table missing.  Adding from ini file: %s", __func__, iniPath);
    if (!createTable(kEvents, iniPath, __func__)) {
      ErrorA(kStoreFailure, "%s Failed to add the events table in OrbDB", __func__);
      return;
    }
  }
  // Without the ids that are there, numbering would start over and ids be given twice.
  if (OrbDBDSEventStorage::populateIdCache() != kSuccess) return;
  m_initialized = true;
  OrbDBDSEventStorage::checkConsistency(true);
}

OrbDBDSEventStorage::~OrbDBDSEventStorage() = default;

int OrbDBDSEventStorage::readEvent(unsigned long id, Event** event, unsigned int dsid) {
  if (!isUsable(m_initialized, __func__)) return kStoreFailure;
  const int result = readEventRow(kEvents, id, event);
  if (event != nullptr && *event == nullptr && result == kGeneralFailure) deleteEvent(id, dsid);
  return result;
}

int OrbDBDSEventStorage::writeEvent(Event* event, unsigned int dsid) {
  if (!isUsable(m_initialized, __func__)) return kStoreFailure;
  if (event == nullptr) {
    ErrorA(kStoreFailure, "%s New event is NULL!", __func__);
    return kGeneralFailure;
  }
  const unsigned long id = getNewID(dsid);
  if (id == 0) {
    ErrorA(kStoreFailure, "%s Failed to get a new event id", __func__);
    return kStoreFailure;
  }
  assignEventId(event, id);
  // Before the row: one that memory was too short to enter would be hidden until the next start.
  const bool hadCache = m_idCaches.contains(dsid);
  addIdToCache(id, dsid);
  const int result = addEventRow(kEvents, *event, id, dsid);
  if (result == kSuccess) return result;
  removeIdFromCache(id, dsid);
  if (!hadCache) m_idCaches.erase(dsid);
  return result;
}

void OrbDBDSEventStorage::deleteEvent(unsigned long id, unsigned int dsid) {
  if (!isUsable(m_initialized, __func__)) return;
  if (deleteEventRow(kEvents, id)) removeIdFromCache(id, dsid);
}

void OrbDBDSEventStorage::deleteDataSelection(unsigned int) {}

int OrbDBDSEventStorage::getFirstDsid(unsigned int& dsid) {
  return findFirstDsid(dsid);
}

int OrbDBDSEventStorage::populateIdCache() {
  DatabaseTable events(kEvents, __func__);
  if (!events) {
    ErrorA(kStoreFailure, "%s Failed to get dsevents table in OrbDB", __func__);
    return kStoreFailure;
  }
  unsigned long id = 0;
  unsigned int dsid = 0;
  std::set<unsigned int> found;
  for (bool row = events.firstRow(nullptr); row; row = events.nextRow(nullptr)) {
    if (!events.getDecimal("eventid", id) || !events.getDecimal("dataselection", dsid)) continue;
    if (!isValid(dsid)) continue;
    raiseMaxId(dsid, id);
    addIdToCache(id, dsid);
    found.insert(dsid);
  }
  // All stored maxima go to the data selection of the last row: new ids are drawn above the
  // highest of all, so one entry that holds the largest keeps every one of them in force.
  for (const unsigned int each : found) {
    const unsigned long stored = getMaxIdInDB(each);
    if (isValid(dsid)) raiseMaxId(dsid, stored);
  }
  return kSuccess;
}

void OrbDBDSEventStorage::raiseMaxId(unsigned int dsid, unsigned long id) {
  unsigned long& maxId = m_maxIds[dsid];
  maxId = std::max(maxId, id);
}

unsigned long OrbDBDSEventStorage::getNextEventID(unsigned int dsid) {
  unsigned long largest = 0;
  for (const auto& [each, maxId] : m_maxIds) largest = std::max(largest, maxId);
  // Behind the last id there is none: numbering must not start over.
  if (largest == std::numeric_limits<unsigned long>::max()) return 0;
  return m_maxIds[dsid] = largest + 1;
}

unsigned long OrbDBDSEventStorage::getNewID(unsigned int dsid) {
  const unsigned long id = getNextEventID(dsid);
  if (id == 0) return 0;
  if (setMaxIdInDB(id, dsid) != kSuccess) {
    WarningA(kStoreFailure, "%s Failed to set the max event id in the eventproperties table",
             __func__);
  }
  return id;
}

unsigned long OrbDBDSEventStorage::getMaxIdInDB(unsigned int dsid) {
  DatabaseTable properties(kProperties, __func__);
  if (!properties) {
    ErrorA(kStoreFailure, "%s Failed to get the eventproperties table in OrbDB", __func__);
    return 0;
  }
  long value = 0;
  if (!properties.firstRow(MaxIdFilter(dsid).text) ||
      properties.getNumber("propvalue", value) != 0) {
    return 0;
  }
  return static_cast<unsigned long>(value);
}

unsigned int OrbDBDSEventStorage::setMaxIdInDB(unsigned long id, unsigned int dsid) {
  DatabaseTable properties(kProperties, __func__);
  if (!properties) {
    ErrorA(kStoreFailure, "%s Failed to get the eventproperties table in OrbDB", __func__);
    return kStoreFailure;
  }
  if (!properties.firstRow(MaxIdFilter(dsid).text)) {
    char record[1024];
    snprintf(record, sizeof record, "propname=maxid_%d,propvalue=%lu", static_cast<int>(dsid), id);
    int key = 0;
    return properties.addRecord(record, &key) == 0 ? kSuccess : kStoreFailure;
  }
  char key[256] = "";
  if (properties.getText("id", key, sizeof key) != 0) return kStoreFailure;
  char assignment[256];
  snprintf(assignment, sizeof assignment, "propvalue=%lu", id);
  return properties.updateRecord(key, assignment) == 0 ? kSuccess : kStoreFailure;
}

int OrbDBDSEventStorage::checkConsistency(bool fix) {
  InfoA(kSuccess, "%s Starting consistency check", __func__);
  DatabaseTable events(kEvents, __func__);
  if (!events) {
    ErrorA(kStoreFailure, "%s Failed to get dsevents table in OrbDB", __func__);
    return 1;
  }
  int problems = 0;
  std::map<unsigned int, unsigned long> largestIds;
  EventRow row;
  Columns columns;
  for (bool found = events.firstRow(columns); found; found = events.nextRow(columns)) {
    if (!row.load(columns)) {
      ++problems;
      continue;
    }
    unsigned long& largestId = largestIds[static_cast<unsigned int>(row.dsid)];
    largestId = std::max(largestId, row.eventId);
    problems += checkRow(*this, events, row, fix);
  }
  problems += checkMaxIds(largestIds);
  InfoA(kSuccess, "%s Ending consistency check", __func__);
  return problems;
}

int OrbDBDSEventStorage::checkMaxIds(const std::map<unsigned int, unsigned long>& largestIds) {
  constexpr char kFunction[] = "checkConsistency";
  if (!DatabaseTable(kProperties, kFunction)) {
    ErrorA(kStoreFailure, "%s Failed to get the eventproperties table in OrbDB", kFunction);
    return 1;
  }
  int problems = 0;
  for (const auto& [dsid, largestId] : largestIds) {
    const unsigned long stored = getMaxIdInDB(dsid);
    if (largestId <= stored) continue;
    ErrorA(kGeneralFailure,
           "%s The max ID of data selection (%d) in the database (%lu) is smaller than the largest "
           "ID found (%lu).",
           kFunction, static_cast<int>(dsid), stored, largestId);
    ++problems;
  }
  return problems;
}

}  // namespace EventSystem
