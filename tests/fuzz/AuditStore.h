// The audit import under test: a store over the fake host whose audit database is one file in
// memory, and which notes the events that it is to queue.
//
// Thread safety: none.

#ifndef EVENTSYSTEM_TESTS_FUZZ_AUDITSTORE_H
#define EVENTSYSTEM_TESTS_FUZZ_AUDITSTORE_H

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "EventSystem/OrbDBEventStorage.h"
#include "tests/support/TempDir.h"

namespace EventSystemTest {

class AuditStore {
 public:
  AuditStore();
  ~AuditStore();

  // The path of the audit database, and those of the files that SQLite may have beside it.
  const std::filesystem::path& file() const { return m_file; }
  std::filesystem::path journal() const { return m_file.string() + "-journal"; }
  std::filesystem::path wal() const { return m_file.string() + "-wal"; }
  void removeFiles() const;

  // One run; the events of the runs before are forgotten. The n-th event (from 1) is refused with
  // 50. Throws Finding when it goes on without end.
  unsigned int run(unsigned int refused = 0);

  // The texts of the events, those that were refused among them.
  const std::vector<std::string>& events() const;

 private:
  class Store;

  TempDir m_directory{TempDir::inMemory()};
  std::filesystem::path m_file;
  std::unique_ptr<Store> m_store;
};

}  // namespace EventSystemTest

#endif
