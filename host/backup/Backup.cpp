#include "host/backup/Backup.h"

#include <array>
#include <string>

#include "host/Host.h"
#include "host/backup/DatabaseCopy.h"
#include "host/backup/SourceFile.h"
#include "host/config/DistinctFiles.h"
#include "host/database/DatabaseFile.h"
#include "host/files/Replaceable.h"

namespace EventSystemHost {

DatabaseContent backUpDatabase(const HostConfiguration& configuration,
                               const std::filesystem::path& file, bool overwrite,
                               const CopyProgress& progress) {
  requireNotInUse(file, configuration);
  std::error_code error;
  if (!overwrite && std::filesystem::exists(std::filesystem::symlink_status(file, error))) {
    throw HostError(file.string() + ": exists already");
  }
  if (const std::string problem = whyNotReplaceable(file); !problem.empty()) {
    throw HostError(problem);
  }
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
