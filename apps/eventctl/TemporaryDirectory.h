// A directory of its own for a command, removed with everything in it at the end.
//
// Thread safety: none; used by the main thread.

#ifndef EVENTSYSTEM_APPS_EVENTCTL_TEMPORARYDIRECTORY_H
#define EVENTSYSTEM_APPS_EVENTCTL_TEMPORARYDIRECTORY_H

#include <filesystem>

namespace EventApps {

class TemporaryDirectory {
 public:
  // Made in the system's temporary directory. Throws Failure.
  TemporaryDirectory();
  ~TemporaryDirectory();

  TemporaryDirectory(const TemporaryDirectory&) = delete;
  TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

  const std::filesystem::path& path() const { return m_path; }

 private:
  std::filesystem::path m_path;
};

}  // namespace EventApps

#endif
