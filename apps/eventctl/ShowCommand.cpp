// `eventctl show ID`: one event, complete.

#include <memory>
#include <nlohmann/json.hpp>
#include <string>

#include "apps/common/EventView.h"
#include "apps/common/Failure.h"
#include "apps/common/Output.h"
#include "apps/common/QueueNames.h"
#include "apps/eventctl/Commands.h"
#include "apps/eventctl/EventTable.h"
#include "apps/eventctl/ExitStatus.h"
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

void defineShow(Command parent) {
  Command command =
      parent.add("show", "show one event completely", std::string("show 12 --json\n\n") + kHexHelp);
  const auto id = std::make_shared<unsigned long>(0);
  command.number("ID", "the event's id", *id, 1UL, std::numeric_limits<unsigned long>::max(),
                 Need::kRequired);
  command.runs([&global = command.global(), id] { return runShow(global, *id); });
}

}  // namespace EventApps
