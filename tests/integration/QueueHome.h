// A home directory for one test, and a running queue over it: the real host and the manager.
//
// Thread safety: as the manager's.

#ifndef EVENTSYSTEM_TESTS_INTEGRATION_QUEUEHOME_H
#define EVENTSYSTEM_TESTS_INTEGRATION_QUEUEHOME_H

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "EventSystem/EventManager.h"
#include "host/Host.h"

namespace EventSystemTest {

// Removed with everything in it at the end of the test.
class QueueHome {
 public:
  QueueHome();
  ~QueueHome();
  QueueHome(const QueueHome&) = delete;
  QueueHome& operator=(const QueueHome&) = delete;

  const std::filesystem::path& path() const { return m_path; }
  std::filesystem::path database() const { return m_path / "events.db"; }
  std::filesystem::path auditDatabase() const { return m_path / "audit" / "audit.db"; }

  void write(const std::string& file, const std::string& text) const;

  // Runs SQL on a database file while no host has it open.
  static void execute(const std::filesystem::path& file, const std::string& sql);
  // The first column of the first row as a number.
  static long query(const std::filesystem::path& file, const std::string& sql);

  // Adds a row of the kind that off-line services leave.
  void addAuditRow(int id, const std::string& message) const;

 private:
  std::filesystem::path m_path;
};

// From construction to destruction one life of a server process.
class RunningQueue {
 public:
  explicit RunningQueue(const QueueHome& home);

  EventSystem::EventManager& manager() { return m_manager; }
  EventSystemHost::Host& host() { return m_host; }

  // Adds a capacity event; its id, or 0 with the result in `result`.
  unsigned long add(unsigned int dsid = 0, int* result = nullptr);
  // All ids of a queue in the order that a consumer meets them.
  std::vector<unsigned long> ids(unsigned int dsid = 0);
  // The event string of the first event after `afterId`; empty at the end of the queue.
  std::string next(unsigned long afterId, unsigned int dsid = 0);

 private:
  EventSystemHost::Host m_host;
  EventSystem::EventManager m_manager;
};

// Makes a data selection known to the host.
void addDataSelection(unsigned int dsid);

}  // namespace EventSystemTest

#endif
