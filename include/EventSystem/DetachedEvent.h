// The base of events whose payload is a file outside the queue.

#ifndef EVENTSYSTEM_DETACHEDEVENT_H
#define EVENTSYSTEM_DETACHEDEVENT_H

#include "EventSystem/Event.h"

namespace EventSystem {

// Thread safety: as Event.
class EVENTSYSTEM_API DetachedEvent : public Event {
 public:
  // Copies `path`, cut at 2047 bytes; NULL or the empty text is stored as "Unknown". `size` is the
  // payload file's size in the producer's unit.
  DetachedEvent(eventType type, char* path, unsigned int size, unsigned long id);
  ~DetachedEvent() override;

  // Owned by the event; never empty.
  const char* getPayloadPath();
  unsigned int getPayloadSize();

  // A hook for the payload file's removal. Does nothing: the library never touches the file.
  void deletePayloadFile();

 private:
  char m_payloadPath[2048];
  unsigned int m_payloadSize;
};

}  // namespace EventSystem

#endif
