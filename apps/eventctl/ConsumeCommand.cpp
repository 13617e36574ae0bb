// `eventctl consume`: prints the events of a queue in id order and deletes each one after it was
// printed; with --follow, also those that come later.

#include <chrono>
#include <memory>
#include <optional>
#include <string>

#include "apps/eventctl/ChangeWatch.h"
#include "apps/eventctl/CommandError.h"
#include "apps/eventctl/Commands.h"
#include "apps/eventctl/EventView.h"
#include "apps/eventctl/NumberOption.h"
#include "apps/eventctl/Output.h"
#include "apps/eventctl/QueueReader.h"
#include "apps/eventctl/Session.h"
#include "apps/eventctl/StopSignals.h"

namespace EventCtl {
namespace {

using EventSystemHost::Access;

struct ConsumeOptions {
  unsigned long limit = 0;  // 0: no limit
  bool keep = false;
  bool follow = false;
};

// Hands events to standard output and then deletes them.
class Consumer {
 public:
  Consumer(const GlobalOptions& global, const ConsumeOptions& options)
      : m_global(global), m_options(options), m_table(eventTable(m_output, Overflow::kWrap)) {}

  bool reachedLimit() const { return m_options.limit != 0 && m_count == m_options.limit; }
  unsigned long count() const { return m_count; }

  // Prints and deletes until the queue is empty, the limit is reached or `stop` says so.
  void drain(QueueSession& session, const StopAsked& stop) {
    while (!reachedLimit() && !stop()) {
      const auto event = session.next(m_after, m_global.dsid);
      if (!event) break;
      print(*event);
      if (m_options.keep) {
        m_after = event->getId();
      } else {
        session.remove(event->getId(), m_global.dsid);
      }
      ++m_count;
    }
    session.makeDurable();
  }

 private:
  // Until this returns, the event is not known to have been handed over.
  void print(EventSystem::Event& event) {
    const EventView view = viewOf(event, m_global.dsid);
    if (m_global.json) {
      m_output.line(jsonLine(jsonOf(view)));
    } else {
      m_table.row(tableRow(view));
    }
    m_output.sync();
  }

  Output& m_output = standardOutput();
  const GlobalOptions& m_global;
  const ConsumeOptions& m_options;
  Table m_table;
  unsigned long m_after = 0;
  unsigned long m_count = 0;
};

int consumeOnce(const GlobalOptions& global, const ConsumeOptions& options) {
  Consumer consumer(global, options);
  QueueSession session(global);
  consumer.drain(session, [] { return false; });
  if (!global.json && consumer.count() == 0 && damageMet().empty()) {
    standardOutput().line("No events in " + queueName(global.dsid) + ".");
  }
  return kDone;
}

// Rounds of draining; between them other processes have the database.
class Follower {
 public:
  Follower(const GlobalOptions& global, const ConsumeOptions& options)
      : m_global(global), m_consumer(global, options) {}

  int run() {
    standardOutput().interruptBy(m_stop.descriptor());
    try {
      while (drainRound() && waitForMore()) {
      }
    } catch (const OutputInterrupted&) {
      // The event in hand was not printed and stays.
    }
    standardOutput().interruptBy(-1);
    return kDone;
  }

 private:
  // What an audit service may have changed is judged by the state before the round, whose own
  // import changes the file once more at most.
  bool drainRound() {
    if (m_watch) m_auditBefore = fileSignature(m_auditFile);
    auto host = openForRound();
    if (!host) return false;
    if (!m_watch) learnPaths(*host);
    QueueSession session(std::move(host));
    requireDataSelection(m_global.dsid);
    m_consumer.drain(session, [this] { return m_stop.arrived(); });
    m_leftOver = QueueReader().highestRowId(m_global.dsid);
    return !m_consumer.reachedLimit() && !m_stop.arrived() && damageMet().empty();
  }

  void learnPaths(const EventSystemHost::Host& host) {
    const auto& configuration = host.configuration();
    if (configuration.clusterMode) {
      throw CommandError("--follow watches the database, and this home is in cluster mode (" +
                         configuration.hostFile.string() + "); call consume without it");
    }
    m_auditFile = configuration.auditDirectory / "audit.db";
    m_auditBefore = fileSignature(m_auditFile);
    m_watch.emplace(configuration.databaseFile, m_auditFile);
  }

  // The first round fails where the database is held for long, as every command does; a later
  // one waits for as long as it takes. Null when a stop is asked for meanwhile.
  OpenHost openForRound() {
    const auto options = hostOptions(m_global, Access::kReadWrite);
    if (!m_watch) return openHost(options, m_global.wait);
    try {
      return openHost(options, std::chrono::hours(24 * 365), [this] { return m_stop.arrived(); });
    } catch (const EventSystemHost::DatabaseBusy&) {
      return nullptr;
    }
  }

  // Changes after forget() wake the wait, changes before it are seen by hasMore(): none is lost.
  bool waitForMore() {
    constexpr std::chrono::seconds kBound(2);
    m_watch->forget();
    while (damageMet().empty() && !hasMore()) {
      const auto woken = m_watch->wait(m_stop.descriptor(), standardOutput().descriptor(), kBound);
      if (woken == ChangeWatch::Woken::kStopped) return false;
      if (woken == ChangeWatch::Woken::kOutputClosed) {
        throw OutputError("the reader of standard output has gone", false);
      }
    }
    return damageMet().empty();
  }

  bool hasMore() const {
    if (fileSignature(m_auditFile) != m_auditBefore) return true;
    const auto host = openHost(hostOptions(m_global, Access::kReadOnly), m_global.wait);
    return QueueReader().highestRowId(m_global.dsid) > m_leftOver;
  }

  StopSignals m_stop;
  const GlobalOptions& m_global;
  Consumer m_consumer;
  std::filesystem::path m_auditFile;
  std::string m_auditBefore;
  std::optional<ChangeWatch> m_watch;  // once the paths are known
  unsigned long m_leftOver = 0;
};

int runConsume(const GlobalOptions& global, const ConsumeOptions& options) {
  if (options.follow) return Follower(global, options).run();
  return consumeOnce(global, options);
}

}  // namespace

void defineConsume(CLI::App& app, CommandLine& line) {
  CLI::App* const command = defineCommand(
      app, "consume", "print events and delete each one after that",
      "consume --dsid 4 --json --follow | my-handler\n\n"
      "An event that could not be printed is not deleted. Rows that cannot be read are\n"
      "removed from the queue and logged.\n\n" +
          std::string(kHexHelp));
  const auto options = std::make_shared<ConsumeOptions>();
  addNumber(*command, "--limit", options->limit, "at most so many events", 1UL);
  command->add_flag("--keep", options->keep, "print without deleting");
  command->add_flag("--follow", options->follow,
                    "wait for more until SIGINT or SIGTERM; other\nprocesses can write meanwhile");
  command->callback([&line, options] {
    line.run = [&line, options] { return runConsume(line.global, *options); };
  });
}

}  // namespace EventCtl
