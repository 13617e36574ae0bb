// `eventctl import FILE`: one event string a line. Bad lines are named, the others go in.

#include <map>
#include <memory>
#include <string>

#include "EventSystem/ResultCode.h"
#include "EventSystem/platform/HostConfig.h"
#include "apps/common/Display.h"
#include "apps/common/EventLimits.h"
#include "apps/common/EventView.h"
#include "apps/common/ImportLine.h"
#include "apps/common/LineReader.h"
#include "apps/common/Output.h"
#include "apps/common/QueueNames.h"
#include "apps/eventctl/Commands.h"
#include "apps/eventctl/ExitStatus.h"
#include "apps/eventctl/ProgressBar.h"
#include "apps/eventctl/Session.h"

namespace EventApps {
namespace {

constexpr std::size_t kLongestLine = 1 << 20;
constexpr int kFailuresToGiveUp = 3;  // of the store, one after the other

struct ImportOptions {
  std::string file;
  bool acknowledge = false;
};

class Importer {
 public:
  Importer(const GlobalOptions& global, const ImportOptions& options)
      : m_global(global),
        m_options(options),
        m_reader(options.file, kLongestLine),
        m_session(global),
        m_progress(m_reader.bytesInAll()),
        m_lines(
            global.dsid, [this](unsigned int dsid) { return exists(dsid); },
            [this](unsigned int dsid) { return destination(dsid); }) {}

  int run() {
    std::string line;
    for (auto result = m_reader.next(line); result != LineReader::Result::kEnd;
         result = m_reader.next(line)) {
      ++m_number;
      if (result == LineReader::Result::kTooLong) {
        refuse("the line is longer than " + displayCount(kLongestLine) + " bytes");
      } else if (ImportLines::carriesEvent(line)) {
        importLine(line);
      }
      if (m_failures == kFailuresToGiveUp) break;
      m_progress.update(m_reader.bytesRead());
    }
    m_session.queues().makeDurable();
    m_progress.hide();
    return finish();
  }

 private:
  void importLine(const std::string& line) {
    const ImportedEvent imported = m_lines.read(line);
    if (!imported.problem.empty()) return refuse(imported.problem);
    store(*imported.event, imported.dsid);
  }

  bool exists(unsigned int dsid) {
    const auto known = m_known.find(dsid);
    if (known != m_known.end()) return known->second;
    return m_known[dsid] = QMDSIDValidate(dsid) != 0;
  }

  void store(EventSystem::Event& event, unsigned int dsid) {
    unsigned long id = 0;
    const int result = m_session.queues().store(event, dsid, id);
    if (result == 0) {
      ++m_imported;
      m_failures = 0;
      noteStored(dsid, id);
    } else if (result == EventSystem::kStorageLimits) {
      refuseFull(dsid);
    } else {
      ++m_failures;
      refuse("the event was not stored (result " + std::to_string(result) + "); " +
             m_session.queues().whyFailed());
    }
  }

  void noteStored(unsigned int dsid, unsigned long id) {
    Destination& next = m_next.at(isGlobalQueue(dsid));
    if (next.isDatabase) next.id = id + 1;
    if (m_options.acknowledge) acknowledge(dsid, id);
  }

  // Nothing more is read or stored before whoever waits for this has got it.
  void acknowledge(unsigned int dsid, unsigned long id) {
    m_session.queues().makeDurable();
    m_progress.hide();
    Output& output = standardOutput();
    if (m_global.json) {
      output.line(jsonLine({{"line", m_number}, {"dsid", dsid}, {"id", id}}));
    } else {
      output.line(std::to_string(m_number) + " " + std::to_string(dsid) + " " + std::to_string(id));
    }
    output.flush();
  }

  // Ids are drawn from two sequences: of the global queue, and of all data selections.
  Destination destination(unsigned int dsid) {
    const auto [known, isNew] = m_next.try_emplace(isGlobalQueue(dsid));
    if (isNew) known->second = m_session.queues().destination(dsid);
    known->second.dsid = dsid;
    return known->second;
  }

  void refuse(const std::string& problem) {
    ++m_refused;
    m_progress.hide();
    complain(m_reader.name() + ":" + std::to_string(m_number) + ": " + problem);
  }

  // Said once: where one event finds the queue full, so do all that follow.
  void refuseFull(unsigned int dsid) {
    if (m_full++ > 0) {
      ++m_refused;
      return;
    }
    refuse(queueName(dsid) + " is full; consume or delete events, or raise count_limit in " +
           m_session.queues().limitsFile());
  }

  int finish() {
    if (m_full > 1) {
      complain("in all " + displayCount(m_full) + " events found the queue full");
    }
    if (m_failures == kFailuresToGiveUp) {
      complain("given up after line " + std::to_string(m_number) +
               ": the store failed for several events in a row");
    }
    Output& output = standardOutput();
    if (m_global.json) {
      output.line(jsonLine({{"imported", m_imported}, {"refused", m_refused}}));
    } else {
      output.line("Imported " + displayCount(m_imported) + ", refused " + displayCount(m_refused) +
                  ".");
    }
    return m_refused == 0 ? kDone : kFailed;
  }

  const GlobalOptions& m_global;
  const ImportOptions& m_options;
  LineReader m_reader;
  QueueSession m_session;
  ProgressBar m_progress;
  ImportLines m_lines;
  std::map<unsigned int, bool> m_known;  // data selections asked for
  std::map<bool, Destination> m_next;    // of the global queue, and of all others
  unsigned long m_number = 0;            // of the current line
  unsigned long m_imported = 0;
  unsigned long m_refused = 0;
  unsigned long m_full = 0;
  int m_failures = 0;
};

}  // namespace

void defineImport(CLI::App& app, CommandLine& line) {
  CLI::App* const command = defineCommand(
      app, "import", "put the events of a file into the queues",
      "import day.events\n\n"
      "One event string a line. A line that begins with \"dsid=N \" goes to the queue of\n"
      "that data selection; blank lines and lines that begin with # are passed over. A\n"
      "line that is no event, or that would be stored changed, is reported, the others\n"
      "are imported. While it reads standard input, no other process can write to the\n"
      "database.\n\n"
      "--acknowledge prints LINE DSID ID, in JSON {\"line\":N,\"dsid\":N,\"id\":N}, for each\n"
      "event once it is stored and survives power loss, before the next line is read;\n"
      "what has no such line was refused, or is not known to be stored. The summary\n"
      "comes last.");
  const auto options = std::make_shared<ImportOptions>();
  command->add_option("FILE", options->file, "the file, or - for standard input")
      ->type_name("")
      ->required();
  command->add_flag("--acknowledge", options->acknowledge,
                    "print a line for each event that is\nstored and durable");
  command->callback([&line, options] {
    line.run = [&line, options] { return Importer(line.global, *options).run(); };
  });
}

}  // namespace EventApps
