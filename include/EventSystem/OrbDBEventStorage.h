// The global queue in the host's configuration database: a row of table "events" for each event,
// and the highest id ever handed out in table "eventproperties".
//
// Construction creates missing tables, reads the ids that are there, imports the audit database
// of off-line services and repairs the table. Without a database configuration directory, or when
// a table cannot be created or read, the store is unusable for its whole life: its operations
// return 4.
//
// Thread safety: none; EventManager serialises all calls.

#ifndef EVENTSYSTEM_ORBDBEVENTSTORAGE_H
#define EVENTSYSTEM_ORBDBEVENTSTORAGE_H

#include "EventSystem/EventStorage.h"

namespace EventSystem {

class EVENTSYSTEM_API OrbDBEventStorage : public EventStorage {
 public:
  OrbDBEventStorage();
  ~OrbDBEventStorage() override;

  // 0 and the caller's event; 0 and NULL when the row holds no event; 4 when the row cannot be
  // read or the store is unusable; 9 when its event string does not parse, and the row is then
  // deleted; 67 when the table is missing.
  int readEvent(unsigned long id, Event** event) override;

  // Imports audit rows first. 4 and NULL when the store is unusable.
  int getNextEvent(unsigned long afterId, Event** event) override;

  // 0; 50 when the queue is full (no id is taken); 9 for NULL (no id is taken); 4 when the store
  // is unusable or the database failed, and the id that the event was given is then not used
  // again. An event whose escaped string does not fit a record of 2047 bytes is refused with 4.
  int writeEvent(Event* event) override;
  void deleteEvent(unsigned long id) override;

  // Counts unreadable event strings, rows filed under another id than their event's (2 each; 1
  // with `fix`, which files the event under a new id) and a stored highest id that is too low.
  int checkConsistency(bool fix) override;

  // 0; 4 when a table is missing.
  int populateIdCache() override;

  // Takes the next id, in memory only.
  virtual unsigned long getNextEventID();

  // Takes the next id and stores it as the highest one; 0 when table "eventproperties" is missing.
  // An id that could not be stored is logged and good all the same.
  unsigned long getNewID();

  // Moves the rows of the audit database into the queue. `force` only announces the run in the
  // log. Returns 0 when all went in or nothing was there, otherwise the code of the last failure.
  // A run started while another one is under way returns 0 at once.
  unsigned int PopuAuditEventDB(bool force);

 private:
  bool createTables(const char* iniPath);
  int checkMaxId(unsigned long largestId);

  bool m_initialized;
  char m_auditDbPath[4096];
  bool m_importing;        // an audit import is under way
  WalkedEvents* m_walked;  // not owned; not NULL while the age walk runs
};

}  // namespace EventSystem

#endif
