// What a queue service is asked, and what it answers.
//
// Thread safety: plain values; the handles' operations may be called from any thread.

#ifndef EVENTSYSTEM_APPS_EVENTD_QUEUE_SERVICEREQUESTS_H
#define EVENTSYSTEM_APPS_EVENTD_QUEUE_SERVICEREQUESTS_H

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <exception>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "EventSystem/ResultCode.h"
#include "apps/common/DataSelections.h"
#include "apps/common/Failure.h"
#include "apps/common/QueueCheck.h"
#include "apps/common/QueueFigures.h"
#include "apps/eventd/queue/Published.h"

namespace EventApps {

// A request that its sender may repeat: the same key with the same body is the same request.
struct IdempotencyKey {
  std::string key;   // as the sender chose it
  std::string body;  // the request's whole body, or what stands for it
};

// Codes are the manager's results (see EventSystem/ResultCode.h), or this one; `problem` is empty
// for 0.
constexpr int kNoMajority = -1;  // of the cluster's members answers: the same may work soon

// Of what was thrown.
inline int codeOf(const std::exception& problem) {
  const bool isSoon = dynamic_cast<const NoMajority*>(&problem) != nullptr;
  return isSoon ? kNoMajority : static_cast<int>(EventSystem::kStoreFailure);
}

struct StoreResult {
  int code = 0;
  std::vector<unsigned long> ids;  // of those stored, in order; also when the rest failed
  std::string problem;
  bool replayed = false;     // nothing was stored: the key was known, and these are its ids
  bool keyMismatch = false;  // the key was used with another body; nothing was stored
  bool diskFull = false;     // the reason for 4
  bool unsettled = false;    // nobody knows which are stored, and `ids` is empty
};

struct ReadRequest {
  unsigned int dsid = 0;
  unsigned long after = 0;
  unsigned int limit = 100;
  std::set<int> types;  // empty: all
  std::chrono::milliseconds wait{0};
};

struct ReadResult {
  EventList events;        // in the order of their ids
  unsigned long last = 0;  // where to ask on: see lastOf()
  int code = 0;
  std::string problem;
};

// Up to where a reader need not look again: the last event that it was given, else what it asked
// after. One who asks for some types only has seen what was passed over, too.
inline unsigned long lastOf(const ReadRequest& request, EventSpan found, unsigned long seenTo) {
  if (!request.types.empty()) return std::max(request.after, seenTo);
  return found.empty() ? request.after : found.back()->id();
}

struct FindResult {
  EventPtr event;  // null when there is none, or code is not 0
  int code = 0;
  std::string problem;
};

struct RemoveResult {
  bool found = false;
  int code = 0;
  std::string problem;
};

struct RemoveUpToResult {
  unsigned long deleted = 0;  // or that would be
  unsigned long last = 0;     // the highest of their ids; 0 when there is none
  int code = 0;
  std::string problem;
};

struct CheckResult {
  CheckReport report;
  std::string problem;  // not empty: it could not be made
  int code = 0;
};

// Of adding or removing a data selection.
struct ChangeResult {
  std::string problem;                                             // empty: it is done
  std::optional<SelectionRefused::Reason> refused = std::nullopt;  // nothing: the store has failed
  int code = 0;
};

// Queues as they were at one moment; the oldest date and what is damaged are those of the last
// walk, which may have been a while ago.
struct FiguresSnapshot {
  Figures queues;
  std::vector<DataSelection> selections;  // all of them, also those without events
  std::string problem;                    // why they could not be read; the rest is empty then
  int code = 0;
  std::chrono::system_clock::time_point time = std::chrono::system_clock::now();
};
using FiguresPtr = std::shared_ptr<const FiguresSnapshot>;

// Whether queues can be read, and events be deleted; whether they take events; and if not why, in
// words for the operator.
struct Readiness {
  bool reads = false;
  bool writes = false;
  std::string why;

  bool ready() const { return reads && writes; }
};

struct LastCheck {
  std::chrono::system_clock::time_point time;
  std::size_t findings = 0;
  int remaining = 0;
};

// What has happened since the service was made.
struct ServiceCounters {
  std::map<int, std::uint64_t> written;  // by type; of requests, not of the audit import
  std::uint64_t deleted = 0;
  std::uint64_t auditImports = 0;                // audit events taken in, at the start too
  std::map<std::string, std::uint64_t> refused;  // events that were not stored: full, failed, ...
  std::uint64_t flushes = 0;
  std::uint64_t failedFlushes = 0;
  std::uint64_t waitingReaders = 0;  // now, subscribers among them
  std::uint64_t subscribers = 0;     // now
  std::uint64_t keyRows = 0;         // now
  std::optional<LastCheck> lastCheck;
};

// A read that may be waiting.
class Waiting {
 public:
  explicit Waiting(std::function<void()> cancel) : m_cancel(std::move(cancel)) {}

  // For a client that has gone: nothing more is read for it. `done` of one that waits is not called
  // any more, unless that has begun; one that does not wait is answered with what was found at
  // once, or that it was given up. Not needed otherwise; a handle may be thrown away.
  void cancel() const { m_cancel(); }

 private:
  std::function<void()> m_cancel;
};

// A subscriber, for as long as the handle lives.
class Subscription {
 public:
  Subscription(std::function<void()> resume, std::function<void()> cancel)
      : m_resume(std::move(resume)), m_cancel(std::move(cancel)) {}
  ~Subscription() { cancel(); }

  Subscription(Subscription&& other) noexcept
      : m_resume(std::exchange(other.m_resume, nullptr)),
        m_cancel(std::exchange(other.m_cancel, nullptr)) {}
  Subscription& operator=(Subscription&& other) noexcept {
    std::swap(m_resume, other.m_resume);
    std::swap(m_cancel, other.m_cancel);
    return *this;
  }

  // More may be delivered again, after `deliver` has returned false.
  void resume() const {
    if (m_resume) m_resume();
  }

  // Nothing is delivered any more, unless that has begun.
  void cancel() const {
    if (m_cancel) m_cancel();
  }

 private:
  std::function<void()> m_resume;
  std::function<void()> m_cancel;
};

}  // namespace EventApps

#endif
