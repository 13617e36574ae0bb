// `eventctl next`: the event that a consumer would get next, left where it is.

#include <memory>
#include <string>

#include "apps/eventctl/CommandError.h"
#include "apps/eventctl/Commands.h"
#include "apps/eventctl/EventView.h"
#include "apps/eventctl/NumberOption.h"
#include "apps/eventctl/Output.h"
#include "apps/eventctl/Session.h"

namespace EventCtl {
namespace {

int runNext(const GlobalOptions& global, unsigned long after) {
  QueueSession session(global);
  const auto event = session.next(after, global.dsid);
  session.makeDurable();
  Output& output = standardOutput();
  if (event && global.json) {
    output.line(jsonLine(jsonOf(viewOf(*event, global.dsid))));
  } else if (event) {
    printBlock(output, viewOf(*event, global.dsid));
  } else if (!global.json && damageMet().empty()) {
    output.line("No event after " + std::to_string(after) + " in " + queueName(global.dsid) + ".");
  }
  output.flush();
  return kDone;
}

}  // namespace

void defineNext(CLI::App& app, CommandLine& line) {
  CLI::App* const command =
      defineCommand(app, "next", "print the next event of a queue without deleting it",
                    "next --after 12\n\nWaiting audit records are taken into the queue first.\n\n" +
                        std::string(kHexHelp));
  const auto after = std::make_shared<unsigned long>(0);
  addNumber(*command, "--after", *after, "the first event with a higher id than this");
  command->callback(
      [&line, after] { line.run = [&line, after] { return runNext(line.global, *after); }; });
}

}  // namespace EventCtl
