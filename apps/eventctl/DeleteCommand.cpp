// `eventctl delete ID...`: removes single events.

#include <memory>
#include <string>
#include <vector>

#include "apps/common/EventView.h"
#include "apps/common/Failure.h"
#include "apps/common/Output.h"
#include "apps/common/QueueNames.h"
#include "apps/common/QueueReader.h"
#include "apps/eventctl/Commands.h"
#include "apps/eventctl/ExitStatus.h"
#include "apps/eventctl/NumberOption.h"
#include "apps/eventctl/Session.h"

namespace EventApps {
namespace {

using Ids = std::vector<unsigned long>;

// A session is content with the service's word that it has deleted an event. This command looks.
void removeForSure(QueueSession& session, const QueueReader& reader, unsigned long id,
                   unsigned int dsid) {
  session.queues().remove(id, dsid);
  if (!reader.find(id, dsid)) return;
  throw Failure("event " + std::to_string(id) + " is still in " + queueName(dsid) +
                " after it was deleted");
}

void printDeleted(const GlobalOptions& global, unsigned long id) {
  Output& output = standardOutput();
  if (global.json) {
    output.line(jsonLine({{"deleted", id}, {"dsid", global.dsid}}));
  } else {
    output.line("Deleted event " + std::to_string(id) + ".");
  }
}

int runDelete(const GlobalOptions& global, const Ids& ids) {
  QueueSession session(global);
  const auto reader = readerOf(session.host());
  int status = kDone;
  for (const unsigned long id : ids) {
    if (!reader->find(id, global.dsid)) {
      complain("there is no event " + std::to_string(id) + " in " + queueName(global.dsid));
      status = kFailed;
      continue;
    }
    removeForSure(session, *reader, id, global.dsid);
    printDeleted(global, id);
  }
  session.queues().makeDurable();
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
