// `eventctl demo`: a tour of the system. Every step is a process of its own, as on a server, and
// what each one leaves is compared with what it should.

#include <filesystem>
#include <fstream>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <system_error>
#include <vector>

#include "apps/common/Display.h"
#include "apps/common/Failure.h"
#include "apps/common/Numbers.h"
#include "apps/eventctl/Commands.h"
#include "apps/eventctl/DemoCluster.h"
#include "apps/eventctl/DemoDamage.h"
#include "apps/eventctl/DemoStage.h"
#include "apps/eventctl/ExitStatus.h"
#include "apps/eventctl/StopSignals.h"
#include "apps/eventctl/TemporaryDirectory.h"

namespace EventApps {
namespace {

namespace fs = std::filesystem;
using Arguments = DemoStage::Arguments;
using nlohmann::json;

constexpr const char* kHome = "demo";

Arguments inHome(const Arguments& arguments) {
  Arguments command = {"--home", kHome};
  command.insert(command.end(), arguments.begin(), arguments.end());
  return command;
}

// The events that are installed with the program, or lie beside its source.
fs::path dayEvents() {
  const fs::path program = fs::read_symlink("/proc/self/exe");
  const fs::path installed =
      program.parent_path().parent_path() / "share" / "eventsystem" / "day.events";
  return fs::exists(installed) ? installed : fs::path(EVENTCTL_DAY_EVENTS);
}

unsigned long countEventLines(const fs::path& file) {
  std::ifstream lines(file);
  unsigned long count = 0;
  for (std::string line; std::getline(lines, line);) {
    if (line.ends_with('\r')) line.pop_back();
    if (!line.empty() && line[0] != '#') ++count;
  }
  return count;
}

// What `eventctl stats` says of the queues together and of the global one.
struct Figures {
  unsigned long count = 0;
  unsigned long damaged = 0;
  unsigned long highestId = 0;  // of the global queue
  unsigned long global = 0;     // events in it
};

class Demo {
 public:
  explicit Demo(const fs::path& events) {
    std::error_code error;
    fs::copy_file(events, m_directory.path() / "day.events", error);
    if (error) throw Failure("cannot read " + events.string() + ": " + error.message());
  }

  int run() {
    m_stage.say("A tour of the event queues. Each command below runs as a process of its own, in " +
                m_directory.path().string() + ", which is removed at the end.");
    importDay();
    lookAtQueue();
    consumeSome();
    restart();
    importAuditRecords();
    repairDamage();
    return m_stage.finish();
  }

 private:
  void importDay();
  void lookAtQueue();
  void consumeSome();
  void restart();
  void importAuditRecords();
  void repairDamage();
  // Runs a command in the tour's home, in sight.
  Arguments show(const Arguments& arguments, int status = kDone) {
    return m_stage.show(inHome(arguments), status);
  }
  Figures figures();
  std::vector<unsigned long> idsAfter(unsigned long id);

