// Where the database file really is. SQLite keeps a WAL and locks for each name of a file, so
// everything that opens or locks it must use one and the same.
//
// Thread safety: pure functions of the file system.

#ifndef EVENTSYSTEM_HOST_DATABASE_DATABASELOCATION_H
#define EVENTSYSTEM_HOST_DATABASE_DATABASELOCATION_H

#include <filesystem>

namespace EventSystemHost {

// `file` without symbolic links. Throws HostError when what stands there cannot be a database:
// a pipe or another file of a special kind, a link to nowhere, a file with several hard links.
// The file need not exist, and is not opened.
std::filesystem::path locateDatabase(const std::filesystem::path& file);

// Throws HostError unless `file`, if it exists, is a regular file with one name.
void requireOneRegularFile(const std::filesystem::path& file);

}  // namespace EventSystemHost

#endif
