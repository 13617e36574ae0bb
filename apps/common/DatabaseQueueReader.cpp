#include "apps/common/DatabaseQueueReader.h"

#include <algorithm>
#include <array>
#include <memory>
#include <vector>

#include "EventSystem/platform/OrbDB.h"
#include "apps/common/QueueNames.h"

namespace EventApps {
namespace {

using OrbDB::COrbDatabase;
using OrbDB::CTable;

constexpr unsigned int kTextBytes = 16 * 1024;  // more than any row that the queue writes
constexpr const char* kEvents = "events";
constexpr const char* kDataSelectionEvents = "dsevents";
constexpr const char* kProperties = "eventproperties";

// A handle of our own, or nothing when the table does not exist.
std::optional<CTable> openTable(const char* name) {
  CTable* const table = COrbDatabase::Instance().GetTable(name);
  if (table == nullptr) return std::nullopt;
  return std::optional<CTable>(std::in_place, *table);
}

unsigned long unsignedOf(CTable& row, const char* column) {
  long value = 0;
  return row.GetValBigInt(column, value) == 0 ? static_cast<unsigned long>(value) : 0;
}

int intOf(CTable& row, const char* column) {
  int value = 0;
  return row.GetValInt(column, value) == 0 ? value : 0;
}

std::string textOf(CTable& row, const char* column) {
  std::vector<char> buffer(kTextBytes);
  if (row.GetValStr(column, buffer.data(), kTextBytes) != 0) return "";
  return buffer.data();
}

// The current row. A row that damage has reached is shown as it is, with what is wrong with it.
EventView viewOfRow(CTable& row, bool ofDataSelections) {
  EventView view;
  view.id = unsignedOf(row, "id");
  view.type = intOf(row, "type");
  view.date = unsignedOf(row, "date");
  if (ofDataSelections) view.dsid = static_cast<unsigned int>(intOf(row, "dataselection"));
  view.eventString = textOf(row, "eventstring");
  const unsigned long eventId = unsignedOf(row, "eventid");
  if (const auto event = parseEvent(view.eventString)) {
    view.fields = viewOf(*event, view.dsid).fields;
  } else {
    view.problem = "unreadable event string";
  }
  if (eventId != view.id) view.problem = "misfiled: its event id is " + std::to_string(eventId);
  return view;
}

// A walk over the rows of a table as they are when it is made. With columns, though none is looked
// at: the other walk may end with a row that is only for the library.
class Rows {
 public:
  Rows(const char* name, const char* filter) : m_filter(filter), m_table(openTable(name)) {
    m_hasRow = m_table && m_table->ListRecordsStart(m_columns, m_filter) == 0;
  }

  void walk(const std::function<bool(CTable&)>& visit) {
    while (m_hasRow && visit(*m_table)) {
      m_hasRow = m_table->ListRecordsNext(m_columns, m_filter) == 0;
    }
  }

