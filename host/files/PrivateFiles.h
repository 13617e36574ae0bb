// Files and directories that only the server's own account may read, created so that they survive
// power loss.
//
// Thread safety: any thread. All of these throw HostError, naming the file, when they fail.

#ifndef EVENTSYSTEM_HOST_FILES_PRIVATEFILES_H
#define EVENTSYSTEM_HOST_FILES_PRIVATEFILES_H

#include <filesystem>
#include <string_view>

#include "EventSystem/Export.h"

namespace EventSystemHost {

// Creates what is missing of the directory's path, each part with mode 0700.
EVENTSYSTEM_HOST_API void makePrivateDirectories(const std::filesystem::path& directory);

// Makes the entries of a directory durable.
EVENTSYSTEM_HOST_API void syncDirectory(const std::filesystem::path& directory);

// Creates an empty file with mode 0600, whatever the umask is. False when it exists.
EVENTSYSTEM_HOST_API bool makePrivateFile(const std::filesystem::path& file);

// For root: throws when the file or directory belongs to somebody else, or others may write to it.
// A link put there would lead root's writing to any file.
EVENTSYSTEM_HOST_API void requireOwn(const std::filesystem::path& file);

// Gives the file this content with mode 0600: after a crash it has all of it or does not exist.
EVENTSYSTEM_HOST_API void writePrivateFile(const std::filesystem::path& file,
                                           std::string_view content);

}  // namespace EventSystemHost

#endif
