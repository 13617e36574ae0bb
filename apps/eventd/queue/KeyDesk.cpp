#include "apps/eventd/queue/KeyDesk.h"

#include <array>
#include <chrono>
#include <utility>

#include "EventSystem/platform/HostLog.h"
#include "apps/common/DatabaseQueueReader.h"
#include "apps/common/EventView.h"
#include "apps/common/Failure.h"
#include "apps/common/StoredForm.h"
#include "apps/eventd/queue/Digest.h"
#include "apps/eventd/queue/Library.h"
#include "apps/eventd/queue/OwnTables.h"

namespace EventApps {
namespace {

long now() {
  return std::chrono::duration_cast<std::chrono::seconds>(
             std::chrono::system_clock::now().time_since_epoch())
      .count();
}

// What an event is told again by, whichever id it got.
std::string digestOfEvent(const std::string& eventString) {
  return digestOf(withoutId(eventString));
}

std::string textOf(OrbDB::CTable& row, const char* column) {
  std::array<char, 128> text{};
  return row.GetValStr(column, text.data(), text.size()) == 0 ? text.data() : "";
}

long numberOf(OrbDB::CTable& row, const char* column) {
  long number = 0;
  return row.GetValBigInt(column, number) == 0 ? number : 0;
}

}  // namespace

struct KeyDesk::Row {
  long id = 0;
  std::string key;
  std::string body;
  std::size_t position = 0;
  unsigned int dsid = 0;
  unsigned long eventId = 0;
  std::string event;
  long time = 0;
  bool settled = false;
};

KeyDesk::~KeyDesk() = default;

KeyDesk::KeyDesk(EventSystemHost::Host& host, const ServiceLimits& limits) : m_limits(limits) {
  // The service's queues are no tables of this database.
  if (host.cluster() != nullptr) return;
  m_table.emplace(openKeyTable(host));
  load();
}

KeyDesk::Row KeyDesk::currentRow() const {
  OrbDB::CTable& row = *m_table;
  return {numberOf(row, "id"),
          textOf(row, "request"),
          textOf(row, "body"),
          static_cast<std::size_t>(numberOf(row, "position")),
          static_cast<unsigned int>(numberOf(row, "dataselection")),
          static_cast<unsigned long>(numberOf(row, "eventid")),
          textOf(row, "event"),
          numberOf(row, "time"),
          numberOf(row, "settled") != 0};
}

void KeyDesk::load() {
  Row row;
  for (int end = m_table->ListRecordsStart(nullptr); end == 0;
       end = m_table->ListRecordsNext(nullptr)) {
    if (row.id != 0 && !row.settled) m_beforeLast = std::make_unique<Row>(std::move(row));
    row = currentRow();
    take(row);
    m_nextRow = row.id + 1;
  }
  if (row.id != 0 && !row.settled) checkLast(row);
}

// The first rows of a request go first: what is left of it then is no request.
void KeyDesk::take(const Row& row) {
  ++m_rows;
  KeyedRequest& request = m_requests[row.key];
  if (row.position != request.rows.size()) {
    m_discarded.push_back(row.id);
    if (request.rows.empty()) m_requests.erase(row.key);
    return;
  }
  if (request.rows.empty()) {
    request = {row.key, row.body, row.dsid, row.time, {}, {}, false, {}};
    m_order[row.id] = row.key;
  }
  request.rows.push_back(row.id);
  request.eventIds.push_back(row.eventId);
}

void KeyDesk::checkLast(const Row& row) {
  m_last = std::make_unique<Row>(row);
  const auto found = m_requests.find(row.key);
  if (found == m_requests.end() || found->second.rows.back() != row.id) return;
  const DatabaseQueueReader reader;
  const auto isIt = [&](unsigned long id) {
    const auto view = reader.find(id, row.dsid);
    return view && view->problem.empty() && digestOfEvent(view->eventString) == row.event;
  };
  if (isIt(row.eventId)) return;
  // Audit records that were taken in between have taken its id.
  unsigned long id = 0;
  reader.forEachId(row.dsid, [&](unsigned int, unsigned long each) {
    if (each > row.eventId && isIt(each)) id = each;
    return id == 0;
  });
  if (id != 0) return confirm(found->second, id);
  WarningA(0, "eventd: event %lu of a request with a key was not stored before the last end",
           row.eventId);
  withdraw(found->second);
}

bool KeyDesk::isExpired(const KeyedRequest& request) const {
  return now() - request.time > m_limits.keyLife.count();
}

KeyedRequest* KeyDesk::claim(const IdempotencyKey& key, unsigned int dsid,
                             std::function<void()> again) {
  const std::string name = digestOf(std::to_string(queueOf(dsid)) + ":" + key.key);
  auto found = m_requests.find(name);
  if (found != m_requests.end() && found->second.inUse) {
    found->second.waiting.push_back(std::move(again));
    return nullptr;
  }
  if (found != m_requests.end() && isExpired(found->second)) {
    discard(name);
    found = m_requests.end();
  }
  if (found == m_requests.end()) {
    KeyedRequest request{name, digestOf(key.body), queueOf(dsid), now(), {}, {}, false, {}};
    found = m_requests.emplace(name, std::move(request)).first;
  }
  found->second.inUse = true;
  return &found->second;
}

void KeyDesk::release(KeyedRequest& request) {
  request.inUse = false;
  const auto waiting = std::exchange(request.waiting, {});
  if (request.rows.empty()) m_requests.erase(std::string(request.key));
  for (const auto& again : waiting) again();
}

void KeyDesk::expect(KeyedRequest& request, EventSystem::Event& event, unsigned long id) {
  deleteWithdrawn();
  Row row{m_nextRow,
          request.key,
          request.body,
          request.rows.size(),
          request.dsid,
          id,
          digestOfEvent(eventStringOf(event)),
          request.time,
          false};
  addRow(row);
  ++m_nextRow;
  ++m_rows;
  if (request.rows.empty()) m_order[row.id] = request.key;
  request.rows.push_back(row.id);
  request.eventIds.push_back(id);
  m_beforeLast = std::exchange(m_last, std::make_unique<Row>(std::move(row)));
}

void KeyDesk::addRow(const Row& row) {
  const std::string record =
      std::to_string(row.id) + ",\"" + row.key + "\",\"" + row.body + "\"," +
      std::to_string(row.position) + "," + std::to_string(static_cast<int>(row.dsid)) + "," +
      std::to_string(row.eventId) + ",\"" + row.event + "\"," + std::to_string(row.time) + ",0";
  const int status = m_table->addRecord(record.c_str(), nullptr, 0);
  if (status < 1) return;
  throw Failure("the idempotency key could not be noted (database status " +
                std::to_string(status) + "); the log says why");
}

void KeyDesk::confirm(KeyedRequest& request, unsigned long id) {
  const bool isOther = request.eventIds.back() != id;
  request.eventIds.back() = id;
  m_last->eventId = id;
  const std::string key = std::to_string(m_last->id);
  // A flush that failed may have taken it, and not the event.
  if (m_table->readRecord(key.c_str()) != 0) return addRow(*m_last);
  if (!isOther) return;
  const int status = m_table->updateRecord(key.c_str(), ("eventid=" + std::to_string(id)).c_str());
  if (status <= 0) return;
  throw Failure("the id of event " + std::to_string(id) +
                " could not be noted with its idempotency key (database status " +
                std::to_string(status) + "); the log says why");
}

void KeyDesk::withdraw(KeyedRequest& request) {
  m_withdrawn = request.rows.back();
  m_order.erase(request.rows.back());
  request.rows.pop_back();
  request.eventIds.pop_back();
  m_last = std::move(m_beforeLast);
  deleteWithdrawn();
}

// It would be taken for an event that was stored.
void KeyDesk::deleteWithdrawn() {
  if (!m_withdrawn) return;
  if (!deleteRow(*m_withdrawn)) {
    throw Failure("an idempotency key could not be taken back; the log says why");
  }
  m_withdrawn.reset();
}

bool KeyDesk::deleteRow(long row) {
  const std::string key = std::to_string(row);
  if (m_table->deleteRecord(key.c_str()) != 0 && m_table->readRecord(key.c_str()) == 0) {
    return false;
  }
  --m_rows;
  return true;
}

void KeyDesk::beforeRemoval(unsigned int queue, unsigned long id) {
  if (m_last && m_last->dsid == queue && m_last->eventId == id) settleLast();
}

void KeyDesk::settle() {
  if (m_last) settleLast();
}

void KeyDesk::settleLast() {
  if (m_table->updateRecord(std::to_string(m_last->id).c_str(), "settled=1") > 0) {
    throw Failure("an idempotency key could not be marked; the log says why");
  }
  m_last.reset();
}

void KeyDesk::discard(const std::string& key) {
  const auto found = m_requests.find(key);
  if (!found->second.rows.empty()) m_order.erase(found->second.rows.front());
  for (const long row : found->second.rows) m_discarded.push_back(row);
  m_requests.erase(found);
}

void KeyDesk::expireOldest() {
  if (m_order.empty()) return;
  const std::string key = m_order.begin()->second;
  const KeyedRequest& oldest = m_requests.at(key);
  const bool tooMany = m_rows - m_discarded.size() > m_limits.keyRows;
  if (!oldest.inUse && (tooMany || isExpired(oldest))) discard(key);
}

void KeyDesk::tidy(std::size_t most) {
  if (!m_table) return;
  for (std::size_t i = 0; i < most; ++i) {
    if (m_discarded.empty()) expireOldest();
    if (m_discarded.empty()) return;
    if (m_last && m_last->id == m_discarded.front()) m_last.reset();
    if (!deleteRow(m_discarded.front())) return;
    m_discarded.pop_front();
  }
}

}  // namespace EventApps
