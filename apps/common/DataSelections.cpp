#include "apps/common/DataSelections.h"

#include "EventSystem/platform/HostText.h"
#include "EventSystem/platform/OrbDB.h"
#include "apps/common/DatabaseQueueReader.h"
#include "apps/common/Display.h"
#include "apps/common/EventView.h"
#include "apps/common/Failure.h"
#include "apps/common/QueueNames.h"

namespace EventApps {
namespace {

using EventSystemHost::Host;
using Reason = SelectionRefused::Reason;

constexpr const char* kTable = "dataselection";

// The table, created where it is missing.
OrbDB::CTable openTable(const Host& host) {
  auto& database = OrbDB::COrbDatabase::Instance();
  const auto ini = host.configuration().databaseDirectory / "orbdb.ini";
  if (database.GetTable(kTable) == nullptr && database.CheckAddTable(kTable, ini.c_str()) != 0) {
    throw Failure("the table dataselection could not be created from " + ini.string());
  }
  OrbDB::CTable* const table = database.GetTable(kTable);
  if (table == nullptr) throw Failure("the table dataselection cannot be opened");
  return *table;
}

std::string quoted(const std::string& text) {
  std::vector<char> field(2 * text.size() + 3);
  QMStringEscapeA(text.c_str(), field.data(), field.size());
  return field.data();
}

void makeDurable(Host& host) {
  if (host.waitDurable() == 0) return;
  throw Failure("the change may not survive power loss; the log says why: " +
                host.configuration().logFile.string());
}

[[noreturn]] void stillHolds(unsigned int dsid, unsigned long count, const std::string& advice) {
  throw SelectionRefused(Reason::kHoldsEvents, "data selection " + std::to_string(dsid) +
                                                   " still holds " + displayCount(count) +
                                                   (count == 1 ? " event" : " events") + advice);
}

// Nobody would find the events of one that does not exist.
void requireEmpty(const Host& host, unsigned int dsid) {
  if (const unsigned long count = countEvents(*readerOf(host), dsid); count > 0) {
    stillHolds(dsid, count,
               count == 1 ? "; consume or delete it first" : "; consume or delete them first");
  }
  if (host.cluster() == nullptr) return;
  if (const unsigned long count = countEvents(DatabaseQueueReader(), dsid); count > 0) {
    stillHolds(
        dsid, count,
        " in the database, from before cluster mode; consume them with cluster_mode = 0 in " +
            host.configuration().hostFile.string());
  }
}

DataSelection selectionOf(OrbDB::CTable& row) {
  int id = 0;
  DataSelection selection;
  std::vector<char> name(kLongestSelectionName + 1);
  if (row.GetValInt("id", id) == 0) selection.id = static_cast<unsigned int>(id);
  if (row.GetValInt("dstypeid", selection.type) != 0) selection.type = 0;
  if (row.GetValStr("name", name.data(), static_cast<unsigned int>(name.size())) == 0) {
    selection.name = name.data();
  }
  return selection;
}

}  // namespace

std::vector<DataSelection> dataSelections() {
  OrbDB::CTable* const shared = OrbDB::COrbDatabase::Instance().GetTable(kTable);
  if (shared == nullptr) return {};
  std::vector<DataSelection> found;
  OrbDB::CTable table(*shared);
  for (int end = table.ListRecordsStart(nullptr); end == 0; end = table.ListRecordsNext(nullptr)) {
    found.push_back(selectionOf(table));
  }
  return found;
}

void addDataSelection(Host& host, const DataSelection& selection) {
  const std::string id = std::to_string(selection.id);
  if (isGlobalQueue(selection.id)) {
    throw SelectionRefused(Reason::kExists,
                           "data selection " + id + " is the global queue, which is always there");
  }
  OrbDB::CTable table = openTable(host);
  if (table.readRecord(id.c_str()) == 0) {
    throw SelectionRefused(Reason::kExists, "data selection " + id + " exists already");
  }
  const std::string record =
      id + "," + std::to_string(selection.type) + "," + quoted(selection.name);
  const int status = table.addRecord(record.c_str(), nullptr, 0);
  if (status >= 1) {
    const std::string lack = host.lackOfSpace();
    throw Failure("data selection " + id + " could not be added (database status " +
                  std::to_string(status) + ")" + (lack.empty() ? "" : "; " + lack));
  }
  makeDurable(host);
}

void removeDataSelection(Host& host, unsigned int dsid) {
  const std::string id = std::to_string(dsid);
  OrbDB::CTable table = openTable(host);
  if (table.readRecord(id.c_str()) != 0) {
    throw SelectionRefused(Reason::kUnknown, "data selection " + id + " does not exist");
  }
  requireEmpty(host, dsid);
  if (table.deleteRecord(id.c_str()) != 0) {
    throw Failure("data selection " + id + " could not be removed");
  }
  makeDurable(host);
}

unsigned long countEvents(const QueueReader& reader, unsigned int dsid) {
  unsigned long count = 0;
  reader.forEach(dsid, 0, [&](const EventView&) { return ++count > 0; });
  return count;
}

}  // namespace EventApps
