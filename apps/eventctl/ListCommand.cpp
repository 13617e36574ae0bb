// `eventctl list`: the events of a queue, read beside a running writer.

#include <memory>
#include <optional>
#include <string>

#include "apps/common/EventKinds.h"
#include "apps/common/EventView.h"
#include "apps/common/Output.h"
#include "apps/common/QueueNames.h"
#include "apps/common/QueueReader.h"
#include "apps/common/Table.h"
#include "apps/eventctl/Commands.h"
#include "apps/eventctl/EventTable.h"
#include "apps/eventctl/ExitStatus.h"
#include "apps/eventctl/NumberOption.h"
#include "apps/eventctl/Session.h"

namespace EventApps {
namespace {

struct ListOptions {
  unsigned long after = 0;
  unsigned long limit = 0;  // 0: no limit
  const EventKind* kind = nullptr;
};

// Prints events one by one until the limit, and knows whether there were more.
class Listing {
 public:
  Listing(const GlobalOptions& global, const ListOptions& options)
      : m_json(global.json), m_options(options), m_table(eventTable(m_output, Overflow::kCut)) {}

  bool add(const EventView& event) {
    if (m_options.kind != nullptr && event.type != m_options.kind->number) return true;
    if (m_options.limit != 0 && m_count == m_options.limit) {
      m_more = true;
      return false;
    }
    print(event);
    ++m_count;
    m_last = event.id;
    return true;
  }

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
  bool m_more = false;
};

int runList(const GlobalOptions& global, const ListOptions& options) {
  const auto host = openReader(global);
  requireDataSelection(global.dsid);
  Listing listing(global, options);
  readerOf(*host)->forEach(global.dsid, options.after,
                           [&](const EventView& event) { return listing.add(event); });
  listing.finish(global.dsid);
  return kDone;
}

}  // namespace

void defineList(CLI::App& app, CommandLine& line) {
  CLI::App* const command =
      defineCommand(app, "list", "list the events of a queue",
                    std::string("list --type audit --limit 20\n\n") + kHexHelp);
  const auto options = std::make_shared<ListOptions>();
  addNumber(*command, "--after", options->after, "only events with a higher id than this");
  addNumber(*command, "--limit", options->limit, "at most so many events", 1UL);
  command
      ->add_option_function<std::string>(
          "--type",
          [options](const std::string& text) {
            options->kind = kindNamed(text);
            if (options->kind == nullptr) {
              throw CLI::ValidationError("--type",
                                         "'" + text + "' is no type; see eventctl add --help");
            }
          },
          "only events of this type, by name or number")
      ->type_name("TYPE");
  command->callback(
      [&line, options] { line.run = [&line, options] { return runList(line.global, *options); }; });
}

}  // namespace EventApps
