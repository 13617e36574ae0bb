// `eventctl delete ID...`: removes single events.

#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "apps/common/EventView.h"
#include "apps/common/Output.h"
#include "apps/common/QueueNames.h"
#include "apps/eventctl/Commands.h"
#include "apps/eventctl/ExitStatus.h"
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

std::string readIds(const std::vector<std::string>& texts, Ids& ids) {
  ids.clear();
  for (const std::string& text : texts) {
    constexpr auto kHighest = std::numeric_limits<unsigned long>::max();
    const std::string problem = Command::readNumber(text, ids.emplace_back(), 1UL, kHighest);
    if (!problem.empty()) return problem;
  }
  return {};
}

}  // namespace

void defineDelete(Command parent) {
  Command command = parent.add("delete", "delete events by id", "delete 12 13 --dsid 4");
  const auto ids = std::make_shared<Ids>();
  command.values(
      "ID", "N", "the events' ids",
      [ids](const std::vector<std::string>& texts) { return readIds(texts, *ids); },
      Need::kRequired);
  command.runs([&global = command.global(), ids] { return runDelete(global, *ids); });
}

}  // namespace EventApps
