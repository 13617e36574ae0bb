#include "apps/eventd/queue/Audience.h"

#include <algorithm>
#include <utility>

namespace EventApps {
namespace {

bool concerns(const WaitingReader& reader, const Published& event) {
  const auto& types = reader.request.types;
  return event.id() > reader.seenTo && (types.empty() || types.contains(event.type()));
}

// What new events tell a reader, which has seen them then.
ReadResult seenBy(WaitingReader& reader, const EventList& events) {
  ReadResult result;
  for (const EventPtr& event : events) {
    if (result.events.size() == reader.request.limit) break;
    if (concerns(reader, *event)) result.events.push_back(event);
    reader.seenTo = std::max(reader.seenTo, event->id());
  }
  result.last = lastOf(reader.request, result.events, reader.seenTo);
  return result;
}

}  // namespace

void WaitingReader::answer(ReadResult result) {
  if (!cancelled.exchange(true) || !waits()) done(std::move(result));
  release();
}

void WaitingReader::release() {
  if (timer != nullptr) timer->cancel(end);
  place.reset();
  operation.reset();
}

Audience::Queue& Audience::queue(unsigned int number) {
  return m_queues.try_emplace(number, m_limits).first->second;
}

void Audience::show(const Arrivals& arrivals) {
  Queue& target = queue(arrivals.queue);
  target.ring.beginAfter(arrivals.from);
  for (const EventPtr& event : arrivals.events) target.ring.add(event);
  wakeReaders(target, arrivals.events);
  const auto subscribers = target.subscribers;  // a callback may cancel
  for (const SubscriberPtr& subscriber : subscribers) pump(target, subscriber);
  if (!m_keeps) target.ring.clear();
  boundKeptEvents();
}

// What all queues keep is bounded at the cost of the one that keeps most.
void Audience::boundKeptEvents() {
  std::size_t bytes = 0;
  for (const auto& [number, each] : m_queues) bytes += each.ring.bytes();
  while (bytes > m_limits.keptBytesOfAll) {
    const auto most =
        std::max_element(m_queues.begin(), m_queues.end(), [](const auto& one, const auto& other) {
          return one.second.ring.bytes() < other.second.ring.bytes();
        });
    EventRing& ring = most->second.ring;
    bytes -= ring.bytes();
    ring.dropFirst();
    bytes += ring.bytes();
  }
}

void Audience::wakeReaders(Queue& queue, const EventList& events) {
  std::vector<std::pair<WaitingReaderPtr, ReadResult>> woken;
  for (auto at = queue.readers.begin(); at != queue.readers.end();) {
    const WaitingReaderPtr& reader = at->second;
    ReadResult result = seenBy(*reader, events);
    if (result.events.empty()) {
      ++at;
      continue;
    }
    woken.emplace_back(reader, std::move(result));
    at = queue.readers.erase(at);
  }
  for (auto& [reader, result] : woken) {
    reader->number = 0;
    reader->answer(std::move(result));
  }
}

void Audience::removed(unsigned int number, unsigned long id) {
  const auto found = m_queues.find(number);
  if (found != m_queues.end()) found->second.ring.remove(id);
}

void Audience::trustKeptEvents(bool trusted) {
  if (std::exchange(m_trusted, trusted) == trusted || trusted) return;
  for (auto& [number, each] : m_queues) each.ring.stop();
}

void Audience::forgetKeptEvents() {
  for (auto& [number, each] : m_queues) each.ring.clear();
}

std::optional<ReadResult> Audience::readKept(const ReadRequest& request) const {
  const auto found = m_queues.find(queueOf(request.dsid));
  if (found == m_queues.end() || !found->second.ring.covers(request.after)) return std::nullopt;
  auto kept = found->second.ring.after(request.after, request.types, request.limit);
  if (kept.events.empty()) return std::nullopt;  // the library looks for audit records, too
  ReadResult result;
  result.last = lastOf(request, kept.events, kept.seenTo);
  result.events = std::move(kept.events);
  return result;
}

void Audience::wait(const WaitingReaderPtr& reader, unsigned long seenTo) {
  reader->seenTo = seenTo;
  if (m_closed) return giveUp(reader);
  if (reader->cancelled) return reader->release();
  reader->number = ++m_lastNumber;
  queue(queueOf(reader->request.dsid)).readers.emplace(reader->number, reader);
}

void Audience::giveUp(const WaitingReaderPtr& reader) {
  drop(reader);
  ReadResult nothing;
  nothing.last = lastOf(reader->request, {}, reader->seenTo);
  reader->answer(std::move(nothing));
}

void Audience::drop(const WaitingReaderPtr& reader) {
  if (reader->number == 0) return;
  queue(queueOf(reader->request.dsid)).readers.erase(std::exchange(reader->number, 0));
  if (reader->cancelled) reader->release();
}

void Audience::add(const SubscriberPtr& subscriber) {
  queue(subscriber->queue).subscribers.push_back(subscriber);
}

void Audience::goOn(const SubscriberPtr& subscriber, unsigned long seenTo, unsigned long shown) {
  Queue& target = queue(subscriber->queue);
  if (m_trusted) target.ring.beginAfter(shown);
  subscriber->fetching = false;
  subscriber->seenTo = std::max(subscriber->seenTo, seenTo);
  pump(target, subscriber);
}

void Audience::resume(const SubscriberPtr& subscriber) {
  subscriber->paused = false;
  pump(queue(subscriber->queue), subscriber);
}

void Audience::pump(Queue& queue, const SubscriberPtr& subscriber) {
  Subscriber& to = *subscriber;
  while (!to.cancelled && !to.paused && !to.fetching) {
    if (!queue.ring.covers(to.seenTo)) {
      to.fetching = true;
      return m_fetch(subscriber);
    }
    const auto found = queue.ring.after(to.seenTo, to.types, kEventsAtOnce);
    to.seenTo = std::max(to.seenTo, found.seenTo);
    if (found.events.empty()) return;
    deliver(to, found.events);
  }
}

void Audience::deliver(Subscriber& subscriber, EventSpan events) {
  if (subscriber.cancelled || events.empty()) return;
  if (!subscriber.deliver(events)) subscriber.paused = true;
}

void Audience::drop(const SubscriberPtr& subscriber) {
  std::erase(queue(subscriber->queue).subscribers, subscriber);
  subscriber->place.reset();
}

void Audience::end(const SubscriberPtr& subscriber, const std::string& why) {
  drop(subscriber);
  if (!subscriber->cancelled.exchange(true)) subscriber->ended(why);
}

void Audience::close(const std::string& why) {
  m_closed = true;
  for (auto& [number, each] : m_queues) {
    const auto readers = each.readers;
    for (const auto& [of, reader] : readers) giveUp(reader);
    const auto subscribers = each.subscribers;
    for (const SubscriberPtr& subscriber : subscribers) end(subscriber, why);
  }
}

std::vector<unsigned int> Audience::awaited() const {
  std::vector<unsigned int> found;
  for (const auto& [number, each] : m_queues) {
    if (!each.readers.empty() || !each.subscribers.empty()) found.push_back(number);
  }
  return found;
}

std::map<unsigned int, unsigned long> Audience::shown() const {
  std::map<unsigned int, unsigned long> highest;
  for (const auto& [number, each] : m_queues) {
    if (const auto last = each.ring.last()) highest[number] = *last;
  }
  return highest;
}

}  // namespace EventApps
