// `eventctl dataselection`: the table of data selections, which decides what queues there are.

#include <algorithm>
#include <memory>
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
#include "apps/eventctl/NumberOption.h"
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

void addId(CLI::App& command, unsigned int& id) {
  addNumber(command, "ID", id, "number of the data selection", 0U, kHighestSelection)->required();
}

void defineSelectionAdd(CLI::App& parent, CommandLine& line) {
  CLI::App* const command = defineCommand(parent, "add", "add a data selection",
                                          "dataselection add 4 --name 'mail servers'");
  const auto selection = std::make_shared<DataSelection>();
  addId(*command, selection->id);
  addNumber(*command, "--type", selection->type, "type number (default: 9)");
  command->add_option("--name", selection->name, "name")
      ->type_name("TEXT")
      ->check([](const std::string& name) {
        return name.size() <= kLongestSelectionName ? "" : "a name has at most 255 bytes";
      });
  command->callback([&line, selection] {
    line.run = [&line, selection] { return runAdd(line.global, *selection); };
  });
}

}  // namespace

void defineDataSelection(CLI::App& app, CommandLine& line) {
  CLI::App* const parent = defineCommand(
      app, "dataselection", "add, list or remove data selections", "dataselection list");
  parent->require_subcommand(1);
  defineSelectionAdd(*parent, line);

  CLI::App* const list =
      defineCommand(*parent, "list", "list the data selections", "dataselection list --json");
  list->callback([&line] { line.run = [&line] { return runShowAll(line.global); }; });

  CLI::App* const remove = defineCommand(*parent, "remove", "remove a data selection",
                                         "dataselection remove 4\n\n"
                                         "It is refused while the data selection holds events.");
  const auto id = std::make_shared<unsigned int>(0);
  addId(*remove, *id);
  remove->callback([&line, id] { line.run = [&line, id] { return runRemove(line.global, *id); }; });
}

}  // namespace EventApps
