#include "tests/threads/ThreadActor.h"

#include <sqlite3.h>

#include <mutex>

#include "EventSystem/ActivityEvent.h"
#include "EventSystem/AuditEvent.h"
#include "EventSystem/ResultCode.h"
#include "EventSystem/platform/HostClock.h"
#include "EventSystem/platform/HostConfig.h"
#include "EventSystem/platform/HostLog.h"
#include "EventSystem/platform/HostText.h"
#include "tests/support/Events.h"

namespace EventSystemTest {
namespace {

using EventSystem::Event;

constexpr unsigned int kQueues[] = {0, 7, 8, 9};  // 9: not known to the host
constexpr char kMarkBegin[] = "mark-";
constexpr char kMarkEnd[] = "-end";

std::string newMark(int thread, int number) {
  return kMarkBegin + std::to_string(thread) + "-" + std::to_string(number) + kMarkEnd;
}

}  // namespace

std::string markIn(const std::string& text) {
  const std::size_t begin = text.find(kMarkBegin);
  const std::size_t end = text.find(kMarkEnd, begin);
  if (begin == std::string::npos || end == std::string::npos) return "";
  return text.substr(begin, end + sizeof kMarkEnd - 1 - begin);
}

ThreadActor::ThreadActor(const RoundPlan& plan, int number, EventSystem::EventManager& manager,
                         EventSystemHost::Host& host, std::filesystem::path auditDatabase,
                         const std::vector<std::string>& texts)
    : m_plan(plan),
      m_number(number),
      m_manager(manager),
      m_host(host),
      m_auditDatabase(std::move(auditDatabase)),
      m_texts(texts),
      m_random(plan.seed * 1000 + static_cast<std::uint64_t>(number)) {}

void ThreadActor::run() {
  for (int i = 0; i < m_plan.operations && m_ledger.failures.empty(); ++i) step();
}

void ThreadActor::step() {
  using Operation = void (ThreadActor::*)();
  static constexpr struct {
    const char* name;
    Operation operation;
    unsigned long weight;
  } kOperations[] = {{"newEvent", &ThreadActor::add, 10},
                     {"getNextEvent of an own event", &ThreadActor::readBack, 5},
                     {"getNextEvent along a queue", &ThreadActor::walk, 4},
                     {"deleteEvent", &ThreadActor::remove, 4},
                     {"checkConsistency", &ThreadActor::check, 1},
                     {"parsed and written texts", &ThreadActor::parse, 4},
                     {"log lines", &ThreadActor::log, 2},
                     {"calls of the host", &ThreadActor::askHost, 2},
                     {"clock readings", &ThreadActor::readClock, 1},
                     {"queues in memory", &ThreadActor::useQueueInMemory, 2},
                     {"calls of one thread", &ThreadActor::doWhatOneThreadMay, 2}};
  unsigned long sum = 0;
  for (const auto& each : kOperations) sum += each.weight;
  unsigned long chosen = random(sum);
  for (const auto& each : kOperations) {
    if (chosen < each.weight) {
      (this->*each.operation)();
      ++m_ledger.counts[each.name];
      return;
    }
    chosen -= each.weight;
  }
}

unsigned long ThreadActor::random(unsigned long below) {
  return std::uniform_int_distribution<unsigned long>(0, below - 1)(m_random);
}

void ThreadActor::fail(const std::string& what) {
  m_ledger.failures.push_back("thread " + std::to_string(m_number) + ": " + what);
}

std::unique_ptr<Event> ThreadActor::makeEvent(const std::string& mark) {
  switch (random(4)) {
    case 0:
      return newCapacityEvent(mark);
    case 1: {
      std::string text = mark;
      return std::make_unique<EventSystem::AuditEvent>(text.data(), 1, 2, 3, 4, 0);
    }
    case 2:  // long over the age limit
      return parsed(capacityText(0, 1000000000, mark));
    default:
      return std::make_unique<EventSystem::ActivityEvent>(3, 1700000000, 2, mark.c_str(), 0);
  }
}

void ThreadActor::add() {
  const unsigned int queue = kQueues[random(std::size(kQueues))];
  const std::string mark = newMark(m_number, ++m_marks);
  const std::unique_ptr<Event> event = makeEvent(mark);
  const int result = m_manager.newEvent(event.get(), dsidOf(queue));
  if (result == EventSystem::kStorageLimits && m_plan.countLimit != 0 && queue == 0) {
    ++m_ledger.counts["refused by the count limit"];
    return;
  }
  const unsigned long id = m_plan.cluster ? m_host.lastClusterCall().newId : event->getId();
  if (result != 0 || id == 0) {
    return fail("newEvent gave " + std::to_string(result) + ", the id " + std::to_string(id));
  }
  m_ledger.kept[queue][id] = mark;
  m_ledger.given[queue].push_back(id);
  ++m_ledger.counts["acknowledged events"];
}

std::unique_ptr<Event> ThreadActor::next(unsigned long afterId, unsigned int queue) {
  Event* found = nullptr;
  const int result = m_manager.getNextEvent(afterId, &found, dsidOf(queue));
  std::unique_ptr<Event> event(found);
  if (result != 0) fail("getNextEvent gave " + std::to_string(result));
  return event;
}

void ThreadActor::readBack() {
  const unsigned int queue = kQueues[random(std::size(kQueues))];
  const Kept& kept = m_ledger.kept[queue];
  if (kept.empty()) return;
  const auto& [id, mark] = *std::next(kept.begin(), static_cast<long>(random(kept.size())));
  const std::unique_ptr<Event> event = next(id - 1, queue);
  if (event == nullptr || event->getId() != id || markIn(textOf(*event)) != mark) {
    fail(mark + " was not found under its id " + std::to_string(id) + " of queue " +
         std::to_string(queue) + ", but " + (event == nullptr ? "nothing" : textOf(*event)));
  }
}

void ThreadActor::walk() {
  const unsigned int queue = kQueues[random(std::size(kQueues))];
  unsigned long after = random(100);
  for (int i = 0; i < 4; ++i) {
    const std::unique_ptr<Event> event = next(after, queue);
    if (event == nullptr) return;
    if (event->getId() <= after || markIn(textOf(*event)).empty()) {
      return fail("after " + std::to_string(after) + " came " + textOf(*event));
    }
    after = event->getId();
  }
}

void ThreadActor::remove() {
  const unsigned int queue = kQueues[random(std::size(kQueues))];
  Kept& kept = m_ledger.kept[queue];
  if (kept.empty()) return;
  const auto victim = std::next(kept.begin(), static_cast<long>(random(kept.size())));
  const unsigned long id = victim->first;
  m_manager.deleteEvent(id, dsidOf(queue));
  kept.erase(victim);
  ++m_ledger.counts["deleted events"];
  const std::unique_ptr<Event> event = next(id - 1, queue);
  if (event != nullptr && event->getId() == id) fail(std::to_string(id) + " was deleted in vain");
}

void ThreadActor::check() {
  const int result = m_manager.checkConsistency(random(2) == 0);
  if (result != 0) fail("checkConsistency gave " + std::to_string(result));
}

void ThreadActor::parse() {
  const std::string& text = m_texts[random(m_texts.size())];
  const std::unique_ptr<Event> event = parsed(text);
  if (event == nullptr || textOf(*event) != text) return fail("changed by parsing: " + text);
  const std::unique_ptr<Event> cut = parsed(text.substr(0, random(text.size())));
  if (cut != nullptr) textOf(*cut);
}

void ThreadActor::log() {
  InfoA(0, "%s thread %d has %d marks", "log", m_number, m_marks);
  WarningA(2, "%s line\nbreak of thread %d", "log", m_number);
  ErrorA(9, "%s %s", "log", m_texts[random(m_texts.size())].c_str());
  if (TraceOn() != 0) __Trace("%s trace of thread %d", "log", m_number);
}

void ThreadActor::askHost() {
  if (m_host.waitDurable() != 0) fail("waitDurable failed");
  if (!m_host.damage().empty()) fail("damage: " + m_host.damage());
  if (m_host.configuration().home.empty()) fail("the configuration has no home");
  if (!m_host.lastClusterCall().failure.empty()) fail(m_host.lastClusterCall().failure);
  const std::lock_guard<ConfigManager> lock(configManager);
  if (configManager.databaseConfigDirectory[0] == '\0') fail("no database directory");
}

void ThreadActor::readClock() {
  const long before = gethrtime();
  char escaped[64];
  QMStringEscapeA("a \"quoted\" text", escaped, sizeof escaped);
  if (std::string(escaped) != "\"a \"\"quoted\"\" text\"") fail(std::string("escaped: ") + escaped);
  if (hrtime2seconds(gethrtime() - before) < 0) fail("the clock went back");
}

// A store of the thread's own: it shares nothing with those of the others.
void ThreadActor::useQueueInMemory() {
  const std::string mark = newMark(m_number, ++m_marks);
  const std::unique_ptr<Event> event = newCapacityEvent(mark);
  if (m_inMemory.writeEvent(event.get()) != 0) return fail("the queue in memory refused");
  Event* found = nullptr;
  m_inMemory.getNextEvent(event->getId() - 1, &found);
  const std::unique_ptr<Event> owned(found);
  if (owned == nullptr || markIn(textOf(*owned)) != mark) fail("the queue in memory lost " + mark);
  if (random(2) == 0) m_inMemory.deleteEvent(event->getId());
  if (m_inMemory.checkConsistency(false) != 0) fail("the queue in memory is not consistent");
}

void ThreadActor::doWhatOneThreadMay() {
  if (m_number == 0) m_manager.updateZRTTimeStamp(static_cast<unsigned int>(random(10)));
  if (m_number == 1 && m_plan.audit) leaveAuditRow();
}

void ThreadActor::leaveAuditRow() {
  const std::string mark = newMark(m_number, ++m_marks);
  sqlite3* opened = nullptr;
  sqlite3_open(m_auditDatabase.c_str(), &opened);
  const std::unique_ptr<sqlite3, decltype(&sqlite3_close)> database(opened, sqlite3_close);
  sqlite3_busy_timeout(opened, 60000);
  const std::string sql =
      "create table if not exists event(_id integer primary key autoincrement, date_created text, "
      "content text, etype integer);insert into event values(null,'1700000000','version:1;"
      "action:2;time:1700000001;loadSize:0;AUditMSg:" +
      mark + "',8)";
  if (sqlite3_exec(opened, sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
    return fail(std::string("audit row: ") + sqlite3_errmsg(opened));
  }
  m_ledger.audits.push_back(mark);
  ++m_ledger.counts["audit rows left meanwhile"];
}

}  // namespace EventSystemTest
