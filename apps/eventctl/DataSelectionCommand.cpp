// `eventctl dataselection`: the table of data selections, which decides what queues there are.

#include <algorithm>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "EventSystem/platform/HostText.h"
#include "EventSystem/platform/OrbDB.h"
#include "apps/eventctl/CommandError.h"
#include "apps/eventctl/Commands.h"
#include "apps/eventctl/DatabaseQueueReader.h"
#include "apps/eventctl/Display.h"
#include "apps/eventctl/EventView.h"
#include "apps/eventctl/NumberOption.h"
#include "apps/eventctl/Output.h"
#include "apps/eventctl/QueueReader.h"
#include "apps/eventctl/Session.h"

namespace EventCtl {
namespace {

using EventSystemHost::Access;
using EventSystemHost::Host;

constexpr const char* kTable = "dataselection";
constexpr std::size_t kLongestName = 255;

struct NewSelection {
  unsigned int id = 0;
  int type = 9;
  std::string name;
};

// The table, created where it is missing.
OrbDB::CTable openTable(const Host& host) {
  auto& database = OrbDB::COrbDatabase::Instance();
  const auto ini = host.configuration().databaseDirectory / "orbdb.ini";
  if (database.GetTable(kTable) == nullptr && database.CheckAddTable(kTable, ini.c_str()) != 0) {
    throw CommandError("the table dataselection could not be created from " + ini.string());
  }
  OrbDB::CTable* const table = database.GetTable(kTable);
  if (table == nullptr) throw CommandError("the table dataselection cannot be opened");
  return *table;
}

std::string quoted(const std::string& text) {
  std::vector<char> field(2 * text.size() + 3);
  QMStringEscapeA(text.c_str(), field.data(), field.size());
  return field.data();
}

OpenHost openWriter(const GlobalOptions& global) {
  return openHost(hostOptions(global, Access::kReadWrite), global.wait);
}

void makeDurable(Host& host) {
  if (host.waitDurable() == 0) return;
  throw CommandError("the change may not survive power loss; the log says why: " +
                     host.configuration().logFile.string());
}

void printSelection(const GlobalOptions& global, const std::string& done, unsigned int id) {
  Output& output = standardOutput();
  if (global.json) {
    output.line(jsonLine({{done, id}}));
  } else {
    output.line("Data selection " + std::to_string(id) + " " + done + ".");
  }
  output.flush();
}

int runAdd(const GlobalOptions& global, const NewSelection& selection) {
  const std::string id = std::to_string(selection.id);
  if (isGlobalQueue(selection.id)) {
    throw CommandError("data selection " + id + " is the global queue, which is always there");
  }
  const auto host = openWriter(global);
  OrbDB::CTable table = openTable(*host);
  if (table.readRecord(id.c_str()) == 0) {
    throw CommandError("data selection " + id + " exists already");
  }
  const std::string record =
      id + "," + std::to_string(selection.type) + "," + quoted(selection.name);
  const int status = table.addRecord(record.c_str(), nullptr, 0);
  if (status >= 1) {
    throw CommandError("data selection " + id + " could not be added (database status " +
                       std::to_string(status) + ")");
  }
  makeDurable(*host);
  printSelection(global, "added", selection.id);
  return kDone;
}

unsigned long eventsOf(const QueueReader& reader, unsigned int dsid) {
  unsigned long count = 0;
  reader.forEach(dsid, 0, [&](const EventView&) { return ++count > 0; });
  return count;
}

[[noreturn]] void stillHolds(unsigned int dsid, unsigned long count, const std::string& advice) {
  throw CommandError("data selection " + std::to_string(dsid) + " still holds " +
                     displayCount(count) + (count == 1 ? " event" : " events") + advice);
}

// The next id of all data selections is found from the events of those that exist; at the cluster
// service, nobody would find the events of one that does not.
void requireEmpty(const Host& host, unsigned int dsid) {
  if (const unsigned long count = eventsOf(*readerOf(host), dsid); count > 0) {
    stillHolds(dsid, count,
               count == 1 ? "; consume or delete it first" : "; consume or delete them first");
  }
  if (host.cluster() == nullptr) return;
  if (const unsigned long count = eventsOf(DatabaseQueueReader(), dsid); count > 0) {
    stillHolds(
        dsid, count,
        " in the database, from before cluster mode; consume them with cluster_mode = 0 in " +
            host.configuration().hostFile.string());
  }
}

int runRemove(const GlobalOptions& global, unsigned int dsid) {
  const std::string id = std::to_string(dsid);
  const auto host = openWriter(global);
  OrbDB::CTable table = openTable(*host);
  if (table.readRecord(id.c_str()) != 0) {
    throw CommandError("data selection " + id + " does not exist");
  }
  requireEmpty(*host, dsid);
  if (table.deleteRecord(id.c_str()) != 0) {
    throw CommandError("data selection " + id + " could not be removed");
  }
  makeDurable(*host);
  printSelection(global, "removed", dsid);
  return kDone;
}

int runShowAll(const GlobalOptions& global) {
  const auto host = openReader(global);
  const auto reader = readerOf(*host);
  Output& output = standardOutput();
  const auto selections = dataSelections();
  Table table(output,
              {{"id", 10, Align::kRight, Style::kBold},
               {"type", 6, Align::kRight},
               {"events", 9, Align::kRight},
               {"name", 0}},
              Overflow::kCut);
  for (const DataSelection& selection : selections) {
    const unsigned long count = eventsOf(*reader, selection.id);
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

// The tables hold the number of a data selection in a signed 32-bit column.
void addId(CLI::App& command, unsigned int& id) {
  constexpr auto kMost = static_cast<unsigned int>(std::numeric_limits<int>::max());
  addNumber(command, "ID", id, "number of the data selection", 0U, kMost)->required();
}

void defineSelectionAdd(CLI::App& parent, CommandLine& line) {
  CLI::App* const command = defineCommand(parent, "add", "add a data selection",
                                          "dataselection add 4 --name 'mail servers'");
  const auto selection = std::make_shared<NewSelection>();
  addId(*command, selection->id);
  addNumber(*command, "--type", selection->type, "type number (default: 9)");
  command->add_option("--name", selection->name, "name")
      ->type_name("TEXT")
      ->check([](const std::string& name) {
        return name.size() <= kLongestName ? "" : "a name has at most 255 bytes";
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

}  // namespace EventCtl
