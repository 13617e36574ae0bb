// `eventctl import FILE`: one event string a line. Bad lines are named, the others go in.

#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <span>
#include <string>
#include <utility>
#include <vector>

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
#include "apps/eventctl/Queues.h"

namespace EventApps {
namespace {

constexpr std::size_t kLongestLine = 1 << 20;
constexpr int kFailuresToGiveUp = 3;  // of the store, one after the other

struct ImportOptions {
  std::string file;
  bool acknowledge = false;
};

// Events of one queue that wait to be stored together, and the lines they came from.
struct Batch {
  unsigned int dsid = 0;
  std::vector<std::unique_ptr<EventSystem::Event>> events;
  std::vector<unsigned long> lines;
};

class Importer {
 public:
  Importer(const GlobalOptions& global, const ImportOptions& options)
      : m_global(global),
        m_options(options),
        m_reader(options.file, kLongestLine),
        m_queues(openToWrite(global)),
        m_progress(m_reader.bytesInAll()),
        m_lines(
            global.dsid, [this](unsigned int dsid) { return exists(dsid); },
            [this](unsigned int dsid) { return destination(dsid); }) {
    m_queues->requireQueue(global.dsid);
  }

  int run() {
    std::string line;
    while (m_failures < kFailuresToGiveUp && nextLine(line)) {
      if (ImportLines::carriesEvent(line)) importLine(line);
      m_progress.update(m_reader.bytesRead());
    }
    storeBatch();
    m_queues->makeDurable();
    m_progress.hide();
    return finish();
  }

 private:
  // False at the end. What was read is stored before the next line is waited for.
  bool nextLine(std::string& line) {
    if (!m_reader.hasLine()) storeBatch();
    const auto result = m_reader.next(line);
    if (result == LineReader::Result::kEnd) return false;
    ++m_number;
    if (result != LineReader::Result::kTooLong) return true;
    line.clear();
    refuseLine("the line is longer than " + displayCount(kLongestLine) + " bytes");
    return true;
  }

  void importLine(const std::string& line) {
    ImportedEvent imported = read(line);
    if (!imported.problem.empty()) return refuseLine(imported.problem);
    if (imported.dsid != m_batch.dsid) storeBatch();
    m_batch.dsid = imported.dsid;
    m_batch.events.push_back(std::move(imported.event));
    m_batch.lines.push_back(m_number);
    const std::size_t most = m_options.acknowledge ? 1 : m_queues->eventsAtOnce();
    if (m_batch.events.size() >= most) storeBatch();
  }

  // Where exactly an event will be matters to few.
  ImportedEvent read(const std::string& line) {
    m_exact = false;
    ImportedEvent imported = m_lines.read(line);
    if (imported.problem.empty()) return imported;
    m_exact = true;
    return m_lines.read(line);
  }

  bool exists(unsigned int dsid) {
    const auto known = m_known.find(dsid);
    if (known != m_known.end()) return known->second;
    return m_known[dsid] = m_queues->hasQueue(dsid);
  }

  // What is refused is told of in the order of the lines.
  void refuseLine(const std::string& problem) {
    storeBatch();
    refuse(m_number, problem);
  }

  void storeBatch() {
    const Batch batch = std::exchange(m_batch, {});
    std::size_t tried = 0;
    while (tried < batch.events.size() && m_failures < kFailuresToGiveUp) {
      const auto outcome = m_queues->store(std::span(batch.events).subspan(tried), batch.dsid);
      for (const unsigned long id : outcome.ids) noteStored(batch.lines[tried++], batch.dsid, id);
      if (outcome.refusal != StoreOutcome::Refusal::kNone) {
        noteRefused(batch.lines[tried++], batch.dsid, outcome);
      }
    }
  }

  void noteRefused(unsigned long line, unsigned int dsid, const StoreOutcome& outcome) {
    switch (outcome.refusal) {
      case StoreOutcome::Refusal::kFull:
        return refuseFull(line, dsid, outcome.reason);
      case StoreOutcome::Refusal::kRejected:
        return refuse(line, outcome.reason);
      case StoreOutcome::Refusal::kUnknown:
        return failed(line, "whether the event was stored is not known: " + outcome.reason);
      default:
        return failed(line, "the event was not stored " + outcome.reason);
    }
  }

  void failed(unsigned long line, const std::string& problem) {
    ++m_failures;
    m_lastTried = line;
    refuse(line, problem);
  }

  void noteStored(unsigned long line, unsigned int dsid, unsigned long id) {
    ++m_imported;
    m_failures = 0;
    for (const bool exact : {false, true}) {
      const auto next = m_next.find({isGlobalQueue(dsid), exact});
      if (next != m_next.end() && next->second.isDatabase) next->second.id = id + 1;
    }
    if (m_options.acknowledge) acknowledge(line, dsid, id);
  }

  // Nothing more is read or stored before whoever waits for this has got it.
  void acknowledge(unsigned long line, unsigned int dsid, unsigned long id) {
    m_queues->makeDurable();
    m_progress.hide();
    Output& output = standardOutput();
    if (m_global.json) {
      output.line(jsonLine({{"line", line}, {"dsid", dsid}, {"id", id}}));
    } else {
      output.line(std::to_string(line) + " " + std::to_string(dsid) + " " + std::to_string(id));
    }
    output.flush();
  }

  // Ids are drawn from two sequences: of the global queue, and of all data selections.
  Destination destination(unsigned int dsid) {
    const auto [known, isNew] = m_next.try_emplace({isGlobalQueue(dsid), m_exact});
    if (isNew) known->second = m_queues->destination(dsid, m_exact);
    Destination next = known->second;
    next.dsid = dsid;
    const bool sameSequence = isGlobalQueue(m_batch.dsid) == isGlobalQueue(dsid);
    if (next.isDatabase && sameSequence) next.id += m_batch.events.size();
    return next;
  }

  void refuse(unsigned long line, const std::string& problem) {
    ++m_refused;
    m_progress.hide();
    complain(m_reader.name() + ":" + std::to_string(line) + ": " + problem);
  }

  // Said once: where one event finds the queue full, so do all that follow.
  void refuseFull(unsigned long line, unsigned int dsid, const std::string& advice) {
    if (m_full++ > 0) {
      ++m_refused;
      return;
    }
    refuse(line, queueName(dsid) + " is full; " + advice);
  }

  int finish() {
    if (m_full > 1) {
      complain("in all " + displayCount(m_full) + " events found the queue full");
    }
    if (m_failures == kFailuresToGiveUp) {
      complain("given up after line " + std::to_string(m_lastTried) +
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
  std::unique_ptr<WritableQueues> m_queues;
  ProgressBar m_progress;
  ImportLines m_lines;
  std::map<unsigned int, bool> m_known;  // data selections asked for
  // Of the global queue and of all others, exact ones and not.
  std::map<std::pair<bool, bool>, Destination> m_next;
  bool m_exact = false;
  Batch m_batch;
  unsigned long m_number = 0;  // of the current line
  unsigned long m_lastTried = 0;
  unsigned long m_imported = 0;
  unsigned long m_refused = 0;
  unsigned long m_full = 0;
  int m_failures = 0;
};

}  // namespace

void defineImport(Command parent) {
  Command command = parent.add(
      "import", "put the events of a file into the queues",
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
  command.text("FILE", "", "the file, or - for standard input", options->file, Need::kRequired);
  command.flag("--acknowledge", "print a line for each event that is\nstored and durable",
               options->acknowledge);
  command.runs([&global = command.global(), options] { return Importer(global, *options).run(); });
}

}  // namespace EventApps
