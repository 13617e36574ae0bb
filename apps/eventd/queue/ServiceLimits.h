// How much a queue service keeps and how often it looks; every number bounds something.
//
// Thread safety: plain values.

#ifndef EVENTSYSTEM_APPS_EVENTD_QUEUE_SERVICELIMITS_H
#define EVENTSYSTEM_APPS_EVENTD_QUEUE_SERVICELIMITS_H

#include <chrono>
#include <cstddef>

namespace EventApps {

struct ServiceLimits {
  // Readers that wait for an event, subscribers among them, at one time; more are refused.
  std::size_t waiting = 4096;

  // The newest events of each queue that are kept for readers, in number and in bytes, and of all
  // queues together.
  std::size_t keptEvents = 4096;
  std::size_t keptBytes = 4u << 20;
  std::size_t keptBytesOfAll = 64u << 20;

  // Readings of the library at one time, of up to `shortRead` events and of more. Others wait for
  // their turn: what they read takes memory, and answers to writers wait behind theirs.
  std::size_t shortReads = 256;
  std::size_t longReads = 4;
  unsigned int shortRead = 100;

  // Idempotency keys: how long one is known at least, unless there are more rows than this; one row
  // for each event of a request. Where more are needed the oldest go first.
  std::chrono::seconds keyLife = std::chrono::hours(24);
  std::size_t keyRows = 100000;

  // Events that nobody here has written are looked for this often while somebody waits for them.
  std::chrono::milliseconds lookForAuditRows{1000};
  std::chrono::milliseconds lookForOtherMembers{250};

  // Whether the queues can be used is looked at when somebody asks: anew when the last look is
  // older than this, the second while something fails. A look that takes longer than the third
  // tells that they cannot be used.
  std::chrono::milliseconds lookAge{2000};
  std::chrono::milliseconds lookAgain{250};
  std::chrono::milliseconds lookPatience{2000};

  // All rows are counted anew at most this often, and never for more than this part of the time.
  std::chrono::milliseconds figuresAge{0};
  double figuresShare = 0.05;
  // Where they could not be read, the next one who asks after this has them tried again: what was
  // in the way, as a cluster without a leader, may take long to fail and be gone soon.
  std::chrono::milliseconds figuresRetry{5000};
};

}  // namespace EventApps

#endif
