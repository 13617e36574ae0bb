#include "tests/death/StoredFiles.h"

#include <sqlite3.h>

#include <functional>
#include <memory>
#include <stdexcept>

#include "tests/support/TempDir.h"

namespace EventSystemTest {
namespace {

class CopiedDatabase {
 public:
  CopiedDatabase(const std::filesystem::path& file, const std::filesystem::path& directory) {
    const std::filesystem::path copy = directory / file.filename();
    for (const char* part : {"", "-wal", "-journal"}) {
      if (!std::filesystem::exists(file.string() + part)) continue;
      std::filesystem::copy_file(file.string() + part, copy.string() + part);
    }
    sqlite3* database = nullptr;
    const int result = sqlite3_open(copy.c_str(), &database);
    m_database.reset(database);
    if (result != SQLITE_OK) fail(file.string());
  }

  using Row = std::function<void(sqlite3_stmt*)>;
  void query(const std::string& sql, const Row& row) const {
    sqlite3_stmt* prepared = nullptr;
    int result = sqlite3_prepare_v2(m_database.get(), sql.c_str(), -1, &prepared, nullptr);
    const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> statement(prepared,
                                                                          sqlite3_finalize);
    if (result != SQLITE_OK) fail(sql);
    while ((result = sqlite3_step(prepared)) == SQLITE_ROW) row(prepared);
    if (result != SQLITE_DONE) fail(sql);
  }

  bool has(const std::string& table) const {
    bool found = false;
    query("select 1 from sqlite_master where name='" + table + "'",
          [&](sqlite3_stmt*) { found = true; });
    return found;
  }

 private:
  [[noreturn]] void fail(const std::string& what) const {
    throw std::runtime_error(what + ": " + sqlite3_errmsg(m_database.get()));
  }

  std::unique_ptr<sqlite3, int (*)(sqlite3*)> m_database{nullptr, sqlite3_close};
};

std::uint64_t number(sqlite3_stmt* row, int column) {
  return static_cast<std::uint64_t>(sqlite3_column_int64(row, column));
}

std::string text(sqlite3_stmt* row, int column) {
  const unsigned char* const found = sqlite3_column_text(row, column);
  return found == nullptr ? "" : reinterpret_cast<const char*>(found);
}

void readQueues(const CopiedDatabase& database, const std::string& table,
                const std::string& queueColumn, StoredFiles& files) {
  if (!database.has(table)) return;
  database.query("select id,eventid,eventstring," + queueColumn + " from " + table + " order by id",
                 [&](sqlite3_stmt* row) {
                   if (number(row, 0) != number(row, 1)) {
                     files.damage.push_back("row " + text(row, 0) + " of " + table +
                                            " holds event id " + text(row, 1));
                   }
                   files.queues[static_cast<std::uint32_t>(number(row, 3))].emplace_back(
                       number(row, 0), text(row, 2));
                 });
}

void checkFile(const CopiedDatabase& database, StoredFiles& files) {
  database.query("pragma integrity_check", [&](sqlite3_stmt* row) {
    if (text(row, 0) != "ok") files.damage.push_back(text(row, 0));
  });
}

void readEvents(const CopiedDatabase& database, StoredFiles& files) {
  checkFile(database, files);
  readQueues(database, "events", "0", files);
  readQueues(database, "dsevents", "dataselection", files);
  if (!database.has("eventproperties")) return;
  database.query("select propname,propvalue from eventproperties", [&](sqlite3_stmt* row) {
    if (!files.maxIds.emplace(text(row, 0), number(row, 1)).second) {
      files.damage.push_back("two rows " + text(row, 0));
    }
  });
}

void readAuditRows(const CopiedDatabase& database, StoredFiles& files) {
  checkFile(database, files);
  database.query("select content from event",
                 [&](sqlite3_stmt* row) { files.auditContents.insert(text(row, 0)); });
}

}  // namespace

StoredFiles readStoredFiles(const std::filesystem::path& home) {
  const TempDir copies(home.parent_path());
  StoredFiles files;
  const std::filesystem::path events = home / "events.db";
  const std::filesystem::path audit = home / "audit" / "audit.db";
  try {
    if (std::filesystem::exists(events)) readEvents({events, copies.path()}, files);
    if (std::filesystem::exists(audit)) readAuditRows({audit, copies.path()}, files);
  } catch (const std::runtime_error& problem) {
    files.damage.emplace_back(problem.what());
  }
  return files;
}

}  // namespace EventSystemTest
