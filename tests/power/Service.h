// A server process on the reference host, from one start to the next: it makes calls of the
// library and keeps the ledger of what they were told.
//
// Thread safety: none.

#ifndef EVENTSYSTEM_TESTS_POWER_SERVICE_H
#define EVENTSYSTEM_TESTS_POWER_SERVICE_H

#include <filesystem>
#include <functional>
#include <memory>
#include <set>
#include <string>

#include "EventSystem/EventManager.h"
#include "host/Host.h"
#include "tests/power/Ledger.h"

namespace EventSystemTest {

// The numbers of the tests' events decide type, text and length; no two texts are equal.
std::string eventText(unsigned int number);

// What is stored of an event under this id; `dsid` 0: in the global queue.
std::string storedText(unsigned int number, unsigned long id, unsigned int dsid);

// The audit row of this number, as its service writes it.
std::string auditContent(unsigned int number);

class Service {
 public:
  // `now` tells the moment of the day.
  Service(std::filesystem::path home, Ledger& ledger, std::function<std::size_t()> now);

  // False when the host does not start; problem() has its words. `opened` is called when the
  // database is open and the library has not looked at it yet; false ends the start.
  bool start(const std::function<bool()>& opened = [] { return true; });
  void stop();
  bool runs() const { return m_manager != nullptr; }

  // Each returns whether the call reported success, and false when the service does not run.
  // Nothing is added to a data selection that is not known: such an event is in no queue.
  bool add(unsigned int number, unsigned int dsid = 0);
  bool remove(unsigned long id, unsigned int dsid = 0);
  bool knowDataSelection(unsigned int dsid);
  bool waitDurable();
  // Takes in what is in audit.db, by asking for the next event.
  bool import();

  // What is in the queue up to this id was no import.
  void skipUpTo(unsigned long id) { m_highestSeen = id; }
  // Of a day before.
  void remember(unsigned int dsid) { m_known.insert(dsid); }

  // Off-line services need no running host.
  bool leaveAuditRow(unsigned int number);

  // The id that the last event added was given, 0 when it was not stored.
  unsigned long lastId() const { return m_lastId; }
  // Of the last call of the library.
  int result() const { return m_result; }
  const std::string& problem() const { return m_problem; }

  std::filesystem::path home() const { return m_home; }
  std::filesystem::path database() const { return m_home / "events.db"; }
  std::filesystem::path auditDatabase() const { return m_home / "audit" / "audit.db"; }
  EventSystem::EventManager& manager() { return *m_manager; }
  EventSystemHost::Host& host() { return *m_host; }
  std::size_t now() const { return m_now(); }

  // What a deletion is told is in the log only: asked after each, false says that it failed.
  std::function<bool()> deletionSucceeded = [] { return true; };

  // Told what each call of the library returned, a start that failed as -1.
  std::function<void(const char* call, int result)> returned = [](const char*, int) {};

  // Whether no call of the disk has failed: an end has no result that tells.
  std::function<bool()> diskIsWell = [] { return true; };

  // SQLite's name of the disk that off-line services write to; NULL: as the host's.
  const char* auditDisk = nullptr;

 private:
  void noteImported(std::size_t begin);
  bool finish(std::size_t step, bool success);
  int report(const char* call, int result);

  const std::filesystem::path m_home;
  Ledger& m_ledger;
  const std::function<std::size_t()> m_now;
  std::unique_ptr<EventSystemHost::Host> m_host;
  std::unique_ptr<EventSystem::EventManager> m_manager;
  std::set<unsigned int> m_known;  // data selections
  unsigned long m_lastId = 0;
  unsigned long m_highestSeen = 0;
  std::size_t m_firstStep = 0;  // since the start
  int m_result = 0;
  std::string m_problem;
};

}  // namespace EventSystemTest

#endif