 private:
  const char* const m_filter;  // outlives it
  std::optional<CTable> m_table;
  std::vector<OrbDB::CColumn*> m_columns;
  bool m_hasRow;
};

void walk(const char* name, const char* filter, const std::function<bool(CTable&)>& visit) {
  Rows(name, filter).walk(visit);
}

std::string dataSelectionFilter(unsigned int dsid) {
  return "dataselection=" + std::to_string(static_cast<int>(dsid));
}

void walkQueue(unsigned int dsid, const std::function<bool(CTable&)>& visit) {
  if (isGlobalQueue(dsid)) return walk(kEvents, nullptr, visit);
  walk(kDataSelectionEvents, dataSelectionFilter(dsid).c_str(), visit);
}

}  // namespace

void DatabaseQueueReader::forEach(unsigned int dsid, unsigned long afterId,
                                  const Visitor& visit) const {
  const bool ofDataSelections = !isGlobalQueue(dsid);
  walkQueue(dsid, [&](CTable& row) {
    if (unsignedOf(row, "id") <= afterId && afterId > 0) return true;
    return visit(viewOfRow(row, ofDataSelections));
  });
}

void DatabaseQueueReader::forEachOfDataSelections(const Visitor& visit) const {
  walk(kDataSelectionEvents, nullptr, [&](CTable& row) { return visit(viewOfRow(row, true)); });
}

QueueReader::Walk DatabaseQueueReader::beginAll() const {
  const auto events = std::make_shared<Rows>(kEvents, nullptr);
  const auto ofSelections = std::make_shared<Rows>(kDataSelectionEvents, nullptr);
  return [events, ofSelections](const Visitor& visit) {
    events->walk([&](CTable& row) { return visit(viewOfRow(row, false)); });
    ofSelections->walk([&](CTable& row) { return visit(viewOfRow(row, true)); });
  };
}

std::optional<EventView> DatabaseQueueReader::find(unsigned long id, unsigned int dsid) const {
  const bool ofDataSelections = !isGlobalQueue(dsid);
  auto table = openTable(ofDataSelections ? kDataSelectionEvents : kEvents);
  if (!table || table->readRecord(std::to_string(id).c_str()) != 0) return std::nullopt;
  EventView view = viewOfRow(*table, ofDataSelections);
  if (ofDataSelections && view.dsid != dsid) return std::nullopt;
  return view;
}

std::optional<int> DatabaseQueueReader::typeOf(unsigned long id, unsigned int dsid) const {
  const bool ofDataSelections = !isGlobalQueue(dsid);
  auto table = openTable(ofDataSelections ? kDataSelectionEvents : kEvents);
  if (!table || table->readRecord(std::to_string(id).c_str()) != 0) return std::nullopt;
  const bool isOfAnother =
      ofDataSelections && static_cast<unsigned int>(intOf(*table, "dataselection")) != dsid;
  return isOfAnother ? std::nullopt : std::optional(intOf(*table, "type"));
}

unsigned long DatabaseQueueReader::highestRowId(unsigned int dsid) const {
  unsigned long highest = 0;
  forEachId(dsid, [&](unsigned int, unsigned long id) {
    highest = std::max(highest, id);
    return true;
  });
  return highest;
}

void DatabaseQueueReader::forEachId(unsigned int dsid, const IdVisitor& visit) const {
  walkQueue(dsid, [&](CTable& row) { return visit(dsid, unsignedOf(row, "id")); });
}

void DatabaseQueueReader::forEachIdOfDataSelections(const IdVisitor& visit) const {
  walk(kDataSelectionEvents, nullptr, [&](CTable& row) {
    return visit(static_cast<unsigned int>(intOf(row, "dataselection")), unsignedOf(row, "id"));
  });
}

unsigned long DatabaseQueueReader::highestId(unsigned int dsid) const {
  return std::max(notedHighestId(dsid), highestRowId(dsid));
}

unsigned long DatabaseQueueReader::notedHighestId(unsigned int dsid) const {
  const std::string name =
      isGlobalQueue(dsid) ? "maxid" : "maxid_" + std::to_string(static_cast<int>(dsid));
  unsigned long id = 0;
  walk(kProperties, ("propname=" + name).c_str(), [&](CTable& row) {
    id = unsignedOf(row, "propvalue");
    return false;
  });
  return id;
}

unsigned long DatabaseQueueReader::notedIdOfDataSelections() const {
  unsigned long highest = 0;
  walk(kProperties, nullptr, [&](CTable& row) {
    if (textOf(row, "propname").starts_with("maxid_")) {
      highest = std::max(highest, unsignedOf(row, "propvalue"));
    }
    return true;
  });
  return highest;
}

unsigned long DatabaseQueueReader::nextId(unsigned int dsid) const {
  if (isGlobalQueue(dsid)) return highestId(dsid) + 1;
  unsigned long highest = notedIdOfDataSelections();
  forEachIdOfDataSelections([&](unsigned int, unsigned long id) {
    highest = std::max(highest, id);
    return true;
  });
  return highest + 1;
}

}  // namespace EventApps
