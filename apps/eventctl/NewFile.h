// A file for its owner only that is there completely and durable, or not at all.
//
// Thread safety: none; used by the main thread.

#ifndef EVENTSYSTEM_APPS_EVENTCTL_NEWFILE_H
#define EVENTSYSTEM_APPS_EVENTCTL_NEWFILE_H

#include <filesystem>
#include <string>
#include <string_view>

namespace EventApps {

class NewFile {
 public:
  // Nothing has the file's name before publish(). Throws Failure, also when the name is taken and
  // `overwrite` is false.
  NewFile(std::filesystem::path file, bool overwrite);
  // Removes what was not published.
  ~NewFile();

  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;

  // Throws Failure.
  void line(std::string_view text);

  // Throws Failure; the file is then not there, or what it was.
  void publish();

 private:
  [[noreturn]] void fail(const char* what) const;
  void flush();
  void giveName() const;

  std::filesystem::path m_file;
  bool m_overwrite;
  std::string m_temporary;
  int m_descriptor;
  std::string m_buffer;
};

}  // namespace EventApps

#endif
