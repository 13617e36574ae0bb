#include "apps/eventd/metrics/DiskFigures.h"

#include <system_error>

namespace EventApps {
namespace {

std::uint64_t sizeOf(const std::filesystem::path& file) {
  std::error_code error;
  const auto size = std::filesystem::file_size(file, error);
  return error ? 0 : size;
}

}  // namespace

DiskFigures diskFiguresOf(const std::filesystem::path& databaseFile) {
  std::error_code error;
  const auto space = std::filesystem::space(databaseFile.parent_path(), error);
  return {sizeOf(databaseFile), sizeOf(databaseFile.string() + "-wal"),
          error ? 0 : space.available};
}

}  // namespace EventApps
