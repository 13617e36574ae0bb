#include "tests/memory/MemoryTrial.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <new>

#include "EventSystem/platform/HostConfig.h"
#include "EventSystem/platform/OrbDB.h"
#include "tests/death/EventMaker.h"
#include "tests/fault/FailingSqlite.h"
#include "tests/support/ManagerAccess.h"

namespace EventSystemTest {

using EventSystem::Event;
using EventSystem::EventManager;
using EventSystemHost::Host;

namespace {

constexpr unsigned int kSelection = 5;
constexpr unsigned int kSecondSelection = 7;
constexpr unsigned int kRoom = 200;

void makeDataSelection(unsigned int dsid) {
  if (QMDSIDValidate(dsid) != 0) return;
  OrbDB::CTable table(*OrbDB::COrbDatabase::Instance().GetTable("dataselection"));
  table.addRecord(("id=" + std::to_string(dsid) + ",dstypeid=9").c_str(), nullptr, 0);
}

// Takes the events out that have this text; how many there were.
std::size_t takeOut(std::map<unsigned long, std::string>& events, const std::string& text) {
  return std::erase_if(
      events, [&](const auto& event) { return event.second == withId(text, event.first); });
}

}  // namespace

MemoryTrial::MemoryTrial(std::string durability)
    : m_directory(TempDir::inMemory()), m_durability(std::move(durability)) {
  includeSqlitesAllocations();
  makeHome();
}

MemoryTrial::~MemoryTrial() = default;

void MemoryTrial::makeHome() {
  close();
  if (!m_home.empty()) std::filesystem::remove_all(m_home);
  m_home = m_directory.path() / ("home" + std::to_string(++m_homes));
  std::filesystem::create_directory(m_home);
  std::ofstream(m_home / "host.ini")
      << "[log]\nlevel = warning\n[database]\ndurability = " << m_durability << "\n";
  m_audit = std::make_unique<AuditFeed>(m_home / "audit" / "audit.db");
  m_kept.clear();
  m_highest = {};
  m_highestBefore = {};
}

void MemoryTrial::openHost() {
  EventSystemHost::HostOptions options;
  options.home = m_home;
  m_host = std::make_unique<Host>(options);
}

void MemoryTrial::openQueue() {
  m_manager.reset();
  if (m_host == nullptr) openHost();
  for (const unsigned int dsid : {kSelection, kSecondSelection}) makeDataSelection(dsid);
  m_manager = std::make_unique<EventManager>();
}

void MemoryTrial::close() {
  m_manager.reset();
  m_host.reset();
}

unsigned long MemoryTrial::add(unsigned int dsid) {
  const std::unique_ptr<Event> event = makeEvent(++m_nextNumber, kRoom);
  if (m_manager->newEvent(event.get(), dsid) != 0) return 0;
  const unsigned long id = event->getId();
  m_kept[dsid][id] = eventStringOf(*event);
  m_highest.of(dsid) = std::max(m_highest.of(dsid), id);
  return id;
}

MemoryTrial::Events MemoryTrial::contents(unsigned int dsid) {
  Events found;
  for (unsigned long after = 0;;) {
    Event* next = nullptr;
    m_manager->getNextEvent(after, &next, dsid);
    const std::unique_ptr<Event> event(next);
    if (event == nullptr) return found;
    after = event->getId();
    found[after] = eventStringOf(*event);
  }
}

void MemoryTrial::clear() {
  for (const unsigned int dsid : {0u, kSelection, kSecondSelection}) {
    for (const auto& [id, text] : contents(dsid)) m_manager->deleteEvent(id, dsid);
  }
  m_kept.clear();
  m_auditRows.clear();
  m_misfiledText.clear();
  std::filesystem::resize_file(m_home / "log" / "eventsystem.log", 0);
}

void MemoryTrial::putMisfiledRow() {
  const std::unique_ptr<Event> event = makeEvent(++m_nextNumber, 0);
  m_misfiledText = eventStringOf(*event);
  const std::string id = std::to_string(1000000000 + m_nextNumber);
  std::string text;
  for (const char c : m_misfiledText) text += c == '"' ? std::string(2, c) : std::string(1, c);
  OrbDB::CTable table(*OrbDB::COrbDatabase::Instance().GetTable("events"));
  table.addRecord((id + ",1,5,1,\"" + text + "\"").c_str(), nullptr, 0);
}

void MemoryTrial::prepare(const Operation& operation) {
  if (operation.start == Start::kNothing) {
    makeHome();
    m_auditRows.clear();
    m_misfiledText.clear();
    return;
  }
  if (m_manager == nullptr) openQueue();
  clear();
  for (const unsigned int dsid : {0u, 0u, 0u, kSelection, kSelection}) add(dsid);
  // The newest events are deleted: only the stored maxima keep their ids from being given again.
  for (const unsigned int dsid : {0u, kSelection}) {
    m_manager->deleteEvent(m_highest.of(dsid), dsid);
    m_kept[dsid].erase(m_highest.of(dsid));
  }
  if (operation.misfiled) putMisfiledRow();
  for (unsigned int i = 0; i < operation.auditRows; ++i) m_auditRows.insert(m_audit->add());
  m_highestBefore = m_highest;
  m_event = makeEvent(++m_nextNumber, kRoom);
  m_eventText = eventStringOf(*m_event);
  if (operation.start == Start::kHost) m_manager.reset();
  if (operation.start == Start::kHome || operation.start == Start::kFreshQueue) close();
  if (operation.start == Start::kFreshQueue) openQueue();
}

MemoryTrial::Outcome MemoryTrial::run(const Operation& operation, const AllocationFaults& faults) {
  prepare(operation);
  Outcome outcome;
  {
    const FailingNew failing(faults);
    try {
      outcome.result = operation.run(*this);
    } catch (const std::exception&) {
      const AllocationPause pause;
      outcome.result = "exception";
    }
    outcome.allocations = failing.count();
    outcome.failed = failing.failed();
  }
  check(operation, outcome);
  return outcome;
}

void MemoryTrial::check(const Operation& operation, Outcome& outcome) {
  const auto fail = [&](const std::string& what) { outcome.failures.push_back(what); };
  if (operation.results.count(outcome.result) == 0) fail("the result was " + outcome.result);
  const std::string log = logText();
  if (m_manager != nullptr && !isFree(*m_manager)) {
    fail("the manager's mutex is held");
    return;
  }
  try {
    if (m_manager != nullptr) checkWork(operation, outcome);
    openQueue();
    for (const unsigned int dsid : {0u, kSelection, kSecondSelection}) {
      checkQueue(operation, dsid, outcome);
      if (add(dsid) == 0) fail("an event is refused after a start with memory");
    }
    if (const int found = problems()) fail("a check counts " + std::to_string(found));
    if (m_host->waitDurable() != 0) fail("nothing becomes durable any more");
    if (!m_host->damage().empty()) fail("damage: " + m_host->damage());
  } catch (const std::exception& problem) {
    fail(std::string("with memory again: ") + problem.what());
    close();
  }
  if (!outcome.failures.empty() && !log.empty()) fail("the log said: " + log);
}

// The objects that met the failure work on. A queue whose construction met it may refuse events.
void MemoryTrial::checkWork(const Operation& operation, Outcome& outcome) {
  const bool built = operation.start < Start::kQueue;
  const std::string before = logText();
  for (const unsigned int dsid : {0u, kSelection}) {
    const unsigned long id = add(dsid);
    if (id == 0 && !built) outcome.failures.emplace_back("an event is refused with memory again");
    if (id != 0 && dsid != 0 && id <= m_highestBefore.selections) {
      outcome.failures.emplace_back("a data selection gives an id again");
    }
  }
  const std::string after = logText();
  if (!built && after != before) {
    outcome.failures.push_back("with memory again: " + after.substr(before.size()));
  }
}

void MemoryTrial::checkQueue(const Operation& operation, unsigned int dsid, Outcome& outcome) {
  const auto fail = [&](const std::string& what) {
    outcome.failures.push_back(what + " (queue " + std::to_string(dsid) + ")");
  };
  Events found = contents(dsid);
  Events& kept = m_kept[dsid];
  for (const auto& [id, text] : found) {
    if (id <= m_highestBefore.of(dsid) && kept.count(id) == 0) {
      fail("id " + std::to_string(id) + " was given again");
    }
  }
  if (operation.adds && operation.queue == dsid) {
    const std::size_t times = takeOut(found, m_eventText);
    if (times > 1) fail("the event is there twice");
    if (outcome.result == "0" && times == 0) fail("the acknowledged event is gone");
  }
  if (operation.deletes && operation.queue == dsid && found.count(kept.begin()->first) == 0) {
    kept.erase(kept.begin());
  }
  if (dsid == 0) checkAuditRows(found, outcome);
  if (dsid == 0 && !m_misfiledText.empty() && takeOut(found, m_misfiledText) == 0) {
    fail("the misfiled event is gone");
  }
  if (found == kept) return;
  for (const auto& [id, text] : kept) {
    if (found.count(id) == 0) fail("gone: " + text);
  }
  for (const auto& [id, text] : found) {
    if (kept.count(id) == 0) fail("nobody added: " + text);
  }
}

// Each record is in the queue, or its text in the log: the import deletes what the queue refused.
void MemoryTrial::checkAuditRows(Events& found, Outcome& outcome) {
  for (const std::uint64_t row : m_auditRows) {
    const std::string content = auditContentOf(row);
    const auto isRow = [&](const auto& event) {
      return event.second.find(content + ";") != std::string::npos;
    };
    if (std::erase_if(found, isRow) > 0) continue;
    if (logText().find(content) != std::string::npos) {
      ++m_auditRecordsInTheLogOnly;
    } else {
      outcome.failures.push_back("gone: audit record " + std::to_string(row));
    }
  }
}

int MemoryTrial::problems() {
  return ((*m_manager).*access(ManagerStore()))->checkConsistency(false) +
         ((*m_manager).*access(ManagerDSStore()))->checkConsistency(false);
}

std::string MemoryTrial::logText() const {
  std::ifstream log(m_home / "log" / "eventsystem.log");
  return {std::istreambuf_iterator<char>(log), {}};
}

struct MemoryOperations {
  static std::string next(MemoryTrial& trial, unsigned int dsid) {
    Event* event = nullptr;
    const int result = trial.m_manager->getNextEvent(0, &event, dsid);
    const std::unique_ptr<Event> owned(event);
    return std::to_string(result);
  }
  static std::string add(MemoryTrial& trial, unsigned int dsid) {
    return std::to_string(trial.m_manager->newEvent(trial.m_event.get(), dsid));
  }
  static std::string remove(MemoryTrial& trial, unsigned int dsid) {
    trial.m_manager->deleteEvent(trial.m_kept[dsid].begin()->first, dsid);
    return "done";
  }
  static std::string openHost(MemoryTrial& trial) {
    trial.openHost();
    return "built";
  }
  static std::string build(MemoryTrial& trial) {
    trial.m_manager = std::make_unique<EventManager>();
    return "built";
  }
  static std::string check(MemoryTrial& trial, bool fix) {
    return std::to_string(trial.m_manager->checkConsistency(fix));
  }
  static std::string waitDurable(MemoryTrial& trial) {
    return trial.m_host->waitDurable() == 0 ? "0" : "a status";
  }
  static std::string close(MemoryTrial& trial) {
    trial.close();
    return "closed";
  }
};

const std::vector<MemoryTrial::Operation>& MemoryTrial::operations() {
  using Do = MemoryOperations;
  using Trial = MemoryTrial&;
  static const std::vector<Operation> all = {
      {"Host() of a new home", Start::kNothing, Do::openHost, {"built", "exception"}},
      {"Host()", Start::kHome, Do::openHost, {"built", "exception"}},
      {.name = "EventManager()",
       .start = Start::kHost,
       .run = Do::build,
       .results = {"built", "exception"},
       .auditRows = 2,
       .misfiled = true},
      {.name = "newEvent, global",
       .start = Start::kQueue,
       .run = [](Trial t) { return Do::add(t, 0); },
       .results = {"0", "4"},
       .adds = true},
      {.name = "newEvent, data selection",
       .start = Start::kQueue,
       .run = [](Trial t) { return Do::add(t, kSelection); },
       .results = {"0", "4"},
       .queue = kSelection,
       .adds = true},
      {.name = "newEvent, empty data selection",
       .start = Start::kQueue,
       .run = [](Trial t) { return Do::add(t, kSecondSelection); },
       .results = {"0", "4"},
       .queue = kSecondSelection,
       .adds = true},
      {.name = "first newEvent, global",
       .start = Start::kFreshQueue,
       .run = [](Trial t) { return Do::add(t, 0); },
       .results = {"0", "4"},
       .adds = true},
      {.name = "first newEvent, data selection",
       .start = Start::kFreshQueue,
       .run = [](Trial t) { return Do::add(t, kSelection); },
       .results = {"0", "4"},
       .queue = kSelection,
       .adds = true},
      {.name = "first deleteEvent, global",
       .start = Start::kFreshQueue,
       .run = [](Trial t) { return Do::remove(t, 0); },
       .results = {"done"},
       .deletes = true},
      {.name = "getNextEvent, global",
       .start = Start::kQueue,
       .run = [](Trial t) { return Do::next(t, 0); },
       .results = {"0", "4"},
       .auditRows = 1},
      {.name = "getNextEvent, data selection",
       .start = Start::kQueue,
       .run = [](Trial t) { return Do::next(t, kSelection); },
       .results = {"0", "4"}},
      {.name = "deleteEvent, global",
       .start = Start::kQueue,
       .run = [](Trial t) { return Do::remove(t, 0); },
       .results = {"done"},
       .deletes = true},
      {.name = "deleteEvent, data selection",
       .start = Start::kQueue,
       .run = [](Trial t) { return Do::remove(t, kSelection); },
       .results = {"done"},
       .queue = kSelection,
       .deletes = true},
      {.name = "checkConsistency(false)",
       .start = Start::kQueue,
       .run = [](Trial t) { return Do::check(t, false); },
       .results = {"0", "4"},
       .misfiled = true},
      {.name = "checkConsistency(true)",
       .start = Start::kQueue,
       .run = [](Trial t) { return Do::check(t, true); },
       .results = {"0", "4"},
       .misfiled = true},
      {.name = "waitDurable()",
       .start = Start::kQueue,
       .run = Do::waitDurable,
       .results = {"0", "a status"}},
      {.name = "close", .start = Start::kQueue, .run = Do::close, .results = {"closed"}}};
  return all;
}

}  // namespace EventSystemTest
