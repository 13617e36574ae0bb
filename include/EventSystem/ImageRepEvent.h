// Type 2: an image was replicated to a storage unit (LSU); the payload is the image's file.

#ifndef EVENTSYSTEM_IMAGEREPEVENT_H
#define EVENTSYSTEM_IMAGEREPEVENT_H

#include "EventSystem/DetachedEvent.h"

namespace EventSystem {

// Thread safety: as Event.
class EVENTSYSTEM_API ImageRepEvent : public DetachedEvent {
 public:
  // `path` and `size` as for DetachedEvent; `lsu` as for setLSU(), NULL meaning "TarnwellVolume".
  ImageRepEvent(char* path, unsigned int size, unsigned long id, const char* lsu);
  ~ImageRepEvent() override;

  // As Event::toString(). The LSU stands before the section's tag.
  int toString(char* buffer, unsigned long size) override;

  // Copies the storage unit's name, cut at 1023 bytes; NULL is stored as the empty text.
  void setLSU(const char* lsu);
  // Owned by the event.
  char* getLSU();

  // As CapacityEvent::fromString(). A path of more than 2044 bytes is refused; a text without an
  // LSU gives "TarnwellVolume".
  static int fromString(const char* text, Event** event);

 private:
  char m_lsu[1024];
};

}  // namespace EventSystem

#endif