  StopSignals m_stop;
  TemporaryDirectory m_directory;
  DemoStage m_stage{m_stop, m_directory.path()};
};

void Demo::importDay() {
  m_stage.heading("A day of a server arrives");
  m_stage.say(
      "Every event is one line of text. Most go to the global queue, some to the queues of "
      "data selections 4 and 7. A few lines of the file are damaged: each is named and left "
      "out, the others go in, and the exit status is 1.");
  show({"dataselection", "add", "4", "--name", "mail servers"});
  show({"dataselection", "add", "7", "--name", "file servers"});
  const unsigned long lines = countEventLines(m_directory.path() / "day.events");
  const Arguments printed = show({"import", "day.events", "--json"}, -1);
  const json summary = json::parse(printed.empty() ? "" : printed.back(), nullptr, false);
  if (!summary.is_object()) throw Failure("the import gave no summary");
  const auto imported = summary["imported"].get<unsigned long>();
  const auto refused = summary["refused"].get<unsigned long>();
  m_stage.note(imported > 0 && imported + refused == lines,
               displayCount(lines) + " event lines: " + displayCount(imported) + " imported, " +
                   displayCount(refused) + " refused, none overlooked");
  m_stage.note(figures().count == imported,
               "the queues hold " + displayCount(imported) + " events");
}

void Demo::lookAtQueue() {
  m_stage.heading("Looking without touching");
  m_stage.say("list, show and stats only read, also beside a running writer.");
  const unsigned long before = figures().count;
  show({"list", "--limit", "6"});
  show({"list", "--dsid", "4", "--type", "capacity", "--limit", "2"});
  show({"show", "1"});
  show({"stats"});
  m_stage.note(figures().count == before, "still " + displayCount(before) + " events");
}

void Demo::consumeSome() {
  m_stage.heading("A consumer takes events in the order of their ids");
  m_stage.say("Each event is deleted after it was printed, never before.");
  const Figures before = figures();
  show({"consume", "--limit", "4"});
  show({"consume", "--dsid", "4", "--limit", "1", "--json"});
  const Figures after = figures();
  m_stage.note(after.global + 4 == before.global && after.count + 5 == before.count,
               "5 events are gone, " + displayCount(after.count) + " are left");
}

void Demo::restart() {
  m_stage.heading("Ids only grow, whatever is deleted and restarted");
  const Figures before = figures();
  const Arguments added = show({"add", "serverstatus", "--server", "node1", "--state", "2"});
  const auto id = parseNumber<unsigned long>(added.empty() ? "" : added.back()).value_or(0);
  m_stage.note(id == before.highestId + 1,
               "the new event follows the highest id so far, " + std::to_string(before.highestId));
  show({"delete", std::to_string(id)});
  const Arguments again = show({"add", "serverstatus", "--server", "node1", "--state", "0"});
  const auto later = parseNumber<unsigned long>(again.empty() ? "" : again.back()).value_or(0);
  m_stage.note(later == id + 1, "the deleted id " + std::to_string(id) + " was not given again");
  m_stage.note(figures().count == before.count + 1, "nothing else was lost or added");
}

void Demo::importAuditRecords() {
  m_stage.heading("Audit records of other services are taken in");
  m_stage.say(
      "A service that cannot reach the queue leaves its records in audit/audit.db. The next "
      "process that opens the queue moves them into it.");
  const Figures before = figures();
  writeAuditDatabase(
      m_directory.path() / kHome / "audit" / "audit.db",
      {"user admin logged in", "policy gold changed by admin", "restore of client 42 started"});
  m_stage.say("(three records written to demo/audit/audit.db)");
  const std::string after = std::to_string(before.highestId);
  show({"next", "--after", after});
  show({"list", "--type", "audit", "--after", after});
  m_stage.note(figures().count == before.count + 3, "3 audit events came in");
}

void Demo::repairDamage() {
  m_stage.heading("Damage is found and repaired");
  const auto ids = idsAfter(0);
  if (ids.size() < 3) throw Failure("too few events are left to damage some");
  const Figures before = figures();
  const fs::path database = m_directory.path() / kHome / "events.db";
  misfileEvent(database, ids[0], 1);
  breakEventString(database, ids[1]);
  m_stage.say("With plain SQLite, the row of event " + std::to_string(ids[0]) +
              " was filed under another event id, and the text of event " + std::to_string(ids[1]) +
              " was cut short.");
  show({"list", "--limit", "3"});
  m_stage.note(figures().damaged == 2, "2 damaged rows are seen");
  show({"check", "--fix"});
  const Figures after = figures();
  m_stage.note(after.damaged == 0 && after.count + 1 == before.count,
               "no damage is left; only the unreadable row was given up");
  const auto refiled = idsAfter(before.highestId);
  m_stage.note(refiled.size() == 1, "the misfiled event has the new id " +
                                        (refiled.empty() ? "?" : std::to_string(refiled[0])));
  show({"check"});
}

Figures Demo::figures() {
  const json stats = m_stage.ask(inHome({"stats", "--json"}));
  if (!stats.is_object()) throw Failure("the queues could not be counted");
  Figures figures;
  figures.count = stats["count"].get<unsigned long>();
  for (const json& queue : stats["queues"]) {
    figures.damaged += queue["damaged"].get<unsigned long>();
    if (queue["dsid"] != 0) continue;
    figures.global = queue["count"].get<unsigned long>();
    figures.highestId = queue["highestId"].get<unsigned long>();
  }
  return figures;
}

std::vector<unsigned long> Demo::idsAfter(unsigned long id) {
  std::vector<unsigned long> ids;
  m_stage.run(inHome({"list", "--json", "--after", std::to_string(id)}),
              [&](const std::string& line) {
                const json event = json::parse(line, nullptr, false);
                if (event.is_object()) ids.push_back(event["id"].get<unsigned long>());
              });
  return ids;
}

struct DemoOptions {
  std::string events;
  bool cluster = false;
  bool keep = false;
};

int runDemo(const GlobalOptions& global, const DemoOptions& options) {
  if (global.json || global.dsid != 0) {
    throw Failure("demo prints for people: call it without --dsid and --json");
  }
  if (options.cluster && !options.events.empty()) {
    throw Failure("the tour of the cluster mode makes its own events: call it without --events");
  }
  if (options.keep && !options.cluster) {
    throw Failure("--keep is of the tour of the cluster mode: call it with --cluster");
  }
  if (options.cluster) return runDemoCluster({global.home, options.keep});
  if (!global.home.empty()) {
    throw Failure("demo runs in a home of its own: call it without --home");
  }
  return Demo(options.events.empty() ? dayEvents() : fs::path(options.events)).run();
}

}  // namespace

void defineDemo(Command parent) {
  Command command =
      parent.add("demo", "a tour of the system in a directory of its own",
                 "demo\n\n"
                 "demo --cluster starts three etcd nodes on this machine and two hosts that\n"
                 "write to them, kills the leader, and proves that no event was lost. It works in\n"
                 "the directory of --home, which must be empty, or else in cluster-tour in the\n"
                 "default home.");
  const auto options = std::make_shared<DemoOptions>();
  command.text("--events", "FILE", "a file for eventctl import", options->events);
  command.flag("--cluster", "the tour of the cluster mode", options->cluster);
  command.flag("--keep", "keep the directory of the cluster tour", options->keep);
  command.runs([&global = command.global(), options] { return runDemo(global, *options); });
}

}  // namespace EventApps
