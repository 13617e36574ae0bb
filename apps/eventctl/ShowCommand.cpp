// `eventctl show ID`: one event, complete.

#include <memory>
#include <string>

#include "apps/common/EventView.h"
#include "apps/common/Failure.h"
#include "apps/common/Output.h"
#include "apps/common/QueueNames.h"
#include "apps/eventctl/Commands.h"
#include "apps/eventctl/EventTable.h"
#include "apps/eventctl/ExitStatus.h"
#include "apps/eventctl/NumberOption.h"
#include "apps/eventctl/Queues.h"

namespace EventApps {
namespace {

int runShow(const GlobalOptions& global, unsigned long id) {
  const auto queues = openToRead(global);
  queues->requireQueue(global.dsid);
  const auto event = queues->find(id, global.dsid);
  if (!event) {
    throw Failure("there is no event " + std::to_string(id) + " in " + queueName(global.dsid) +
                  "; eventctl list shows which there are");
  }
  Output& output = standardOutput();
  if (global.json) {
    output.line(jsonLine(jsonOf(*event)));
  } else {
    printBlock(output, *event);
  }
  output.flush();
  return kDone;
}

}  // namespace

void defineShow(CLI::App& app, CommandLine& line) {
  CLI::App* const command = defineCommand(app, "show", "show one event completely",
                                          std::string("show 12 --json\n\n") + kHexHelp);
  const auto id = std::make_shared<unsigned long>(0);
  addNumber(*command, "ID", *id, "the event's id", 1UL)->required();
  command->callback([&line, id] { line.run = [&line, id] { return runShow(line.global, *id); }; });
}

}  // namespace EventApps
