// Opens the database file: what marks it as ours, how each kind of connection is set up.
//
// At most one connection, the writer's, writes and checkpoints; SQLite before 3.51.3 can damage a
// WAL that two connections reset at once.
//
// Thread safety: as Connection.

#ifndef EVENTSYSTEM_HOST_DATABASE_DATABASEFILE_H
#define EVENTSYSTEM_HOST_DATABASE_DATABASEFILE_H

#include <filesystem>
#include <string>

#include "host/config/HostConfiguration.h"
#include "host/database/Sqlite.h"

namespace EventSystemHost {

// Why an open database is not one that this program can use, or the empty text. Throws SqliteError.
std::string whyNotOurs(const Connection& connection);

// Creates the file when it does not exist, and marks a new one as ours. Throws HostError when the
// file is another program's or newer than this program, SqliteError when it cannot be used.
void prepareFile(const std::filesystem::path& file);

// The one connection that writes, to a prepared file. Throws as prepareFile().
Connection openWriter(const std::filesystem::path& file, Durability durability);

// A connection that changes nothing. Throws as prepareFile(), and HostError when there is no file.
Connection openReader(const std::filesystem::path& file);

}  // namespace EventSystemHost

#endif
