#include "host/CopiedRows.h"

#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <optional>

#include "EventSystem/platform/HostLog.h"
#include "EventSystem/platform/OrbDB.h"
#include "host/cluster/ClusterService.h"

namespace EventSystemHost {

namespace {

constexpr unsigned int kGlobalQueue = 0;

// The lowest id under which the row may be handed in again: a copy is known by the id in its text,
// which in a row that somebody has changed differs from the ids of the row. Nothing when the row
// cannot be read.
std::optional<unsigned long> lowestIdOf(OrbDB::CTable& row) {
  long id = 0;
  long eventId = 0;
  std::array<char, 2048> text{};
  if (row.GetValBigInt("id", id) != 0 || row.GetValBigInt("eventid", eventId) != 0 ||
      row.GetValStr("eventstring", text.data(), text.size()) != 0) {
    return std::nullopt;
  }
  unsigned long lowest = static_cast<unsigned long>(std::min(id, eventId));
  unsigned long written = 0;
  if (std::sscanf(text.data(), "EVENT{version:%*u;type:%*d;id:%lu", &written) == 1) {
    lowest = std::min(lowest, written);
  }
  return lowest;
}

// Every row of the global queue has at least this id, and so has every row to come. Nothing when
// that cannot be told.
std::optional<unsigned long> lowestId() {
  OrbDB::COrbDatabase& database = OrbDB::COrbDatabase::Instance();
  const OrbDB::CTable* const properties = database.GetTable("eventproperties");
  const OrbDB::CTable* const events = database.GetTable("events");
  if (properties == nullptr || events == nullptr) return std::nullopt;
  long highest = 0;
  if (OrbDB::CTable(*properties).GetValBigInt("1", "propvalue", highest) != 0) return std::nullopt;
  unsigned long lowest = static_cast<unsigned long>(highest) + 1;
  OrbDB::CTable row(*events);
  int status = row.ListRecordsStart(nullptr);
  for (; status == SQLITE_OK; status = row.ListRecordsNext(nullptr)) {
    const auto id = lowestIdOf(row);
    if (!id) return std::nullopt;
    lowest = std::min(lowest, *id);
  }
  // A walk that failed has not seen every row.
  if (status != SQLITE_NOTFOUND) return std::nullopt;
  return lowest;
}

}  // namespace

void forgetCopiesOfGoneRows(const HostConfiguration& configuration) {
  const auto lowest = lowestId();
  if (!lowest) return;
  if (forgetCopies(configuration.clusterQueue, configuration.clusterMember, *lowest,
                   kGlobalQueue) != 0) {
    WarningA(0, "%s The markers of copied events below id %lu stay until the next start", __func__,
             *lowest);
  }
}

}  // namespace EventSystemHost
