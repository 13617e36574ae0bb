// What is stored, read by SQLite itself, as another program would; and what an off-line service
// writes.
//
// Thread safety: none.

#ifndef EVENTSYSTEM_TESTS_POWER_RAWDATABASE_H
#define EVENTSYSTEM_TESTS_POWER_RAWDATABASE_H

#include <filesystem>
#include <string>
#include <vector>

#include "tests/power/Ledger.h"

namespace EventSystemTest {

struct Stored {
  Rows rows;  // of events, dsevents, dataselection
  unsigned long maxId = 0;
  std::string problem;  // empty: the file is sound, and each row is where its id says
};

Stored readStored(const std::filesystem::path& database);

// The contents of the rows in audit.db, in order; nothing when there is no such file. What a
// transaction that was cut off has left is taken back, as by everyone who opens the file.
std::vector<std::string> readAuditRows(const std::filesystem::path& database);

// Adds a row so that it survives power loss; false when that failed. `disk` is one that SQLite
// knows by this name; NULL: the one that it uses by itself.
bool leaveAuditRow(const std::filesystem::path& database, const std::string& content,
                   const char* disk);

}  // namespace EventSystemTest

#endif
