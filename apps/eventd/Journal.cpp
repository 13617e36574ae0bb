#include "apps/eventd/Journal.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <new>
#include <string>

#include "apps/common/Display.h"

namespace EventApps {
namespace {

using EventSystemHost::LogLevel;

// Whether standard error is the stream that the service manager has connected to the journal.
bool leadsToTheJournal() {
  const char* const stream = std::getenv("JOURNAL_STREAM");
  struct stat error {};
  if (stream == nullptr || ::fstat(STDERR_FILENO, &error) != 0) return false;
  return std::to_string(error.st_dev) + ":" + std::to_string(error.st_ino) == stream;
}

// The weights of syslog, which the journal understands at the beginning of a line.
const char* weightOf(LogLevel level) {
  switch (level) {
    case LogLevel::kError:
      return "<3>";
    case LogLevel::kWarning:
      return "<4>";
    default:
      return "<6>";
  }
}

}  // namespace

Journal::Journal(const std::filesystem::path& logFile)
    : m_isThere(logFile != "-" && leadsToTheJournal()) {
  if (!m_isThere) return;
  m_observer.emplace([this](LogLevel level, int /*code*/, std::string_view message) {
    try {
      tell(level, message);
    } catch (const std::bad_alloc&) {
      // The log has the line, too.
    }
  });
}

void Journal::tell(LogLevel level, std::string_view message) const {
  if (!m_isThere) return;
  const std::string line = weightOf(level) + displayText(message) + "\n";
  // All at once, so that lines of several threads do not mix. Whether it arrives changes nothing.
  [[maybe_unused]] const ssize_t written = ::write(STDERR_FILENO, line.data(), line.size());
}

}  // namespace EventApps
