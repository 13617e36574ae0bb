// Whether a database file was changed.
//
// Thread safety: any thread.

#ifndef EVENTSYSTEM_APPS_COMMON_FILESIGNATURE_H
#define EVENTSYSTEM_APPS_COMMON_FILESIGNATURE_H

#include <filesystem>
#include <string>

namespace EventApps {

// What tells whether a database file and its journal were changed: times, sizes and inodes. Empty
// when there is no file.
std::string fileSignature(const std::filesystem::path& database);

}  // namespace EventApps

#endif
