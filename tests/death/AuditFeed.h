// Puts rows into an audit database, as off-line services do, also while the queue imports them.
//
// Thread safety: none.

#ifndef EVENTSYSTEM_TESTS_DEATH_AUDITFEED_H
#define EVENTSYSTEM_TESTS_DEATH_AUDITFEED_H

#include <cstdint>
#include <filesystem>
#include <string>

namespace EventSystemTest {

class AuditFeed {
 public:
  // The file is made with the first row.
  explicit AuditFeed(std::filesystem::path file) : m_file(std::move(file)) {}

  // Adds the next row, and gives its number, when it is committed.
  std::uint64_t add();

 private:
  void run(const std::string& sql) const;

  const std::filesystem::path m_file;
  std::uint64_t m_rows = 0;
};

}  // namespace EventSystemTest

#endif
