#include "tests/power/Service.h"

#include <array>
#include <vector>

#include "EventSystem/platform/OrbDB.h"
#include "tests/power/RawDatabase.h"
#include "tests/support/Events.h"

namespace EventSystemTest {

namespace {

// Up to a sixth of a page, so that rows of events begin and end everywhere in it.
std::string filler(unsigned int number) {
  std::string text = "no. " + std::to_string(number) + " \"quoted\", ";
  text.append(number * 131 % 600, static_cast<char>('a' + number % 26));
  return text;
}

std::string section(unsigned int number) {
  const std::string n = std::to_string(number);
  const std::string text = filler(number);
  switch (number % 9) {
    case 0:
      return ";LEGACYEVENT{payload:" + text + ";}}";
    case 1:
      return ";lsu:volume" + n + ";IMAGEREPEVENT{size:" + n + ";path:/payload/" + text + ";}}";
    case 2:
      return ";LSUSTATUSEVENT{state:1;server:node" + n + ";}}";
    case 3:
      return ";SERVERSTATUSEVENT{state:2;server:node" + n + ";}}";
    case 4:
      return ";CAPACITYEVENT{capacity:" + n +
             ";capacityphys:800;used:500;usedphys:400;server:node" + n + ";}}";
    case 5:
      return ";ABILITIESEVENT{flags:0x1F;server:node" + n + ";}}";
    case 6:
      return ";{ACTIVITYEVENT{version:1;action:3;time:" + n + ";severity:2;msg:" + text + ";}}";
    case 7:
      return ";AUDITEVENT{version:1;action:2;time:" + n + ";loadSize:0;AUditMSg:" + text + ";}}";
    default:
      return ";KELPEVENT{version:1;severity:2;issue:1;share_type:1;issue_duration:" + n +
             ";name:1;host:2;string:" + text + ";}}";
  }
}

std::string eventText(unsigned int number, unsigned long id) {
  return "EVENT{version:1;type:" + std::to_string(number % 9 + 1) + ";id:" + std::to_string(id) +
         ";date:" + std::to_string(1700000000 + number) + section(number);
}

}  // namespace

std::string eventText(unsigned int number) {
  return eventText(number, 0);
}

std::string storedText(unsigned int number, unsigned long id, unsigned int dsid) {
  return eventText(number, id) + (dsid == 0 ? "" : std::to_string(dsid));
}

std::string auditContent(unsigned int number) {
  return "version:1;action:2;time:1700000001;loadSize:0;AUditMSg:audit no. " +
         std::to_string(number) + " ends";
}

Service::Service(std::filesystem::path home, Ledger& ledger, std::function<std::size_t()> now)
    : m_home(std::move(home)), m_ledger(ledger), m_now(std::move(now)) {}

bool Service::start(const std::function<bool()>& opened) {
  const std::size_t begin = now();
  m_firstStep = m_ledger.steps.size();
  try {
    EventSystemHost::HostOptions options;
    options.home = m_home;
    m_host = std::make_unique<EventSystemHost::Host>(options);
  } catch (const EventSystemHost::HostError& refusal) {
    m_problem = refusal.what();
    return report("start", -1) == 0;
  }
  if (!opened()) return false;
  m_manager = std::make_unique<EventSystem::EventManager>();
  report("start", 0);
  noteImported(begin);
  return true;
}

void Service::stop() {
  m_manager.reset();
  m_host.reset();
  if (diskIsWell()) m_ledger.markDurable(now());
}

bool Service::finish(std::size_t step, bool success) {
  if (success) m_ledger.steps[step].end = now();
  return success;
}

int Service::report(const char* call, int result) {
  returned(call, result);
  return result;
}

bool Service::add(unsigned int number, unsigned int dsid) {
  m_lastId = 0;
  if (!runs() || (dsid != 0 && !m_known.contains(dsid))) return false;
  const std::unique_ptr<EventSystem::Event> event = parsed(eventText(number));
  const std::size_t begin = now();
  m_result = report("newEvent", m_manager->newEvent(event.get(), dsid));
  const unsigned long id = event->getId();
  if (id == 0) return false;
  const char* const table = dsid == 0 ? "events" : "dsevents";
  m_ledger.steps.push_back({table, id, storedText(number, id, dsid), begin});
  if (m_result == 0) m_lastId = id;
  if (dsid == 0 && m_result == 0) m_highestSeen = std::max(m_highestSeen, id);
  return finish(m_ledger.steps.size() - 1, m_result == 0);
}

bool Service::remove(unsigned long id, unsigned int dsid) {
  if (!runs()) return false;
  m_ledger.steps.push_back({dsid == 0 ? "events" : "dsevents", id, std::nullopt, now()});
  m_manager->deleteEvent(id, dsid);
  const bool success = deletionSucceeded();
  report("deleteEvent", success ? 0 : 4);
  return finish(m_ledger.steps.size() - 1, success);
}

bool Service::knowDataSelection(unsigned int dsid) {
  if (!runs()) return false;
  OrbDB::CTable* const table = OrbDB::COrbDatabase::Instance().GetTable("dataselection");
  if (table == nullptr) return false;
  m_ledger.steps.push_back({"dataselection", dsid, "9", now()});
  OrbDB::CTable selections(*table);
  const std::string record = "id=" + std::to_string(dsid) + ",dstypeid=9";
  const bool known = report("addRecord", selections.addRecord(record.c_str(), nullptr, 0)) < 1;
  if (known) m_known.insert(dsid);
  return finish(m_ledger.steps.size() - 1, known);
}

bool Service::waitDurable() {
  if (!runs()) return false;
  const std::size_t steps = m_ledger.steps.size();
  m_result = report("waitDurable", m_host->waitDurable());
  const std::size_t first = diskIsWell() ? 0 : m_firstStep;
  if (m_result == 0) m_ledger.marks.push_back({now(), steps, first});
  return m_result == 0;
}

bool Service::import() {
  if (!runs()) return false;
  const std::size_t begin = now();
  EventSystem::Event* next = nullptr;
  m_result = report("getNextEvent", m_manager->getNextEvent(m_highestSeen, &next, 0));
  const std::unique_ptr<EventSystem::Event> event(next);
  noteImported(begin);
  return m_result == 0;
}

// What was taken in is behind everything that was there.
void Service::noteImported(std::size_t begin) {
  const std::size_t end = now();
  for (;;) {
    EventSystem::Event* next = nullptr;
    m_result = report("getNextEvent", m_manager->getNextEvent(m_highestSeen, &next, 0));
    const std::unique_ptr<EventSystem::Event> event(next);
    if (event == nullptr) return;
    m_highestSeen = event->getId();
    m_ledger.steps.push_back({"events", m_highestSeen, textOf(*event), begin, end});
  }
}

bool Service::leaveAuditRow(unsigned int number) {
  std::filesystem::create_directories(auditDatabase().parent_path());
  m_ledger.auditRows.push_back({auditContent(number)});
  const bool left =
      EventSystemTest::leaveAuditRow(auditDatabase(), auditContent(number), auditDisk);
  if (left) m_ledger.auditRows.back().end = now();
  return left;
}

}  // namespace EventSystemTest
