// One client that is sent events as they arrive (Server-Sent Events). It is sent as much as it
// takes: what it has not taken yet waits here, and beyond that at the queue.
//
// Thread safety: any thread.

#ifndef EVENTSYSTEM_APPS_EVENTD_API_EVENTSTREAM_H
#define EVENTSYSTEM_APPS_EVENTD_API_EVENTSTREAM_H

#include <chrono>
#include <cstddef>
#include <deque>
#include <mutex>
#include <optional>

#include "apps/eventd/api/Call.h"
#include "apps/eventd/queue/QueueService.h"

namespace EventApps::Api {

class EventStream {
 public:
  using Clock = std::chrono::steady_clock;

  // `mostUnsent`: bytes that are handed to the connection before it has sent them.
  EventStream(CallPtr call, std::size_t mostUnsent)
      : m_call(std::move(call)), m_mostUnsent(mostUnsent) {}

  EventStream(const EventStream&) = delete;
  EventStream& operator=(const EventStream&) = delete;

  // Takes events; false: no more until the subscription is resumed.
  bool deliver(EventSpan events);

  // Sends the head and what was delivered before; from now on the subscription belongs to it.
  void open(Subscription subscription);

  // Sends what has been waiting, asks for more when all is sent, and says that the line is alive
  // when nothing was sent for `heartbeat`.
  void tick(Clock::time_point now, std::chrono::milliseconds heartbeat);

  // The queue has no more to say.
  void end();

  // The client has gone, or the stream has ended: lets go of everything.
  void close();

 private:
  bool sendWaiting();

  const CallPtr m_call;
  const std::size_t m_mostUnsent;
  std::mutex m_mutex;
  std::deque<EventPtr> m_waiting;
  std::optional<Subscription> m_subscription;
  Clock::time_point m_lastSent = Clock::now();
  int m_resumes = 0;  // still to be made
  bool m_open = false;
  bool m_ended = false;
  bool m_closed = false;
};

}  // namespace EventApps::Api

#endif
