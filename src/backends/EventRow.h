// Rows of the two event tables, "events" and "dsevents": how an event becomes a row and a row an
// event again. Both database stores use this; their log lines are the same.
//
// Thread safety: none; used under EventManager's mutex.

#ifndef EVENTSYSTEM_SRC_BACKENDS_EVENTROW_H
#define EVENTSYSTEM_SRC_BACKENDS_EVENTROW_H

#include <memory>
#include <optional>

#include "DatabaseTable.h"
#include "EventSystem/Event.h"

namespace EventSystem {

constexpr unsigned long kEventStringBound = 2048;  // terminator included

// Whether the store may work; traces that it may not.
bool isUsable(bool initialized, const char* operation);

// Writes the event as a new row under `id`, with a dsid for table "dsevents". 0, or 4 after a log
// line.
int addEventRow(const char* table, Event& event, unsigned long id,
                std::optional<unsigned int> dsid);

// Reads the row of `id` into a new object. 0 on success, or with NULL when the row holds no event;
// 4 when the row cannot be read; 9 when its event string does not parse, and the caller then
// deletes the row; 67 when the table is missing.
int readEventRow(const char* table, unsigned long id, Event** event);

// Deletes the row of `id`; false when the table is missing.
bool deleteEventRow(const char* table, unsigned long id);

// One row of a consistency check.
struct EventRow {
  unsigned long id = 0;       // what the row is filed under
  unsigned long eventId = 0;  // what the row says of its event
  int type = 0;
  int dsid = 0;
  char eventString[kEventStringBound] = "";

  // Takes the row's values. Ids and text start afresh with each row; type and dsid keep the
  // previous row's value where the row lacks the column. False, with a log line, when an id
  // or the dsid is there but cannot be read: such a row is to be left alone.
  bool load(const Columns& columns);

  // The row's event, or NULL when its string does not parse.
  std::unique_ptr<Event> parse() const;
};

// A row whose event is filed under another id than its own is filed anew: the warning before, and
// the end of the old row once the new one stands.
void warnOfRefiling(const EventRow& row);
void deleteRewrittenRow(DatabaseTable& table, unsigned long id);

}  // namespace EventSystem

#endif
