#include "apps/eventctl/LogCapture.h"

#include <sstream>

namespace EventApps {

// A line of the host's log: TIME LEVEL CODE MESSAGE.
std::vector<LogLine> LogCapture::take() {
  std::vector<LogLine> lines;
  std::ifstream log(file());
  log.seekg(m_position);
  for (std::string text; std::getline(log, text);) {
    m_position += static_cast<std::streamoff>(text.size()) + 1;
    std::istringstream parts(text);
    std::string time;
    LogLine line;
    if (!(parts >> time >> line.level >> line.code)) continue;
    std::getline(parts >> std::ws, line.message);
    lines.push_back(line);
  }
  return lines;
}

}  // namespace EventApps
