// A directory of its own for one test, removed with all that is in it.
//
// Thread safety: none.

#ifndef EVENTSYSTEM_TESTS_SUPPORT_TEMPDIR_H
#define EVENTSYSTEM_TESTS_SUPPORT_TEMPDIR_H

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>

namespace EventSystemTest {

class TempDir {
 public:
  explicit TempDir(const std::filesystem::path& parent = std::filesystem::temp_directory_path()) {
    std::string pattern = (parent / "eventsystem-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary directory");
    m_path = pattern;
  }
  ~TempDir() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
  }

  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;

  // A parent directory in memory where the system has one, for tests that write many small files.
  static std::filesystem::path inMemory() {
    const std::filesystem::path memory = "/dev/shm";
    return access(memory.c_str(), W_OK | X_OK) == 0 ? memory
                                                    : std::filesystem::temp_directory_path();
  }

  const std::filesystem::path& path() const { return m_path; }

 private:
  std::filesystem::path m_path;
};

}  // namespace EventSystemTest

#endif
