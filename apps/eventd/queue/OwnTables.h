// The tables that eventd keeps for itself beside the queues, in the database.
//
// Thread safety: none; used by the thread that makes the service, and by the queue thread.

#ifndef EVENTSYSTEM_APPS_EVENTD_QUEUE_OWNTABLES_H
#define EVENTSYSTEM_APPS_EVENTD_QUEUE_OWNTABLES_H

#include <optional>

#include "EventSystem/platform/OrbDB.h"
#include "host/Host.h"

namespace EventApps {

// A handle to the table of the idempotency keys, which is created where it is missing. Throws
// Failure.
OrbDB::CTable openKeyTable(const EventSystemHost::Host& host);

// A row that is written to find out whether the database can be written, and for nothing else.
class WriteProbe {
 public:
  // `host` outlives it.
  explicit WriteProbe(const EventSystemHost::Host& host) : m_host(host) {}

  // Writes the row anew. Throws Failure when that does not work.
  void write();

 private:
  const EventSystemHost::Host& m_host;
  std::optional<OrbDB::CTable> m_table;
  char m_letter = 'a';
};

}  // namespace EventApps

#endif
