#include "EventSystem/HashEventStorage.h"

#include <algorithm>
#include <cstdlib>
#include <limits>

#include "EventSystem/ResultCode.h"
#include "EventSystem/platform/HostLog.h"

namespace EventSystem {
namespace {

constexpr int kNoCode = -1;

// A fresh copy of `event` by way of its event string; NULL with the parser's code when that does
// not parse.
int copyEvent(Event& event, Event** copy) {
  char text[2048];
  text[0] = '\0';
  event.toString(text, sizeof text);
  return Event::fromString(text, copy);
}

}  // namespace

HashEventStorage::HashEventStorage() : m_walked(nullptr) {
  HashEventStorage::populateIdCache();
}

HashEventStorage::~HashEventStorage() = default;

int HashEventStorage::readEvent(unsigned long id, Event** event) {
  if (event == nullptr) {
    ErrorA(kStoreFailure, "%s The event pointer is NULL.", __func__);
    return kGeneralFailure;
  }
  *event = nullptr;
  const auto stored = m_events.find(id);
  if (stored == m_events.end()) return kSuccess;
  copyEvent(*stored->second, event);
  noteWalked(m_walked, *event);
  return kSuccess;
}

int HashEventStorage::writeEvent(Event* event) {
  if (event == nullptr) {
    ErrorA(kStoreFailure, "%s New event is NULL!", __func__);
    return kGeneralFailure;
  }
  Event* parsed = nullptr;
  const int result = copyEvent(*event, &parsed);
  std::unique_ptr<Event> copy(parsed);
  if (result != kSuccess) return result;
  if (checkLimits(m_walked) != kSuccess) return kStorageLimits;

  if (m_maxId == std::numeric_limits<unsigned long>::max()) {
    ErrorA(kStoreFailure, "%s Failed to get a new event id", __func__);
    return kStoreFailure;
  }
  const unsigned long id = ++m_maxId;
  assignEventId(event, id);
  assignEventId(copy.get(), id);
  addIdToCache(id);
  const unsigned long key = copy->getId();
  // Behind all others is where the next id belongs, and where the place is found at once.
  m_events.insert_or_assign(m_events.end(), key, std::shared_ptr<Event>(std::move(copy)));
  return kSuccess;
}

void HashEventStorage::deleteEvent(unsigned long id) {
  m_events.erase(id);
  removeIdFromCache(id);
}

int HashEventStorage::checkConsistency(bool) {
  int problems = 0;
  if (m_events.size() != m_idCache.size()) {
    WarningA(kNoCode, "The number of events in the data store do not match the event cache.");
    problems = std::abs(static_cast<int>(m_events.size()) - static_cast<int>(m_idCache.size()));
  }
  for (unsigned long id = getNextId(0); id != 0; id = getNextId(id)) {
    Event* read = nullptr;
    const int result = readEvent(id, &read);
    const std::unique_ptr<Event> event(read);
    if (result != kSuccess) {
      ++problems;
      WarningA(kNoCode, "Failed to read event %lu.", id);
    }
    if (event == nullptr) {
      ++problems;
      WarningA(kNoCode, "Event %lu could not be constructed.", id);
    }
  }
  return problems;
}

int HashEventStorage::populateIdCache() {
  m_maxId = 0;
  return kSuccess;
}

unsigned long HashEventStorage::getMaxId() {
  return m_maxId;
}

void HashEventStorage::setMaxId(unsigned long id) {
  m_maxId = id;
}

}  // namespace EventSystem
