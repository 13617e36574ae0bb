#include "apps/eventd/queue/Library.h"

#include <algorithm>
#include <string>
#include <utility>

#include "EventSystem/AuditEvent.h"
#include "EventSystem/platform/HostLog.h"
#include "EventSystem/platform/OrbDB.h"
#include "apps/common/DatabaseQueueReader.h"
#include "apps/common/EventView.h"
#include "apps/common/Failure.h"
#include "apps/common/StoredForm.h"

namespace EventApps {
namespace {

using EventSystem::Event;

constexpr const char* kHighestIdRow = "1";  // of the table eventproperties

bool isWanted(int type, const std::set<int>& types) {
  return types.empty() || types.contains(type);
}

}  // namespace

Library::Library(EventSystemHost::Host& host, Tally& tally)
    : m_tally(tally),
      m_reader(readerOf(host)),
      m_highestBefore(host.cluster() == nullptr ? DatabaseQueueReader().highestId(0) : 0),
      m_queues(host) {
  if (isClustered()) return;
  const unsigned long highest = DatabaseQueueReader().highestId(0);
  m_known[0] = {highest, highest};
  countImportsOfStart();
}

void Library::countImportsOfStart() {
  if (m_known[0].highest == m_highestBefore) return;
  walkDatabase(0, m_highestBefore, {EventSystem::kAuditEvent},
               [this](unsigned long, const EventPtr& event) {
                 if (event) m_tally.note([](ServiceCounters& all) { ++all.auditImports; });
                 return true;
               });
}

Library::Known& Library::known(unsigned int dsid) {
  const unsigned int queue = queueOf(dsid);
  const auto found = m_known.find(queue);
  if (found != m_known.end()) return found->second;
  if (isClustered()) {
    const unsigned long highest = m_reader->highestId(queue);
    return m_known[queue] = {highest, highest};
  }
  // One look at all of them; nobody else writes to them.
  std::map<unsigned int, unsigned long> highest;
  const DatabaseQueueReader reader;
  reader.forEachIdOfDataSelections([&](unsigned int each, unsigned long id) {
    highest[each] = std::max(highest[each], id);
    return true;
  });
  m_highestOfSelections = std::max(m_highestOfSelections, reader.notedIdOfDataSelections());
  requireNoDamage(m_queues.host());
  for (const auto& [each, id] : highest) {
    m_known.try_emplace(each, Known{id, id});
    m_highestOfSelections = std::max(m_highestOfSelections, id);
  }
  return m_known[queue];
}

std::string Library::whyFull() const {
  return "the queue is full: it holds as many events as " + m_queues.limitsFile() +
         " allows; consume or delete some";
}

int Library::store(Event& event, unsigned int dsid, unsigned long& id) {
  known(dsid);
  const int result = m_queues.store(event, dsid, id);
  wrote();
  if (result == 0) arrived(dsid, publishedOf(event, dsid, id));
  return result;
}

EventPtr Library::publishedOf(Event& event, unsigned int dsid, unsigned long id) const {
  const unsigned int queue = queueOf(dsid);
  if (event.getId() == id) return std::make_shared<Published>(viewOf(event, queue));
  // Only the cluster service knew it.
  const auto stored = parseEvent(withId(eventStringOf(event), id));
  EventView view = viewOf(stored ? *stored : event, queue);
  view.id = id;
  return std::make_shared<Published>(std::move(view));
}

unsigned long Library::expectedId(unsigned int dsid) {
  known(dsid);
  if (!isGlobalQueue(dsid)) return m_highestOfSelections + 1;
  long highest = 0;
  OrbDB::CTable* const properties = OrbDB::COrbDatabase::Instance().GetTable("eventproperties");
  if (properties == nullptr ||
      OrbDB::CTable(*properties).GetValBigInt(kHighestIdRow, "propvalue", highest) != 0) {
    highest = 0;
  }
  return std::max(static_cast<unsigned long>(highest), known(dsid).highest) + 1;
}

unsigned long Library::likelyId(unsigned int dsid) {
  const unsigned long highest = known(dsid).highest;
  return (isGlobalQueue(dsid) || isClustered() ? highest : m_highestOfSelections) + 1;
}

// Between the last event that was noted and this one there may be others.
void Library::arrived(unsigned int dsid, EventPtr event) {
  Known& entry = known(dsid);
  const unsigned long id = event->id();
  if (!isGlobalQueue(dsid)) m_highestOfSelections = std::max(m_highestOfSelections, id);
  if (id <= entry.highest) return;
  try {
    const bool mayHaveMissed = othersWriteTo(dsid) || isBehind(dsid);
    if (mayHaveMissed && id > entry.highest + 1) discoverBelow(dsid, id);
    note(dsid, std::move(event));
  } catch (const Failure& problem) {
    // It is stored; when the queue can be read again it is noted with the others.
    m_behind.insert(queueOf(dsid));
    WarningA(4, "eventd: event %lu is shown to nobody yet: %s", id, problem.what());
  }
}

void Library::discoverBelow(unsigned int dsid, unsigned long end) {
  const unsigned int queue = queueOf(dsid);
  walk(dsid, known(dsid).highest, {}, [&](unsigned long id, const EventPtr& event) {
    if (end != 0 && id >= end) return false;
    if (queue == 0 && !isClustered() && event->type() == EventSystem::kAuditEvent) {
      m_tally.note([](ServiceCounters& all) { ++all.auditImports; });
    }
    wrote();
    note(dsid, event);
    return true;
  });
}

void Library::discover(unsigned int dsid) {
  discoverBelow(dsid, 0);
  m_behind.erase(queueOf(dsid));
}

void Library::discoverAll() {
  std::vector<unsigned int> all;
  for (const auto& [queue, entry] : m_known) all.push_back(queue);
  for (const unsigned int queue : all) discover(queue);
}

void Library::note(unsigned int dsid, EventPtr event) {
  const unsigned int queue = queueOf(dsid);
  Known& entry = known(dsid);
  if (m_arrivals.empty() || m_arrivals.back().queue != queue) {
    m_arrivals.push_back({queue, entry.highest, {}});
  }
  entry.highest = event->id();
  added(queue, *event);
  m_arrivals.back().events.push_back(std::move(event));
}

std::vector<Arrivals> Library::takeArrivals() {
  return std::exchange(m_arrivals, {});
}

void Library::forget(const std::map<unsigned int, unsigned long>& shown) {
  m_arrivals.clear();
  for (auto& [queue, entry] : m_known) {
    const auto last = shown.find(queue);
    entry.highest = last == shown.end() ? entry.atStart : std::max(last->second, entry.atStart);
    m_behind.insert(queue);
  }
}

bool Library::walk(unsigned int dsid, unsigned long after, const std::set<int>& types,
                   const Visit& visit) {
  return isClustered() ? walkService(dsid, after, types, visit)
                       : walkDatabase(dsid, after, types, visit);
}

bool Library::walkDatabase(unsigned int dsid, unsigned long after, const std::set<int>& types,
                           const Visit& visit) {
  while (const auto event = nextInDatabase(after, dsid)) {
    EventPtr found;
    if (!isNext(*event, dsid, after)) {
      found = misfiledAfter(dsid, after);
      requireNoDamage(m_queues.host());
      if (!found) return true;
      after = found->id();
      if (!isWanted(found->type(), types)) found = nullptr;
    } else {
      after = event->getId();
      if (isWanted(event->getType(), types)) found = publishedOf(*event, dsid, after);
    }
    if (!visit(after, found)) return false;
  }
  return true;
}

// The manager passes over what it cannot read, as if it were not there.
std::unique_ptr<Event> Library::nextInDatabase(unsigned long after, unsigned int dsid) {
  auto event = m_queues.next(after, dsid);
  requireNoDamage(m_queues.host());
  return event;
}

// A row that was damaged may hold an event with another id than its own: with a lower one the walk
// would not advance, with a higher one it would leave out what is between.
bool Library::isNext(Event& event, unsigned int dsid, unsigned long after) const {
  const unsigned long id = event.getId();
  if (id <= after || id == after + 1) return id > after;
  const auto row = DatabaseQueueReader().find(id, dsid);
  return row && row->eventString == eventStringOf(event);
}

EventPtr Library::misfiledAfter(unsigned int dsid, unsigned long after) const {
  const DatabaseQueueReader rows;
  unsigned long next = 0;
  rows.forEachId(dsid, [&](unsigned int, unsigned long id) {
    if (id > after) next = id;
    return next == 0;
  });
  auto view = next == 0 ? std::nullopt : rows.find(next, dsid);
  return view ? std::make_shared<Published>(std::move(*view)) : nullptr;
}

bool Library::walkService(unsigned int dsid, unsigned long after, const std::set<int>& types,
                          const Visit& visit) {
  bool wanted = true;
  m_reader->forEach(queueOf(dsid), after, [&](const EventView& view) {
    const EventPtr found = isWanted(view.type, types) ? std::make_shared<Published>(view) : nullptr;
    wanted = visit(view.id, found);
    return wanted;
  });
  return wanted;
}

bool Library::has(unsigned long id, unsigned int dsid) {
  if (isClustered()) return m_reader->find(id, queueOf(dsid)).has_value();
  const bool isThere = DatabaseQueueReader().has(id, dsid);
  if (!isThere) requireNoDamage(m_queues.host());
  return isThere;
}

EventPtr Library::find(unsigned long id, unsigned int dsid) {
  if (othersWriteTo(dsid) && id > known(dsid).highest) discover(dsid);
  auto view = m_reader->find(id, queueOf(dsid));
  if (view) return std::make_shared<Published>(std::move(*view));
  requireNoDamage(m_queues.host());
  return nullptr;
}

void Library::remove(unsigned long id, unsigned int dsid) {
  const std::optional<int> type =
      isClustered() ? std::nullopt : DatabaseQueueReader().typeOf(id, dsid);
  m_queues.remove(id, dsid);
  wrote();
  if (type) removed(queueOf(dsid), id, *type);
}

}  // namespace EventApps
