// An audit database as the off-line services leave it: a SQLite file with table "event".
//
// Thread safety: none.

#ifndef EVENTSYSTEM_TESTS_SUPPORT_AUDITFILE_H
#define EVENTSYSTEM_TESTS_SUPPORT_AUDITFILE_H

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace EventSystemTest {

// The body of an audit section with that message.
std::string auditContent(const std::string& message);

class AuditFile {
 public:
  // Creates the file and its table where they are missing.
  explicit AuditFile(std::filesystem::path path);

  void add(int id, const std::optional<std::string>& date,
           const std::optional<std::string>& content, int type = 8);
  // An audit row that imports.
  void add(int id, const std::string& message) { add(id, "1700000000", auditContent(message)); }

  // The `_id`s that are left, in order.
  std::vector<int> ids() const;

  // Runs one statement; the first column of its rows. Throws when it fails.
  std::vector<int> run(const std::string& sql) const;

 private:
  std::filesystem::path m_path;
};

}  // namespace EventSystemTest

#endif
