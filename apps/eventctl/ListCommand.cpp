// `eventctl list`: the events of a queue, read beside a running writer.

#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "apps/common/EventKinds.h"
#include "apps/common/EventView.h"
#include "apps/common/Output.h"
#include "apps/common/QueueNames.h"
#include "apps/common/Table.h"
#include "apps/eventctl/Commands.h"
#include "apps/eventctl/EventTable.h"
#include "apps/eventctl/ExitStatus.h"
#include "apps/eventctl/KindOption.h"
#include "apps/eventctl/Queues.h"
#include "apps/eventctl/Session.h"
#include "apps/eventctl/StopSignals.h"

namespace EventApps {
namespace {

struct ListOptions {
  unsigned long after = 0;
  unsigned long limit = 0;  // 0: no limit
  const EventKind* kind = nullptr;
  bool follow = false;
};

// Prints events one by one until the limit, and knows whether there were more.
class Listing {
 public:
  Listing(const GlobalOptions& global, const ListOptions& options)
      : m_json(global.json), m_options(options), m_table(eventTable(m_output, Overflow::kCut)) {}

  bool add(const EventView& event) {
    m_seen = event.id;
    if (m_options.kind != nullptr && event.type != m_options.kind->number) return true;
    if (isFull()) {
      m_more = true;
      return false;
    }
    print(event);
    ++m_count;
    m_last = event.id;
    return true;
  }

  bool isFull() const { return m_options.limit != 0 && m_count == m_options.limit; }
  unsigned long seen() const { return m_seen; }
  void flush() { m_output.flush(); }

  void finish(unsigned int dsid) {
    if (!m_json && m_count == 0 && damageMet().empty())
      m_output.line("No events in " + queueName(dsid) + ".");
    if (!m_json && m_more) {
      m_output.line("More follow: --after " + std::to_string(m_last) + " continues the list.");
    }
    m_output.flush();
  }

 private:
  void print(const EventView& event) {
    if (m_json) {
      m_output.line(jsonLine(jsonOf(event)));
    } else {
      m_table.row(tableRow(event));
    }
  }

  Output& m_output = standardOutput();
  bool m_json;
  const ListOptions& m_options;
  Table m_table;
  unsigned long m_count = 0;
  unsigned long m_last = 0;
  unsigned long m_seen = m_options.after;  // also those of other types
  bool m_more = false;
};

void listOnce(const GlobalOptions& global, const ListOptions& options, ReadableQueues& queues) {
  Listing listing(global, options);
  queues.forEach(global.dsid, options.after, options.kind,
                 [&](const EventView& event) { return listing.add(event); });
  listing.finish(global.dsid);
}

void follow(const GlobalOptions& global, const ListOptions& options, ReadableQueues& queues) {
  const StopSignals stop;
  Output& output = standardOutput();
  output.interruptBy(stop.descriptor());
  const Listener listener{stop.descriptor(), output.descriptor()};
  Listing listing(global, options);
  Woken woken = Woken::kMaybeMore;
  while (woken == Woken::kMaybeMore && damageMet().empty()) {
    queues.forEach(global.dsid, listing.seen(), nullptr, [&](const EventView& event) {
      return listing.add(event) && !listing.isFull() && !stop.arrived();
    });
    listing.flush();
    if (listing.isFull() || stop.arrived()) break;
    woken = queues.waitForMore(global.dsid, listing.seen(), listener);
  }
  output.interruptBy(-1);
  if (woken == Woken::kOutputClosed) throw readerHasGone();
}

int runList(const GlobalOptions& global, const ListOptions& options) {
  const auto queues = openToRead(global);
  queues->requireQueue(global.dsid);
  if (!options.follow) {
    listOnce(global, options, *queues);
    return kDone;
  }
  try {
    follow(global, options, *queues);
  } catch (const OutputInterrupted&) {
    standardOutput().interruptBy(-1);  // stopped while its reader did not read
  }
  return kDone;
}

}  // namespace

void defineList(Command parent) {
  Command command = parent.add("list", "list the events of a queue",
                               std::string("list --type audit --limit 20\n\n") + kHexHelp);
  const auto options = std::make_shared<ListOptions>();
  command.number("--after", "only events with a higher id than this", options->after);
  command.number("--limit", "at most so many events", options->limit, 1UL);
  addKindOption(command, options->kind);
  command.flag("--follow", "wait for more until SIGINT or SIGTERM", options->follow);
  command.runs([&global = command.global(), options] { return runList(global, *options); });
}

}  // namespace EventApps
