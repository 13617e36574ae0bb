// `eventctl consume`: prints the events of a queue in id order and deletes each one after it was
// printed; with --follow, also those that come later.

#include <memory>
#include <string>
#include <utility>

#include "apps/common/EventView.h"
#include "apps/common/Output.h"
#include "apps/common/QueueNames.h"
#include "apps/eventctl/ClusterFollower.h"
#include "apps/eventctl/Commands.h"
#include "apps/eventctl/Consumer.h"
#include "apps/eventctl/DaemonAddress.h"
#include "apps/eventctl/DaemonFollower.h"
#include "apps/eventctl/DatabaseFollower.h"
#include "apps/eventctl/EventTable.h"
#include "apps/eventctl/ExitStatus.h"
#include "apps/eventctl/Queues.h"
#include "apps/eventctl/Session.h"
#include "apps/eventctl/StopSignals.h"

namespace EventApps {
namespace {

int consumeOnce(const GlobalOptions& global, const ConsumeOptions& options) {
  Consumer consumer(global, options);
  const auto queues = openToWrite(global);
  queues->requireQueue(global.dsid);
  consumer.drain(*queues, [] { return false; });
  if (!global.json && consumer.count() == 0 && damageMet().empty()) {
    standardOutput().line("No events in " + queueName(global.dsid) + ".");
  }
  return kDone;
}

void followWith(const GlobalOptions& global, const ConsumeOptions& options,
                const StopSignals& stop) {
  Consumer consumer(global, options);
  if (const auto daemon = findDaemon(global)) {
    DaemonFollower(global, stop, consumer, *daemon).run();
    return;
  }
  auto host = openHost(hostOptions(global, EventSystemHost::Access::kReadWrite), global.wait);
  const auto configuration = host->configuration();
  if (configuration.clusterMode) {
    ClusterFollower(global, stop, consumer, configuration).run(std::move(host));
  } else {
    DatabaseFollower(global, stop, consumer, configuration).run(std::move(host));
  }
}

int follow(const GlobalOptions& global, const ConsumeOptions& options) {
  const StopSignals stop;
  standardOutput().interruptBy(stop.descriptor());
  try {
    followWith(global, options, stop);
  } catch (const OutputInterrupted&) {
    // The event in hand was not printed and stays.
  }
  standardOutput().interruptBy(-1);
  return kDone;
}

int runConsume(const GlobalOptions& global, const ConsumeOptions& options) {
  return options.follow ? follow(global, options) : consumeOnce(global, options);
}

}  // namespace

void defineConsume(Command parent) {
  Command command =
      parent.add("consume", "print events and delete each one after that",
                 "consume --dsid 4 --json --follow | my-handler\n\n"
                 "An event that could not be printed is not deleted. Events that cannot be read\n"
                 "are removed from the queue and logged.\n\n"
                 "--follow has the database only while it takes events out of it. In cluster mode\n"
                 "it has the database for its start; then it looks at the cluster service four\n"
                 "times a second, leaves the database to others, logs to standard error, and when\n"
                 "the service fails says so there and tries again. Audit records that are left\n"
                 "meanwhile are taken up by the next command that writes.\n\n" +
                     std::string(kHexHelp));
  const auto options = std::make_shared<ConsumeOptions>();
  command.number("--limit", "at most so many events", options->limit, 1UL);
  command.flag("--keep", "print without deleting", options->keep);
  command.flag("--follow",
               "wait for more until SIGINT or SIGTERM; other\nprocesses can write meanwhile",
               options->follow);
  command.runs([&global = command.global(), options] { return runConsume(global, *options); });
}

}  // namespace EventApps
