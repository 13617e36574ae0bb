// The idempotency keys of requests that store events, and what became of them. One row for each
// event is written before the event is: what a restart finds there is told to whoever repeats the
// request.
//
// Only the row that was written last can be wrong after a crash: its event may not have been
// stored, or under another id. The start looks. Where the event of that row is removed, the row is
// marked before, so that the start does not miss it.
//
// Thread safety: isSupported() from any thread, all else from the queue thread, construction
// excepted.

#ifndef EVENTSYSTEM_APPS_EVENTD_QUEUE_KEYDESK_H
#define EVENTSYSTEM_APPS_EVENTD_QUEUE_KEYDESK_H

#include <atomic>
#include <cstddef>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "EventSystem/platform/OrbDB.h"
#include "apps/eventd/queue/ServiceLimits.h"
#include "apps/eventd/queue/ServiceRequests.h"
#include "host/Host.h"

namespace EventApps {

// A request with a key; its rows are in the order of its events.
struct KeyedRequest {
  std::string key;  // digests
  std::string body;
  unsigned int dsid = 0;
  long time = 0;  // seconds since 1970
  std::vector<long> rows;
  std::vector<unsigned long> eventIds;
  bool inUse = false;
  std::vector<std::function<void()>> waiting;
};

class KeyDesk {
 public:
  // Creates the table where it is missing. The event manager must have been built. Throws Failure.
  KeyDesk(EventSystemHost::Host& host, const ServiceLimits& limits);
  ~KeyDesk();

  KeyDesk(const KeyDesk&) = delete;
  KeyDesk& operator=(const KeyDesk&) = delete;

  bool isSupported() const { return m_table.has_value(); }
  std::size_t rows() const { return m_rows; }  // any thread

  // The request of this key, to be released. Null while somebody else has it: `again` is called
  // when it was released.
  KeyedRequest* claim(const IdempotencyKey& key, unsigned int dsid, std::function<void()> again);
  void release(KeyedRequest& request);

  // Before the request's next event is stored, which is likely to get this id. Throws Failure, and
  // nothing is noted then.
  void expect(KeyedRequest& request, EventSystem::Event& event, unsigned long id);

  // What became of it: the event's id, or nothing when it was not stored. Throw Failure.
  void confirm(KeyedRequest& request, unsigned long id);
  void withdraw(KeyedRequest& request);

  // Before an event is removed.
  void beforeRemoval(unsigned int queue, unsigned long id);

  // Deletes a few rows that nobody needs any more. Throws nothing: it is tried again.
  void tidy(std::size_t most);

  // At the end: nothing is open.
  void settle();

 private:
  struct Row;

  Row currentRow() const;
  void load();
  void addRow(const Row& row);
  void take(const Row& row);
  void checkLast(const Row& row);
  bool isExpired(const KeyedRequest& request) const;
  void expireOldest();
  void discard(const std::string& key);
  void settleLast();
  bool deleteRow(long row);
  void deleteWithdrawn();

  const ServiceLimits m_limits;
  // The table's current row is changed by reading.
  mutable std::optional<OrbDB::CTable> m_table;
  std::unordered_map<std::string, KeyedRequest> m_requests;  // by key
  std::map<long, std::string> m_order;                       // keys by first row
  std::deque<long> m_discarded;                              // rows to be deleted
  std::optional<long> m_withdrawn;                           // must go before the next is written
  std::unique_ptr<Row> m_last;                               // written last, and not marked
  std::unique_ptr<Row> m_beforeLast;  // takes its place when that is withdrawn
  long m_nextRow = 1;
  std::atomic<std::size_t> m_rows = 0;
};

}  // namespace EventApps

#endif
