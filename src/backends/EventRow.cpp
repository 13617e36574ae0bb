#include "EventRow.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string_view>

#include "EventSystem/ResultCode.h"
#include "EventSystem/platform/HostLog.h"
#include "EventSystem/platform/HostText.h"
#include "PlatformGuard.h"

namespace EventSystem {
namespace {

// An event as the comma-separated text that the database takes as a record.
class EventRecord {
 public:
  EventRecord(Event& event, unsigned long id, std::optional<unsigned int> dsid) {
    m_eventString[0] = '\0';
    event.toString(m_eventString, sizeof m_eventString);
    // An open quote until it is replaced: a record that lacks its text is refused, not stored.
    char escaped[kEventStringBound];
    escaped[0] = '"';
    escaped[1] = '\0';
    guarded(kFunction, "QMStringEscapeA", 1,
            [&] { return QMStringEscapeA(m_eventString, escaped, sizeof escaped); });
    const unsigned long date = event.getDate();
    const int type = event.getType();
    const int length =
        dsid ? snprintf(m_text, kDSRecordBound, "%lu,%lu,%d,%lu,%s,%d", id, id, type, date, escaped,
                        static_cast<int>(*dsid))
             : snprintf(m_text, kRecordBound, "%lu,%lu,%d,%lu,%s", id, id, type, date, escaped);
    if (static_cast<unsigned long>(length) >= (dsid ? kDSRecordBound : kRecordBound)) reopenText();
  }

  const char* text() const { return m_text; }
  const char* eventString() const { return m_eventString; }

  static constexpr char kFunction[] = "writeEvent";

 private:
  static constexpr unsigned long kRecordBound = 2048;
  static constexpr unsigned long kDSRecordBound = 1024;

  // A record that was cut must be refused by the database, so it ends inside its quoted text. One
  // cut between the halves of a doubled quote, or in the number behind the text, would read as a
  // whole record of another event.
  void reopenText() {
    const auto quotes = std::count(m_text, m_text + strlen(m_text), '"');
    if (quotes > 0 && quotes % 2 == 0) *strrchr(m_text, '"') = '\0';
  }

  char m_eventString[kEventStringBound];
  char m_text[kRecordBound];
};

}  // namespace

bool isUsable(bool initialized, const char* operation) {
  if (!initialized && TraceOn()) {
    __Trace("%s Event storage wasn't initialized properly.  Returning.", operation);
  }
  return initialized;
}

int addEventRow(const char* table, Event& event, unsigned long id,
                std::optional<unsigned int> dsid) {
  constexpr const char* kFunction = EventRecord::kFunction;
  DatabaseTable rows(table, kFunction);
  if (!rows) {
    ErrorA(kStoreFailure, "%s Failed to get the events table in OrbDB", kFunction);
    return kStoreFailure;
  }
  const EventRecord record(event, id, dsid);
  const int status = rows.addRecord(record.text(), nullptr);
  if (status < 1) return kSuccess;
  ErrorA(kStoreFailure,
         "%s Failed to record the new event to the events table in OrbDB. DB status:%d  Event "
         "String:%s",
         kFunction, status, record.eventString());
  return kStoreFailure;
}

int readEventRow(const char* table, unsigned long id, Event** event) {
  constexpr char kFunction[] = "readEvent";
  if (event == nullptr) {
    ErrorA(kStoreFailure, "%s The event pointer is NULL.", kFunction);
    return kGeneralFailure;
  }
  *event = nullptr;
  DatabaseTable rows(table, kFunction);
  if (!rows) {
    ErrorA(kStoreFailure, "%s Failed to get the events table in OrbDB", kFunction);
    return kTableUnavailable;
  }
  char eventString[kEventStringBound];
  eventString[0] = '\0';
  if (rows.readRecord(id) != 0 ||
      rows.getText("eventstring", eventString, sizeof eventString) != 0) {
    ErrorA(kStoreFailure, "%s: read event %lu failed.", kFunction, id);
    return kStoreFailure;
  }
  const int result = Event::fromString(eventString, event);
  if (*event != nullptr) return result;
  if (result == kGeneralFailure) {
    ErrorA(kStoreFailure,
           "%s The event record for id %lu retrieved from the database is unreadable: %s",
           kFunction, id, eventString);
  } else if (result == kSuccess) {
    WarningA(2, "%s No event exists in the database for the event id: %lu", kFunction, id);
  }
  return result;
}

bool deleteEventRow(const char* table, unsigned long id) {
  constexpr char kFunction[] = "deleteEvent";
  if (TraceOn()) __Trace("%s Deleting event id: %lu", kFunction, id);
  DatabaseTable rows(table, kFunction);
  if (!rows) {
    ErrorA(kStoreFailure, "%s Failed to get the events table in OrbDB", kFunction);
    return false;
  }
  if (rows.deleteRecord(id) != 0) {
    ErrorA(kStoreFailure, "%s Failed to delete the event from OrbDB", kFunction);
  }
  return true;
}

bool EventRow::load(const Columns& columns) {
  constexpr char kFunction[] = "checkConsistency";
  long rowId = 0;
  long rowEventId = 0;
  bool readable = true;
  eventString[0] = '\0';
  for (const OrbDB::CColumn* const column : columns) {
    const char* const text =
        guarded<const char*>(kFunction, "name", nullptr, [&] { return column->name(); });
    const std::string_view name = text == nullptr ? "" : text;
    if (text == nullptr) {
      readable = false;
    } else if (name == "id") {
      readable = getNumber(*column, rowId, kFunction) && readable;
    } else if (name == "eventid") {
      readable = getNumber(*column, rowEventId, kFunction) && readable;
    } else if (name == "type") {
      getNumber(*column, type, kFunction);
    } else if (name == "eventstring") {
      getText(*column, eventString, sizeof eventString, kFunction);
    } else if (name == "dataselection") {
      readable = getNumber(*column, dsid, kFunction) && readable;
    }
  }
  id = static_cast<unsigned long>(rowId);
  eventId = static_cast<unsigned long>(rowEventId);
  if (!readable) {
    ErrorA(kStoreFailure, "%s A row (id %lu, event id %lu) cannot be read; it is left alone",
           kFunction, id, eventId);
  }
  return readable;
}

std::unique_ptr<Event> EventRow::parse() const {
  Event* parsed = nullptr;
  const int result = Event::fromString(eventString, &parsed);
  std::unique_ptr<Event> event(parsed);
  if (result != kSuccess) event.reset();
  return event;
}

void warnOfRefiling(const EventRow& row) {
  WarningA(105, "%s The event filename (%lu) does not match the event ID (%lu).  Fixing...",
           "checkConsistency", row.id, row.eventId);
}

void deleteRewrittenRow(DatabaseTable& table, unsigned long id) {
  if (table.deleteRecord(id) != 0) {
    ErrorA(kStoreFailure, "%s Failed to delete the event from OrbDB", "checkConsistency");
  }
}

}  // namespace EventSystem
