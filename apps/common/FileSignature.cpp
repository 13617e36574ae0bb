#include "apps/common/FileSignature.h"

#include <sys/stat.h>

namespace EventApps {

std::string fileSignature(const std::filesystem::path& database) {
  std::string signature;
  for (const char* const suffix : {"", "-wal", "-journal"}) {
    struct stat status {};
    if (::stat((database.string() + suffix).c_str(), &status) != 0) continue;
    signature += suffix + std::to_string(status.st_ino) + ":" + std::to_string(status.st_size) +
                 ":" + std::to_string(status.st_mtim.tv_sec) + "." +
                 std::to_string(status.st_mtim.tv_nsec) + ";";
  }
  return signature;
}

}  // namespace EventApps
