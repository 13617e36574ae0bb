// The queues of all data selections in the host's configuration database: a row of table
// "dsevents" for each event, and the highest id of each data selection in "eventproperties".
//
// Ids are drawn from one sequence for all data selections. Only rows of data selections that the
// host calls valid enter a queue. Without a database configuration directory, or when the table
// cannot be created or read, the store is unusable for its whole life: readEvent() and writeEvent()
// return 4, and for getNextEvent() every queue is empty.
//
// Thread safety: none; EventManager serialises all calls.

#ifndef EVENTSYSTEM_ORBDBDSEVENTSTORAGE_H
#define EVENTSYSTEM_ORBDBDSEVENTSTORAGE_H

#include <map>

#include "EventSystem/DSEventStorage.h"

namespace EventSystem {

class EVENTSYSTEM_API OrbDBDSEventStorage : public DSEventStorage {
 public:
  OrbDBDSEventStorage();
  ~OrbDBDSEventStorage() override;

  // As OrbDBEventStorage::readEvent(). The row is found by id alone.
  int readEvent(unsigned long id, Event** event, unsigned int dsid) override;

  // As OrbDBEventStorage::writeEvent(), without a limit; records are limited to 1023 bytes.
  int writeEvent(Event* event, unsigned int dsid) override;
  void deleteEvent(unsigned long id, unsigned int dsid) override;

  // Does nothing: the rows stay until they are deleted one by one.
  void deleteDataSelection(unsigned int dsid) override;

  // As OrbDBEventStorage::checkConsistency(), the highest ids for each data selection.
  int checkConsistency(bool fix) override;

  // The first data selection of type 9. 0; 67 when the database or its table is unavailable; 72
  // when there is none.
  int getFirstDsid(unsigned int& dsid) override;

  // 0; 4 when the table is missing.
  int populateIdCache() override;

  // Takes the id after the highest of all data selections for `dsid`, in memory only.
  virtual unsigned long getNextEventID(unsigned int dsid);

  // Takes the next id and stores it as the highest one of `dsid`. An id that could not be stored
  // is logged and good all the same.
  unsigned long getNewID(unsigned int dsid);

  // The stored highest id of `dsid`; 0 when there is none.
  unsigned long getMaxIdInDB(unsigned int dsid);

  // Stores `id` as the highest one of `dsid`, also when it is lower than the stored one. 0 or 4.
  unsigned int setMaxIdInDB(unsigned long id, unsigned int dsid);

 private:
  void raiseMaxId(unsigned int dsid, unsigned long id);
  int checkMaxIds(const std::map<unsigned int, unsigned long>& largestIds);

  bool m_initialized;
};

}  // namespace EventSystem

#endif
