#include "host/backup/SourceFile.h"

#include <array>
#include <cctype>
#include <string>
#include <system_error>

#include "host/database/DatabaseFile.h"
#include "host/database/DatabaseLocation.h"

namespace EventSystemHost {

namespace {

bool isEmptyOrMissing(const std::filesystem::path& file) {
  std::error_code error;
  const auto bytes = std::filesystem::file_size(file, error);
  return error || bytes == 0;
}

// A path as SQLite reads it in a URI.
std::string uriOf(const std::filesystem::path& file) {
  constexpr std::array<char, 17> kDigits = {"0123456789ABCDEF"};
  std::string uri = "file:";
  for (const char c : std::filesystem::absolute(file).string()) {
    const auto byte = static_cast<unsigned char>(c);
    if (std::isalnum(byte) != 0 || c == '/' || c == '.' || c == '-' || c == '_') {
      uri += c;
    } else {
      uri += {'%', kDigits.at(byte >> 4), kDigits.at(byte & 0xf)};
    }
  }
  return uri;
}

// Without a log beside it nobody is writing to it, and nothing but the file need be looked at. That
// way it can also be read from where nothing can be written.
Connection openAnySource(const std::filesystem::path& file) {
  if (!isEmptyOrMissing(file.string() + "-wal") || !isEmptyOrMissing(file.string() + "-journal")) {
    return Connection(file, SQLITE_OPEN_READONLY);
  }
  return Connection(uriOf(file) + "?immutable=1", SQLITE_OPEN_READONLY | SQLITE_OPEN_URI);
}

}  // namespace

Connection openBackup(const std::filesystem::path& file) {
  std::error_code error;
  if (!std::filesystem::exists(file, error)) throw HostError(file.string() + ": does not exist");
  requireOneRegularFile(file);
  return withFileNamed(file, [&] {
    Connection connection = openAnySource(file);
    if (const std::string problem = whyNotOurs(connection); !problem.empty()) {
      throw HostError(file.string() + ": " + problem);
    }
    return connection;
  });
}

}  // namespace EventSystemHost
