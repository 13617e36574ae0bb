// `eventctl delete ID...`: removes single events.

#include <memory>
#include <string>
#include <vector>

#include "apps/common/EventView.h"
#include "apps/common/Output.h"
#include "apps/common/QueueNames.h"
#include "apps/eventctl/Commands.h"
#include "apps/eventctl/ExitStatus.h"
#include "apps/eventctl/NumberOption.h"
#include "apps/eventctl/Queues.h"

namespace EventApps {
namespace {

using Ids = std::vector<unsigned long>;

void printDeleted(const GlobalOptions& global, unsigned long id) {
  Output& output = standardOutput();
  if (global.json) {
    output.line(jsonLine({{"deleted", id}, {"dsid", global.dsid}}));
  } else {
    output.line("Deleted event " + std::to_string(id) + ".");
  }
}

int runDelete(const GlobalOptions& global, const Ids& ids) {
  const auto queues = openToWrite(global);
  queues->requireQueue(global.dsid);
  int status = kDone;
  for (const unsigned long id : ids) {
    if (!queues->remove(id, global.dsid)) {
      complain("there is no event " + std::to_string(id) + " in " + queueName(global.dsid));
      status = kFailed;
      continue;
    }
    printDeleted(global, id);
  }
  queues->makeDurable();
  standardOutput().flush();
  return status;
}

}  // namespace

void defineDelete(CLI::App& app, CommandLine& line) {
  CLI::App* const command =
      defineCommand(app, "delete", "delete events by id", "delete 12 13 --dsid 4");
  const auto ids = std::make_shared<Ids>();
  command
      ->add_option_function<std::vector<std::string>>(
          "ID",
          [ids](const std::vector<std::string>& texts) {
            ids->clear();
            for (const std::string& text : texts) {
              ids->push_back(readNumber<unsigned long>("ID", text, 1,
                                                       std::numeric_limits<unsigned long>::max()));
            }
          },
          "the events' ids")
      ->type_name("N")
      ->required();
  command->callback(
      [&line, ids] { line.run = [&line, ids] { return runDelete(line.global, *ids); }; });
}

}  // namespace EventApps
