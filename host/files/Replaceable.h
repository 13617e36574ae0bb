// What a new file may take the place of.
//
// Thread safety: a pure function of its argument and the file system.

#ifndef EVENTSYSTEM_HOST_FILES_REPLACEABLE_H
#define EVENTSYSTEM_HOST_FILES_REPLACEABLE_H

#include <filesystem>
#include <string>
#include <system_error>

namespace EventSystemHost {

// Nothing, where nothing or a regular file is there, links followed. Else why it stays: a device,
// for one, would be gone for everybody.
inline std::string whyNotReplaceable(const std::filesystem::path& file) {
  std::error_code error;
  const auto found = std::filesystem::status(file, error);
  if (!std::filesystem::exists(found) || std::filesystem::is_regular_file(found)) return "";
  return file.string() + ": is no regular file, and is not replaced; name another";
}

}  // namespace EventSystemHost

#endif
