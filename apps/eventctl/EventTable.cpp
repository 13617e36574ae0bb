#include "apps/eventctl/EventTable.h"

#include <algorithm>
#include <utility>

#include "apps/common/Display.h"
#include "apps/common/EventKinds.h"

namespace EventApps {
namespace {

// The texts first, because they say most, then the numbers. A key that is no field of the kind is
// the constant version of an activity's section.
std::string details(const EventView& event) {
  const EventKind* const kind = kindOf(event.type);
  std::string texts;
  std::string numbers;
  for (const auto& [key, value] : event.fields) {
    if (isText(kind, key)) {
      std::string first = displayText(value);
      if (!texts.empty()) first.append(" ").append(key).append("=").append(texts);
      texts = std::move(first);
    } else if (fieldOf(kind, key) != nullptr) {
      numbers.append(" ").append(key).append("=").append(value);
    }
  }
  return texts + numbers;
}

void printPair(Output& output, const std::string& key, const std::string& value) {
  constexpr std::size_t kKeyColumns = 16;
  const std::size_t columns = output.columns() - kKeyColumns;
  std::string before = key + ":";
  before.resize(std::max(kKeyColumns, before.size()), ' ');
  for (const std::string& line : wrapToWidth(value, columns)) {
    output.line(styled(output, Style::kBold, before) + line);
    before.assign(kKeyColumns, ' ');
  }
}

}  // namespace

Table eventTable(Output& output, Overflow overflow) {
  return Table(output,
               {{"id", 6, Align::kRight, Style::kBold},
                {"time (UTC)", 19, Align::kLeft, Style::kDim},
                {"type", 12, Align::kLeft, Style::kBlue},
                {"dsid", 4, Align::kRight, Style::kPlain},
                {"event", 0, Align::kLeft, Style::kPlain}},
               overflow);
}

std::vector<std::string> tableRow(const EventView& event) {
  const std::string problem = event.problem.empty() ? "" : "[" + event.problem + "] ";
  const std::string text = event.fields.empty() ? displayText(event.eventString) : details(event);
  return {std::to_string(event.id), displayTime(event.date, false), kindName(event.type),
          std::to_string(event.dsid), problem + text};
}

void printBlock(Output& output, const EventView& event) {
  printPair(output, "id", std::to_string(event.id));
  printPair(output, "time", displayTime(event.date, false) + " UTC");
  printPair(output, "type", kindName(event.type) + " (" + std::to_string(event.type) + ")");
  printPair(output, "dsid", std::to_string(event.dsid));
  for (const auto& [key, value] : event.fields) printPair(output, key, displayText(value));
  if (!event.problem.empty()) printPair(output, "problem", event.problem);
  printPair(output, "event string", displayText(event.eventString));
}

}  // namespace EventApps
