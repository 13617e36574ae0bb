// Waits for a change of the database file or the audit database, so that a follower need not hold
// the one and read the other all the time.
//
// Thread safety: none; used by the main thread.

#ifndef EVENTSYSTEM_APPS_EVENTCTL_CHANGEWATCH_H
#define EVENTSYSTEM_APPS_EVENTCTL_CHANGEWATCH_H

#include <chrono>
#include <filesystem>
#include <string>

#include "apps/eventctl/Listener.h"

namespace EventApps {

class ChangeWatch {
 public:
  // The files need not exist, nor the audit database's directory.
  ChangeWatch(const std::filesystem::path& database, const std::filesystem::path& auditDatabase);
  ~ChangeWatch();

  ChangeWatch(const ChangeWatch&) = delete;
  ChangeWatch& operator=(const ChangeWatch&) = delete;

  // Forgets the changes up to now.
  void forget();

  // Returns after the next change, when `bound` is over, or when `listener` says so.
  Woken wait(const Listener& listener, std::chrono::milliseconds bound);

 private:
  void watchDirectories();
  bool takeChanges();
  bool concerns(const std::string& name) const;

  std::filesystem::path m_database;
  std::filesystem::path m_audit;
  int m_descriptor;
};

}  // namespace EventApps

#endif
