#include "tests/power/Reboot.h"

#include <algorithm>
#include <fstream>

#include "tests/power/Service.h"
#include "tests/support/Events.h"
#include "tests/support/ManagerAccess.h"

namespace EventSystemTest {

namespace {

constexpr unsigned int kTomorrow = 100000;  // numbers of events that no day before has

class Examination {
 public:
  Examination(const std::filesystem::path& home, const std::function<std::size_t()>& now)
      : m_service(home, m_found.ledger, now) {}

  Reboot run() {
    if (!m_service.start([this] { return look(); })) {
      fail("the host does not start: " + m_service.problem());
      return m_found;
    }
    compareImport();
    compareQueues();
    work();
    checkConsistency();
    m_service.stop();
    compareFile();
    return m_found;
  }

 private:
  // What recovery finds, before the library repairs or takes in anything.
  bool look() {
    m_found.stored = readStored(m_service.database());
    m_found.auditRows = readAuditRows(m_service.auditDatabase());
    if (!m_found.stored.problem.empty()) return fail(m_found.stored.problem);
    m_found.ledger.base = m_rows = m_found.stored.rows;
    m_found.ledger.markDurable(0);
    for (const std::string& content : m_found.auditRows) {
      m_found.ledger.auditRows.push_back({content, 0});
    }
    for (const auto& [dsid, type] : m_rows["dataselection"]) {
      m_service.remember(static_cast<unsigned int>(dsid));
    }
    const auto& events = m_rows["events"];
    if (!events.empty()) m_service.skipUpTo(events.rbegin()->first);
    return true;
  }

  // The audit rows, each once, behind everything else.
  void compareImport() {
    const std::vector<Step>& steps = m_found.ledger.steps;
    if (steps.size() != m_found.auditRows.size()) {
      fail(std::to_string(steps.size()) + " of " + std::to_string(m_found.auditRows.size()) +
           " audit rows were taken in");
    }
    for (std::size_t i = 0; i < steps.size(); ++i) {
      carryOut(m_rows, steps[i]);
      if (i < m_found.auditRows.size() &&
          steps[i].text->find(m_found.auditRows[i]) == std::string::npos) {
        fail("an audit row was taken in as " + *steps[i].text);
      }
    }
  }

  std::map<unsigned long, std::string> queue(unsigned int dsid) {
    std::map<unsigned long, std::string> events;
    unsigned long after = 0;
    for (;;) {
      EventSystem::Event* next = nullptr;
      if (m_service.manager().getNextEvent(after, &next, dsid) != 0) fail("getNextEvent fails");
      const std::unique_ptr<EventSystem::Event> event(next);
      if (event == nullptr) return events;
      if (event->getId() <= after) {
        fail("the queue does not grow");
        return events;
      }
      after = event->getId();
      events[after] = textOf(*event) + (dsid == 0 ? "" : std::to_string(dsid));
    }
  }

  // What consumers get is what is stored.
  void compareQueues() {
    if (queue(0) != m_rows["events"]) fail("the global queue differs from its table");
    for (const auto& [dsid, type] : m_rows["dataselection"]) {
      auto rows = m_rows["dsevents"];
      const std::string ending = ";}}" + std::to_string(dsid);
      std::erase_if(rows, [&](const auto& row) { return !row.second.ends_with(ending); });
      if (queue(static_cast<unsigned int>(dsid)) != rows) {
        fail("the queue of a data selection differs from its rows");
      }
    }
  }

  void work() {
    const auto& events = m_rows["events"];
    const unsigned long highest = events.empty() ? 0 : events.rbegin()->first;
    if (!m_service.add(kTomorrow)) fail("a new event is refused");
    m_found.newId = m_service.lastId();
    if (m_found.newId <= highest) fail("a new event has the id of another");
    if (!m_service.waitDurable()) fail("waitDurable() fails");
    for (const auto& [dsid, type] : m_rows["dataselection"]) {
      const auto& others = m_rows["dsevents"];
      const unsigned long last = others.empty() ? 0 : others.rbegin()->first;
      if (!m_service.add(kTomorrow + 1, static_cast<unsigned int>(dsid))) {
        fail("a new event of a data selection is refused");
      }
      if (m_service.lastId() <= last) fail("an event of a data selection has the id of another");
      break;
    }
    if (highest != 0) m_service.remove(highest);
    m_service.remove(m_found.newId);
    for (std::size_t i = m_found.auditRows.size(); i < m_found.ledger.steps.size(); ++i) {
      carryOut(m_rows, m_found.ledger.steps[i]);
    }
  }

  void checkConsistency() {
    EventSystem::EventManager& manager = m_service.manager();
    const int global = (manager.*access(ManagerStore()))->checkConsistency(false);
    const int other = (manager.*access(ManagerDSStore()))->checkConsistency(false);
    if (global != 0 || other != 0) {
      fail("the consistency check finds " + std::to_string(global) + " and " +
           std::to_string(other) + " problems");
    }
  }

  void compareFile() {
    Stored stored = readStored(m_service.database());
    if (!stored.problem.empty()) fail("the day after: " + stored.problem);
    for (auto* rows : {&stored.rows, &m_rows}) {
      std::erase_if(*rows, [](const auto& table) { return table.second.empty(); });
    }
    if (stored.rows != m_rows) fail("the day after, the file has other rows than were written");
    if (stored.maxId < m_found.newId) fail("the day after, the highest id is too low");
  }

  bool fail(const std::string& problem) {
    if (m_found.problem.empty()) m_found.problem = problem;
    return false;
  }

  Reboot m_found;
  Rows m_rows;
  Service m_service;
};

}  // namespace

void materialise(const DiskImage& image, const std::filesystem::path& from,
                 const std::filesystem::path& to) {
  for (const auto& [path, content] : image) {
    const std::filesystem::path target = to / path.lexically_relative(from);
    std::filesystem::create_directories(target.parent_path());
    std::ofstream(target, std::ios::binary) << content;
  }
}

Reboot reboot(const std::filesystem::path& home, const std::function<std::size_t()>& now) {
  return Examination(home, now).run();
}

}  // namespace EventSystemTest
