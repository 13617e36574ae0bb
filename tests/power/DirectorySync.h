// Flushes of directories, which the host and SQLite ask the C library for. Linking
// DirectorySync.cpp into a program is what makes DiskLog see them.
//
// Thread safety: any thread.

#ifndef EVENTSYSTEM_TESTS_POWER_DIRECTORYSYNC_H
#define EVENTSYSTEM_TESTS_POWER_DIRECTORYSYNC_H

namespace EventSystemTest {

using DirectoryFlushFails = bool (*)();

// Each flush of a directory from now on asks whether it fails; NULL: none does.
void failDirectoryFlushes(DirectoryFlushFails asked);

}  // namespace EventSystemTest

#endif
