// What the host knows of data selections for the library: which exist, and how far their ids have
// come.
//
// The library numbers the events of all data selections in one sequence, which it takes up at each
// start above the rows that it finds in "dsevents" and the highest ids noted for the data
// selections of these rows. Where events have been consumed, that is lower than what was given, and
// an id would be given again. So the walk that the library finds the rows with ends with one more:
// the highest id that is noted for any data selection, as a row of the global queue, whose events
// no data selection has. It is in no table: a crash leaves nothing of it, and nobody but the
// library is shown it.

#include "EventSystem/platform/HostConfig.h"
#include "host/database/Database.h"

namespace EventSystemHost {

namespace {

constexpr std::int64_t kGlobalQueue = 0;
constexpr const char* kEvents = "dsevents";
constexpr const char* kProperties = "eventproperties";
constexpr const char* kHighestId =
    "SELECT max(CAST(propvalue AS INTEGER)) FROM eventproperties WHERE propname GLOB 'maxid_*'";

void assign(const TableDefinition& table, const char* column, std::int64_t number, Row& row) {
  if (const auto index = table.find(column)) row[*index] = number;
}

}  // namespace

bool Database::hasDataSelection(unsigned int dsid) {
  if (dsid == kGlobalQueue) return true;
  bool found = false;
  call(Use::kRead, {"dataselection", "cannot be read"}, [&] {
    Table* table = m_catalogue->find("dataselection", connection());
    if (table == nullptr) return SQLITE_OK;
    // Tables have no unsigned numbers; the upper half of the ids stands there as negative ones.
    const Value key = static_cast<std::int64_t>(static_cast<std::int32_t>(dsid));
    Row row;
    const int status = queries(*table).select(table->definition->key, key, row);
    found = status == SQLITE_ROW;
    if (!found && status != SQLITE_DONE) throw SqliteError(status, connection().errorText());
    return SQLITE_OK;
  });
  return found;
}

bool Database::hasHighestIdRow(const TableDefinition& definition) {
  return definition.name == kEvents;
}

bool Database::readHighestIdRow(const TableDefinition& definition, Row& row) {
  std::int64_t highest = 0;
  const int status = call(Use::kRead, {kProperties, "the highest id given is not known"}, [&] {
    const bool given = m_catalogue->find(kProperties, connection()) != nullptr;
    if (given) highest = connection().number(kHighestId);
    m_highestIdUnknown = false;
    return SQLITE_OK;
  });
  if (status != SQLITE_OK) missHighestIdRow();
  if (highest <= 0) return false;
  row.assign(definition.columns.size(), Value());
  row[definition.key] = highest;
  assign(definition, "eventid", highest, row);
  assign(definition, "dataselection", kGlobalQueue, row);
  return true;
}

void Database::missHighestIdRow() {
  const Lock lock(m_mutex);
  m_highestIdUnknown = true;
}

}  // namespace EventSystemHost

int QMDSIDValidate(unsigned int dsid) {
  const auto database = EventSystemHost::currentDatabase();
  return database && database->hasDataSelection(dsid) ? 1 : 0;
}
