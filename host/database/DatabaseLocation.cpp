#include "host/database/DatabaseLocation.h"

#include <sys/stat.h>

#include <string>
#include <system_error>

#include "host/Host.h"

namespace EventSystemHost {

std::filesystem::path locateDatabase(const std::filesystem::path& file) {
  std::error_code error;
  std::filesystem::path located =
      std::filesystem::weakly_canonical(std::filesystem::absolute(file), error);
  if (error) throw HostError(file.string() + ": cannot be found: " + error.message());
  if (std::filesystem::is_symlink(located, error)) {
    throw HostError(located.string() + ": is a symbolic link to " +
                    std::filesystem::read_symlink(located, error).string() +
                    ", which does not exist; remove the link or set [database] file in host.ini");
  }
  requireOneRegularFile(located);
  return located;
}

void requireOneRegularFile(const std::filesystem::path& file) {
  struct stat status {};
  // What cannot be looked at cannot be opened either, and opening it says why.
  if (stat(file.c_str(), &status) != 0) return;
  if (!S_ISREG(status.st_mode)) {
    throw HostError(file.string() +
                    ": is not a regular file; set [database] file in host.ini to a file");
  }
  if (status.st_nlink > 1) {
    throw HostError(file.string() + ": has " + std::to_string(status.st_nlink) +
                    " hard links; programs that use it by different names damage it. Remove the "
                    "other names (find -samefile lists them) or make copies of them");
  }
}

}  // namespace EventSystemHost
