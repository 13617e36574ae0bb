// What the fake host's platform functions share: the state behind FakeHost.
//
// Thread safety: guarded by the lock that Guard takes.

#ifndef EVENTSYSTEM_TESTS_SUPPORT_FAKEHOSTINTERNALS_H
#define EVENTSYSTEM_TESTS_SUPPORT_FAKEHOSTINTERNALS_H

#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <string>

#include "EventSystem/platform/OrbDB.h"
#include "tests/support/FakeHost.h"

namespace EventSystemTest {

class FakeHost::Internals {
 public:
  // Puts everything into the state that FakeHost::reset() describes.
  void reset();

  // The table of the ini file with that name, empty; nothing when it defines none.
  static std::unique_ptr<FakeTable> define(const std::string& name);

  FakeTable* find(const std::string& name);

  std::recursive_mutex mutex;

  FakeConfiguration configuration;
  std::set<std::string> loadedFiles;
  std::set<unsigned int> invalidDataSelections;
  bool tracing = false;
  long clock = 0;
  int configurationLocks = 0;

  std::map<std::string, std::unique_ptr<FakeTable> > tables;
  std::map<std::string, std::unique_ptr<OrbDB::CTable> > handles;  // those that GetTable() gives
  int liveHandles = 0;

  std::map<unsigned int, std::map<unsigned long, ClusterEvent> > cluster;
  std::map<unsigned int, unsigned long> clusterMaxIds;
  std::set<std::string> clusterCopies;
};

// Stands in every platform function: locks the state, and tells the thread that it is inside.
class Guard {
 public:
  Guard() : m_lock(host().internals().mutex) { ++depth; }
  ~Guard() { --depth; }
  Guard(const Guard&) = delete;
  Guard& operator=(const Guard&) = delete;

  static inline thread_local int depth = 0;

 private:
  std::lock_guard<std::recursive_mutex> m_lock;
};

inline FakeHost::Internals& state() {
  return host().internals();
}

// NULL as "NULL".
inline std::string shown(const char* text) {
  return text == nullptr ? "NULL" : text;
}

}  // namespace EventSystemTest

#endif
