#include "EventSystem/EventStorage.h"

#include <ctime>

#include "EventSystem/ResultCode.h"
#include "EventSystem/platform/HostLog.h"
#include "QueueLimits.h"

namespace EventSystem {
namespace {

// The date before which an event is too old. The product wraps in 32 bits: an age limit above
// 24855 days has always meant what that gives.
unsigned long oldestAllowedDate(int ageLimit) {
  const int seconds = static_cast<int>(static_cast<unsigned int>(ageLimit) * 86400U);
  return static_cast<unsigned long>(time(nullptr) - static_cast<time_t>(seconds));
}

}  // namespace

EventStorage::EventStorage()
    : m_ageLimit(kDefaultAgeLimit), m_countLimit(kDefaultCountLimit), m_maxId(0) {
  loadLimits();
}

EventStorage::~EventStorage() = default;

int EventStorage::getNextEvent(unsigned long afterId, Event** event) {
  if (event == nullptr) {
    ErrorA(kStoreFailure, "%s The event pointer is NULL.", __func__);
    return kGeneralFailure;
  }
  for (unsigned long id = getNextId(afterId); id != 0; id = getNextId(id)) {
    if (readEvent(id, event) == kSuccess) return kSuccess;
    ErrorA(kStoreFailure, "%s: removing event %lu from cache.", __func__, id);
    removeIdFromCache(id);
  }
  *event = nullptr;
  return kSuccess;
}

void EventStorage::assignEventId(Event* event, unsigned long id) {
  if (event != nullptr) event->m_id = id;
}

void EventStorage::addIdToCache(unsigned long id) {
  m_idCache.insert(m_idCache.end(), id);  // ids grow: nearly always the place is there
}

void EventStorage::removeIdFromCache(unsigned long id) {
  m_idCache.erase(id);
}

unsigned long EventStorage::getNextId(unsigned long afterId) {
  if (m_maxId <= afterId) return 0;
  const auto next = m_idCache.upper_bound(afterId);
  return next == m_idCache.end() ? 0 : *next;
}

void EventStorage::loadLimits() {
  readQueueLimits(m_ageLimit, m_countLimit);
}

int EventStorage::checkLimits() {
  if (TraceOn()) __Trace("%s Checking event storage limits", __func__);

  if (m_countLimit != 0) {
    const unsigned long count = m_idCache.size();
    if (TraceOn()) {
      __Trace("%s Current event count: %lu.  Storage limit: %d", __func__, count, m_countLimit);
    }
    // A negative limit becomes a huge one and is never reached.
    if (count >= static_cast<unsigned long>(static_cast<long>(m_countLimit))) {
      WarningA(50, "%s Current event count is greater than event limit!", __func__);
      return kLimitReached;
    }
  }
  if (m_ageLimit != 0) reportOldEvents();
  return kSuccess;
}

void EventStorage::reportOldEvents() {
  constexpr char kFunction[] = "checkLimits";
  if (TraceOn()) __Trace("%s Current event storage age limit: %d days", kFunction, m_ageLimit);
  const unsigned long oldestAllowed = oldestAllowedDate(m_ageLimit);
  unsigned long afterId = 0;
  do {
    Event* event = nullptr;
    getNextEvent(afterId, &event);
    if (event == nullptr || oldestAllowed <= event->getDate()) return;
    const unsigned long id = event->getId();
    WarningA(50, "%s Event ID %lu is older than event age limit", kFunction, id);
    // A damaged event may carry an id that would lead the walk back; the cache never does.
    afterId = id > afterId ? id : getNextId(afterId);
  } while (afterId != 0);
}

int EventStorage::checkLimits(WalkedEvents*& walked) {
  WalkedEvents handedOut;
  struct Noting {
    Noting(WalkedEvents*& target, WalkedEvents* mine) : m_target(target), m_outer(target) {
      m_target = mine;
    }
    ~Noting() { m_target = m_outer; }
    WalkedEvents*& m_target;
    WalkedEvents* const m_outer;
  };
  const Noting noting(walked, &handedOut);
  return checkLimits();
}

void EventStorage::noteWalked(WalkedEvents* walked, Event* event) {
  if (walked != nullptr && event != nullptr) walked->push_back(std::unique_ptr<Event>(event));
}

}  // namespace EventSystem
