// `eventctl export [FILE]`: events as lines that `eventctl import` takes.

#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "apps/common/Display.h"
#include "apps/common/EventView.h"
#include "apps/common/Failure.h"
#include "apps/common/Output.h"
#include "apps/common/QueueNames.h"
#include "apps/eventctl/Commands.h"
#include "apps/eventctl/DaemonFiles.h"
#include "apps/eventctl/ExitStatus.h"
#include "apps/eventctl/KindOption.h"
#include "apps/eventctl/NewFile.h"
#include "apps/eventctl/Queues.h"
#include "apps/eventctl/Session.h"

namespace EventApps {
namespace {

struct ExportOptions {
  std::string file = "-";
  bool allQueues = false;
  bool force = false;
  unsigned long after = 0;
  unsigned long limit = 0;  // 0: no limit
  const EventKind* kind = nullptr;
};

class Exporter {
 public:
  Exporter(const GlobalOptions& global, const ExportOptions& options)
      : m_global(global), m_options(options), m_queues(openToRead(global)) {
    if (options.file == "-") return;
    requireFreeForOutput(options.file, global);
    m_file.emplace(options.file, options.force);
  }

  int run() {
    for (const unsigned int dsid : queuesMeant(*m_queues, m_global, m_options.allQueues)) {
      m_queues->forEach(dsid, m_options.after, m_options.kind,
                        [this](const EventView& event) { return add(event); });
    }
    if (!damageMet().empty()) return kFailed;  // it is not all there is
    finish();
    return m_left == 0 ? kDone : kFailed;
  }

 private:
  bool add(const EventView& event) {
    if (m_options.limit != 0 && m_exported == m_options.limit) return false;
    if (const std::string problem = whyNoLine(event); !problem.empty()) {
      complain("event " + std::to_string(event.id) + " of " + queueName(event.dsid) +
               " was left out: " + problem);
      ++m_left;
      return true;
    }
    print("dsid=" + std::to_string(event.dsid) + " " + event.eventString);
    ++m_exported;
    return true;
  }

  static std::string whyNoLine(const EventView& event) {
    if (!parseEvent(event.eventString)) return "its event string cannot be read";
    if (event.eventString.find_first_of("\r\n") == std::string::npos) return "";
    return "its text contains a line break, and an event is one line; eventctl show --json shows "
           "it";
  }

  // A terminal obeys what a text may hold; whoever imports the lines has them from elsewhere.
  void print(const std::string& line) {
    if (m_file) {
      m_file->line(line);
    } else {
      Output& output = standardOutput();
      output.line(output.isTerminal() ? displayText(line) : line);
    }
  }

  void finish() {
    Output& output = standardOutput();
    if (m_file) {
      m_file->publish();
      if (m_global.json) {
        output.line(
            jsonLine({{"exported", m_exported}, {"leftOut", m_left}, {"file", m_options.file}}));
      } else {
        output.line("Exported " + displayCount(m_exported) +
                    (m_exported == 1 ? " event to " : " events to ") + displayText(m_options.file) +
                    ".");
      }
    }
    output.flush();
  }

  const GlobalOptions& m_global;
  const ExportOptions& m_options;
  std::unique_ptr<ReadableQueues> m_queues;
  std::optional<NewFile> m_file;
  unsigned long m_exported = 0;
  unsigned long m_left = 0;
};

}  // namespace

void defineExport(Command parent) {
  Command command = parent.add(
      "export", "write events as lines that import takes",
      "export --all-queues events.txt\n\n"
      "An event is a line: dsid=N and its event string. Imported, it keeps its type,\n"
      "date and text, goes to the queue it came from, and gets a new id. Events stay in\n"
      "the queue. What cannot be a line, or cannot be read, is named and left out; the\n"
      "status is then 1. The file is there when it is complete.");
  const auto options = std::make_shared<ExportOptions>();
  command.text("FILE", "", "the file, or - for standard output (default)", options->file);
  command.flag("--all-queues", "the global queue and those of all data\nselections",
               options->allQueues);
  command.number("--after", "only events with a higher id than this", options->after);
  command.number("--limit", "at most so many events", options->limit, 1UL);
  addKindOption(command, options->kind);
  command.flag("--force", "replace FILE where it exists", options->force);
  command.runs([&global = command.global(), options] { return Exporter(global, *options).run(); });
}

}  // namespace EventApps
