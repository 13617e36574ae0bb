// A store of the global queue that keeps everything in process memory. Nothing survives it.
//
// Events enter and leave through their event string: the store keeps a copy rebuilt from the
// caller's event, and readers get a further copy of that.
//
// Thread safety: none; the host serialises all calls.

#ifndef EVENTSYSTEM_HASHEVENTSTORAGE_H
#define EVENTSYSTEM_HASHEVENTSTORAGE_H

#include <map>
#include <memory>

#include "EventSystem/EventStorage.h"

namespace EventSystem {

class EVENTSYSTEM_API HashEventStorage : public EventStorage {
 public:
  HashEventStorage();
  ~HashEventStorage() override;

  // Returns 0; `*event` is NULL for an id that the store does not hold.
  int readEvent(unsigned long id, Event** event) override;

  // 0; 50 when the queue is full; or the code of Event::fromString() when the event's own string
  // does not parse (an event string longer than 2047 bytes, for one). A refused event takes no id.
  //
  // The string is tried as the caller's event has it. Where it is so long that the digits of the
  // new id do not fit in, too, the event is held and cannot be read: a walk ends before it.
  int writeEvent(Event* event) override;
  void deleteEvent(unsigned long id) override;

  // Counts ids without an event and a difference between the cache and the store; `fix` is
  // ignored.
  int checkConsistency(bool fix) override;

  // Starts numbering anew at 1 and returns 0. Events that the store holds stay, and a later write
  // replaces the one whose id it is given.
  int populateIdCache() override;

  unsigned long getMaxId();
  // The next write gets `id` + 1, whatever the store holds.
  void setMaxId(unsigned long id);

 private:
  std::map<unsigned long, std::shared_ptr<Event> > m_events;
  WalkedEvents* m_walked;  // not owned; not NULL while the age walk runs
};

}  // namespace EventSystem

#endif
