#include "apps/eventd/api/EventStream.h"

#include <string>
#include <utility>

namespace EventApps::Api {
namespace {

constexpr const char* kComment = ": \n\n";

// The queue may not have taken notice yet that the stream wanted no more when the stream wants more
// again; so it is told more than once.
constexpr int kResumes = 3;

std::string frameOf(const Published& event) {
  std::string frame = "id: " + std::to_string(event.id());
  return frame.append("\nevent: event\ndata: ").append(event.json()).append("\n\n");
}

}  // namespace

bool EventStream::deliver(EventSpan events) {
  const std::lock_guard lock(m_mutex);
  if (m_closed) return false;
  m_waiting.insert(m_waiting.end(), events.begin(), events.end());
  m_resumes = 0;
  return sendWaiting();
}

void EventStream::open(Subscription subscription) {
  m_call->startStream({200, "text/event-stream", "", {}});
  const std::lock_guard lock(m_mutex);
  if (m_closed) return;  // and so is the subscription
  m_subscription.emplace(std::move(subscription));
  m_open = true;
  m_call->exchange().send(kComment);
  if (sendWaiting()) m_resumes = kResumes;
  if (m_ended) m_call->exchange().endStream();
}

// Whether nothing is left.
bool EventStream::sendWaiting() {
  if (!m_open) return false;
  Http::Exchange& exchange = m_call->exchange();
  while (!m_waiting.empty() && exchange.unsent() < m_mostUnsent) {
    if (!exchange.send(frameOf(*m_waiting.front()))) {
      m_waiting.clear();
      return false;
    }
    m_waiting.pop_front();
    m_lastSent = Clock::now();
  }
  return m_waiting.empty();
}

void EventStream::tick(Clock::time_point now, std::chrono::milliseconds heartbeat) {
  const std::lock_guard lock(m_mutex);
  if (m_closed || !m_open) return;
  if (!m_waiting.empty() && sendWaiting()) m_resumes = kResumes;
  if (m_resumes > 0) {
    --m_resumes;
    m_subscription->resume();
  }
  if (now - m_lastSent < heartbeat) return;
  m_lastSent = now;
  m_call->exchange().send(kComment);
}

// Before the stream is open the exchange has nothing to end.
void EventStream::end() {
  const std::lock_guard lock(m_mutex);
  m_ended = true;
  m_call->exchange().endStream();
}

void EventStream::close() {
  std::optional<Subscription> subscription;  // is let go of without the lock
  const std::lock_guard lock(m_mutex);
  m_closed = true;
  m_waiting.clear();
  subscription.swap(m_subscription);
}

}  // namespace EventApps::Api
