// The file that a copy is made of, and how one of unknown origin is opened.
//
// Thread safety: any thread.

#ifndef EVENTSYSTEM_HOST_BACKUP_SOURCEFILE_H
#define EVENTSYSTEM_HOST_BACKUP_SOURCEFILE_H

#include <filesystem>

#include "host/Host.h"
#include "host/database/Sqlite.h"

namespace EventSystemHost {

// Opens a backup for reading and leaves no file beside it. Throws HostError when it is no database
// of ours.
Connection openBackup(const std::filesystem::path& file);

// What `work` returns; its SqliteError becomes a HostError that names the file.
template <class Work>
auto withFileNamed(const std::filesystem::path& file, const Work& work) {
  try {
    return work();
  } catch (const SqliteError& problem) {
    throw HostError(file.string() + ": " + problem.what() + " (status " +
                    std::to_string(problem.status()) + ")");
  }
}

}  // namespace EventSystemHost

#endif
