#include "apps/common/ImportLine.h"

#include <string_view>
#include <utility>

#include "apps/common/EventView.h"
#include "apps/common/Numbers.h"
#include "apps/common/QueueNames.h"
#include "apps/common/StoredForm.h"

namespace EventApps {

ImportedEvent ImportLines::read(std::string line) const {
  ImportedEvent imported;
  imported.dsid = m_dsid;
  std::string& problem = imported.problem;
  problem = takeDataSelection(line, imported.dsid);
  if (problem.empty() && line.find('\0') != std::string::npos) {
    problem = "the line contains a NUL byte";
  }
  if (problem.empty()) problem = whyNotAnEventString(line);
  if (!problem.empty()) return imported;
  auto event = parseEvent(withoutId(line));
  problem = whyNotStorable(*event, m_destinationOf(imported.dsid));
  if (problem.empty()) problem = whyStoredChanged(line);
  if (problem.empty()) imported.event = std::move(event);
  return imported;
}

// Takes "dsid=N " off the line. Returns what is wrong with it.
std::string ImportLines::takeDataSelection(std::string& line, unsigned int& dsid) const {
  constexpr std::string_view kPrefix = "dsid=";
  if (!line.starts_with(kPrefix)) return "";
  const std::size_t blank = line.find(' ');
  const std::string number = line.substr(kPrefix.size(), blank - kPrefix.size());
  const auto value = parseNumber<unsigned int>(number);
  if (blank == std::string::npos || !value) return "it does not begin with \"dsid=N \"";
  dsid = *value;
  line.erase(0, blank + 1);
  if (isGlobalQueue(dsid) || m_exists(dsid)) return "";
  return "data selection " + number + " does not exist; add it with: eventctl dataselection add " +
         number;
}

}  // namespace EventApps
