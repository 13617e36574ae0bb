// Whether a file is still where it was. What is written to one that was removed, or has another in
// its place, is lost with the last process that has it open.
//
// Thread safety: any thread.

#ifndef EVENTSYSTEM_APPS_EVENTD_QUEUE_FILEPLACE_H
#define EVENTSYSTEM_APPS_EVENTD_QUEUE_FILEPLACE_H

#include <sys/stat.h>

#include <filesystem>
#include <utility>

namespace EventApps {

class FilePlace {
 public:
  explicit FilePlace(std::filesystem::path file) : m_file(std::move(file)) {
    ::stat(m_file.c_str(), &m_state);
  }

  const std::filesystem::path& file() const { return m_file; }

  bool isKept() const {
    struct stat now {};
    return ::stat(m_file.c_str(), &now) == 0 && now.st_dev == m_state.st_dev &&
           now.st_ino == m_state.st_ino;
  }

 private:
  const std::filesystem::path m_file;
  struct stat m_state {};
};

}  // namespace EventApps

#endif
