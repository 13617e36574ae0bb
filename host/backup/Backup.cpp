#include "host/backup/Backup.h"

#include <array>
#include <string>

#include "host/Host.h"
#include "host/backup/DatabaseCopy.h"
#include "host/backup/SourceFile.h"
#include "host/database/DatabaseFile.h"

namespace EventSystemHost {

namespace {

// A device, for one, would be gone for everybody.
void requireReplaceable(const std::filesystem::path& file) {
  std::error_code error;
  const auto found = std::filesystem::status(file, error);
  if (!std::filesystem::exists(found) || std::filesystem::is_regular_file(found)) return;
  throw HostError(file.string() + ": is no regular file, and is not replaced; name another");
}

}  // namespace

DatabaseContent backUpDatabase(const HostConfiguration& configuration,
                               const std::filesystem::path& file, bool overwrite,
                               const CopyProgress& progress) {
  requireOtherFile(file, configuration.databaseFile);
  std::error_code error;
  if (!overwrite && std::filesystem::exists(std::filesystem::symlink_status(file, error))) {
    throw HostError(file.string() + ": exists already");
  }
  requireReplaceable(file);
  const Connection source = withFileNamed(configuration.databaseFile,
                                          [&] { return openReader(configuration.databaseFile); });
  DatabaseCopy copy(file);
  DatabaseContent content = withFileNamed(configuration.databaseFile, [&] {
    copy.fill(source, progress);
    return copy.seal(configuration.databaseFile);
  });
  copy.publish(overwrite);
  return content;
}

}  // namespace EventSystemHost
