// `eventctl next`: the event that a consumer would get next, left where it is.

#include <memory>
#include <nlohmann/json.hpp>
#include <string>

#include "apps/common/EventView.h"
#include "apps/common/Output.h"
#include "apps/common/QueueNames.h"
#include "apps/eventctl/Commands.h"
#include "apps/eventctl/EventTable.h"
#include "apps/eventctl/ExitStatus.h"
#include "apps/eventctl/Queues.h"
#include "apps/eventctl/Session.h"

namespace EventApps {
namespace {

int runNext(const GlobalOptions& global, unsigned long after) {
  const auto queues = openToWrite(global);
  queues->requireQueue(global.dsid);
  const auto event = queues->next(after, global.dsid);
  queues->makeDurable();
  Output& output = standardOutput();
  if (event && global.json) {
    output.line(jsonLine(jsonOf(*event)));
  } else if (event) {
    printBlock(output, *event);
  } else if (!global.json && damageMet().empty()) {
    output.line("No event after " + std::to_string(after) + " in " + queueName(global.dsid) + ".");
  }
  output.flush();
  return kDone;
}

}  // namespace

void defineNext(Command parent) {
  Command command =
      parent.add("next", "print the next event of a queue without deleting it",
                 "next --after 12\n\nWaiting audit records are taken into the queue first.\n\n" +
                     std::string(kHexHelp));
  const auto after = std::make_shared<unsigned long>(0);
  command.number("--after", "the first event with a higher id than this", *after);
  command.runs([&global = command.global(), after] { return runNext(global, *after); });
}

}  // namespace EventApps
