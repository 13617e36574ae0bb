// `eventctl dataselection`: the table of data selections, which decides what queues there are.

#include <algorithm>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "apps/common/DataSelections.h"
#include "apps/common/Display.h"
#include "apps/common/EventView.h"
#include "apps/common/Output.h"
#include "apps/common/Table.h"
#include "apps/eventctl/Commands.h"
#include "apps/eventctl/ExitStatus.h"
#include "apps/eventctl/Queues.h"

namespace EventApps {
namespace {

void printSelection(const GlobalOptions& global, const std::string& done, unsigned int id) {
  Output& output = standardOutput();
  if (global.json) {
    output.line(jsonLine({{done, id}}));
  } else {
    output.line("Data selection " + std::to_string(id) + " " + done + ".");
  }
  output.flush();
}

int runAdd(const GlobalOptions& global, const DataSelection& selection) {
  openToWrite(global)->addSelection(selection);
  printSelection(global, "added", selection.id);
  return kDone;
}

int runRemove(const GlobalOptions& global, unsigned int dsid) {
  openToWrite(global)->removeSelection(dsid);
  printSelection(global, "removed", dsid);
  return kDone;
}

int runShowAll(const GlobalOptions& global) {
  Output& output = standardOutput();
  const auto selections = openToRead(global)->selections();
  Table table(output,
              {{"id", 10, Align::kRight, Style::kBold},
               {"type", 6, Align::kRight},
               {"events", 9, Align::kRight},
               {"name", 0}},
              Overflow::kCut);
  for (const auto& [selection, count] : selections) {
    if (global.json) {
      output.line(jsonLine({{"id", selection.id},
                            {"type", selection.type},
                            {"events", count},
                            {"name", selection.name}}));
    } else {
      table.row({std::to_string(selection.id), std::to_string(selection.type), displayCount(count),
                 displayText(selection.name)});
    }
  }
  if (selections.empty() && !global.json) output.line("No data selections.");
  output.flush();
  return kDone;
}

void addId(Command& command, unsigned int& id) {
  command.number("ID", "number of the data selection", id, 0U, kHighestSelection, Need::kRequired);
}

void defineSelectionAdd(Command& parent) {
  Command command =
      parent.add("add", "add a data selection", "dataselection add 4 --name 'mail servers'");
  const auto selection = std::make_shared<DataSelection>();
  addId(command, selection->id);
  command.number("--type", "type number (default: 9)", selection->type);
  command.value("--name", "TEXT", "name", [selection](const std::string& name) {
    selection->name = name;
    return name.size() <= kLongestSelectionName ? "" : "a name has at most 255 bytes";
  });
  command.runs([&global = command.global(), selection] { return runAdd(global, *selection); });
}

}  // namespace

void defineDataSelection(Command parent) {
  Command group =
      parent.add("dataselection", "add, list or remove data selections", "dataselection list");
  group.requireCommand();
  defineSelectionAdd(group);

  Command list = group.add("list", "list the data selections", "dataselection list --json");
  list.runs([&global = list.global()] { return runShowAll(global); });

  Command remove = group.add("remove", "remove a data selection",
                             "dataselection remove 4\n\n"
                             "It is refused while the data selection holds events.");
  const auto id = std::make_shared<unsigned int>(0);
  addId(remove, *id);
  remove.runs([&global = remove.global(), id] { return runRemove(global, *id); });
}

}  // namespace EventApps
