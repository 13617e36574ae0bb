// `eventctl demo`: a tour of the system. Every step is a process of its own, as on a server, and
// what each one leaves is compared with what it should.

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <system_error>
#include <vector>

#include "apps/eventctl/ChildProcess.h"
#include "apps/eventctl/CommandError.h"
#include "apps/eventctl/Commands.h"
#include "apps/eventctl/DemoDamage.h"
#include "apps/eventctl/Display.h"
#include "apps/eventctl/Numbers.h"
#include "apps/eventctl/Output.h"
#include "apps/eventctl/StopSignals.h"
#include "apps/eventctl/Table.h"
#include "apps/eventctl/TemporaryDirectory.h"

namespace EventCtl {
namespace {

namespace fs = std::filesystem;
using Arguments = std::vector<std::string>;
using nlohmann::json;

constexpr const char* kHome = "demo";

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
    if (error) throw CommandError("cannot read " + events.string() + ": " + error.message());
  }

  int run() {
    say("A tour of the event queues. Each command below runs as a process of its own, in " +
        m_directory.path().string() + ", which is removed at the end.");
    importDay();
    lookAtQueue();
    consumeSome();
    restart();
    importAuditRecords();
    repairDamage();
    return finish();
  }

 private:
  void importDay();
  void lookAtQueue();
  void consumeSome();
  void restart();
  void importAuditRecords();
  void repairDamage();
  int finish();

  void heading(const std::string& text);
  void say(const std::string& text);
  void note(bool good, const std::string& text);
  void echo(const std::string& line);
  Arguments show(const Arguments& arguments, int status = kDone);
  Figures figures();
  std::vector<unsigned long> idsAfter(unsigned long id);

  Output& m_output = standardOutput();
  StopSignals m_stop;
  TemporaryDirectory m_directory;
  std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
  unsigned int m_steps = 0;
  unsigned int m_good = 0;
  unsigned int m_bad = 0;
};

void Demo::importDay() {
  heading("A day of a server arrives");
  say("Every event is one line of text. Most go to the global queue, some to the queues of "
      "data selections 4 and 7. A few lines of the file are damaged: each is named and left "
      "out, the others go in, and the exit status is 1.");
  show({"dataselection", "add", "4", "--name", "mail servers"});
  show({"dataselection", "add", "7", "--name", "file servers"});
  const unsigned long lines = countEventLines(m_directory.path() / "day.events");
  const Arguments printed = show({"import", "day.events", "--json"}, -1);
  const json summary = json::parse(printed.empty() ? "" : printed.back(), nullptr, false);
  if (!summary.is_object()) throw CommandError("the import gave no summary");
  const auto imported = summary["imported"].get<unsigned long>();
  const auto refused = summary["refused"].get<unsigned long>();
  note(imported > 0 && imported + refused == lines,
       displayCount(lines) + " event lines: " + displayCount(imported) + " imported, " +
           displayCount(refused) + " refused, none overlooked");
  note(figures().count == imported, "the queues hold " + displayCount(imported) + " events");
}

void Demo::lookAtQueue() {
  heading("Looking without touching");
  say("list, show and stats only read, also beside a running writer.");
  const unsigned long before = figures().count;
  show({"list", "--limit", "6"});
  show({"list", "--dsid", "4", "--type", "capacity", "--limit", "2"});
  show({"show", "1"});
  show({"stats"});
  note(figures().count == before, "still " + displayCount(before) + " events");
}

void Demo::consumeSome() {
  heading("A consumer takes events in the order of their ids");
  say("Each event is deleted after it was printed, never before.");
  const Figures before = figures();
  show({"consume", "--limit", "4"});
  show({"consume", "--dsid", "4", "--limit", "1", "--json"});
  const Figures after = figures();
  note(after.global + 4 == before.global && after.count + 5 == before.count,
       "5 events are gone, " + displayCount(after.count) + " are left");
}

void Demo::restart() {
  heading("Ids only grow, whatever is deleted and restarted");
  const Figures before = figures();
  const Arguments added = show({"add", "serverstatus", "--server", "node1", "--state", "2"});
  const auto id = parseNumber<unsigned long>(added.empty() ? "" : added.back()).value_or(0);
  note(id == before.highestId + 1,
       "the new event follows the highest id so far, " + std::to_string(before.highestId));
  show({"delete", std::to_string(id)});
  const Arguments again = show({"add", "serverstatus", "--server", "node1", "--state", "0"});
  const auto later = parseNumber<unsigned long>(again.empty() ? "" : again.back()).value_or(0);
  note(later == id + 1, "the deleted id " + std::to_string(id) + " was not given again");
  note(figures().count == before.count + 1, "nothing else was lost or added");
}

void Demo::importAuditRecords() {
  heading("Audit records of other services are taken in");
  say("A service that cannot reach the queue leaves its records in audit/audit.db. The next "
      "process that opens the queue moves them into it.");
  const Figures before = figures();
  writeAuditDatabase(
      m_directory.path() / kHome / "audit" / "audit.db",
      {"user admin logged in", "policy gold changed by admin", "restore of client 42 started"});
  say("(three records written to demo/audit/audit.db)");
  const std::string after = std::to_string(before.highestId);
  show({"next", "--after", after});
  show({"list", "--type", "audit", "--after", after});
  note(figures().count == before.count + 3, "3 audit events came in");
}

void Demo::repairDamage() {
  heading("Damage is found and repaired");
  const auto ids = idsAfter(0);
  if (ids.size() < 3) throw CommandError("too few events are left to damage some");
  const Figures before = figures();
  const fs::path database = m_directory.path() / kHome / "events.db";
  misfileEvent(database, ids[0], 1);
  breakEventString(database, ids[1]);
  say("With plain SQLite, the row of event " + std::to_string(ids[0]) +
      " was filed under another event id, and the text of event " + std::to_string(ids[1]) +
      " was cut short.");
  show({"list", "--limit", "3"});
  note(figures().damaged == 2, "2 damaged rows are seen");
  show({"check", "--fix"});
  const Figures after = figures();
  note(after.damaged == 0 && after.count + 1 == before.count,
       "no damage is left; only the unreadable row was given up");
  const auto refiled = idsAfter(before.highestId);
  note(refiled.size() == 1,
       "the misfiled event has the new id " + (refiled.empty() ? "?" : std::to_string(refiled[0])));
  show({"check"});
}

int Demo::finish() {
  heading("Done");
  const auto seconds =
      std::chrono::duration<double>(std::chrono::steady_clock::now() - m_start).count();
  std::array<char, 32> time{};
  std::snprintf(time.data(), time.size(), "%.1f", seconds);
  say(displayCount(m_good) + " of " + displayCount(m_good + m_bad) + " checks passed, in " +
      time.data() + " seconds. eventctl --help lists the commands.");
  return m_bad == 0 ? kDone : kFailed;
}

void Demo::heading(const std::string& text) {
  m_output.line("");
  m_output.line(styled(m_output, Style::kBold, std::to_string(++m_steps) + ". " + text));
}

void Demo::say(const std::string& text) {
  for (const std::string& line :
       wrapToWidth(displayText(text), std::min<std::size_t>(m_output.columns(), 78))) {
    m_output.line(line);
  }
}

void Demo::note(bool good, const std::string& text) {
  ++(good ? m_good : m_bad);
  const std::string mark =
      good ? styled(m_output, Style::kGreen, "[ok]") : styled(m_output, Style::kRed, "[FAILED]");
  m_output.line(mark + " " + text);
  m_output.flush();
}

// Complaints and JSON are as long as they need to be; everything else fits already.
void Demo::echo(const std::string& line) {
  const bool folded = line.starts_with("eventctl: ") || line.starts_with("{");
  if (!folded) return m_output.line(line);
  std::string before;
  for (const std::string& part : wrapToWidth(line, m_output.columns() - 4)) {
    m_output.line(before + part);
    before = "    ";
  }
}

// Runs a command in sight. Returns the lines it printed. `status` -1: 0 and 1 are both fine.
Arguments Demo::show(const Arguments& arguments, int status) {
  std::string shown = "$ eventctl --home " + std::string(kHome);
  Arguments command = {"--home", kHome};
  for (const std::string& argument : arguments) {
    const bool plain = argument.find(' ') == std::string::npos;
    shown += plain ? " " + argument : " '" + argument + "'";
    command.push_back(argument);
  }
  m_output.line(styled(m_output, Style::kBold, shown));
  m_output.flush();
  Arguments printed;
  const int result = runSelf(command, m_directory.path(),
                             {"COLUMNS=" + std::to_string(m_output.columns()),
                              m_output.isColoured() ? "CLICOLOR_FORCE=1" : "NO_COLOR=1"},
                             [&](const std::string& line) {
                               printed.push_back(line);
                               echo(line);
                               m_output.flush();
                             });
  if (m_stop.arrived()) throw CommandError("the tour was interrupted");
  const bool fine = status < 0 ? result == kDone || result == kFailed : result == status;
  if (!fine) note(false, "the command ended with status " + std::to_string(result));
  return printed;
}

Figures Demo::figures() {
  std::string text;
  runSelf({"--home", kHome, "stats", "--json"}, m_directory.path(), {},
          [&](const std::string& line) { text += line; });
  const json stats = json::parse(text, nullptr, false);
  if (!stats.is_object()) throw CommandError("the queues could not be counted: " + text);
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
  runSelf({"--home", kHome, "list", "--json", "--after", std::to_string(id)}, m_directory.path(),
          {}, [&](const std::string& line) {
            const json event = json::parse(line, nullptr, false);
            if (event.is_object()) ids.push_back(event["id"].get<unsigned long>());
          });
  return ids;
}

int runDemo(const GlobalOptions& global, const std::string& events) {
  if (global.json || !global.home.empty() || global.dsid != 0) {
    throw CommandError(
        "demo runs in a home of its own and prints for people: call it without "
        "--home, --dsid and --json");
  }
  return Demo(events.empty() ? dayEvents() : fs::path(events)).run();
}

}  // namespace

void defineDemo(CLI::App& app, CommandLine& line) {
  CLI::App* const command =
      defineCommand(app, "demo", "a tour of the system in a temporary directory", "demo");
  const auto events = std::make_shared<std::string>();
  command->add_option("--events", *events, "a file for eventctl import")->type_name("FILE");
  command->callback(
      [&line, events] { line.run = [&line, events] { return runDemo(line.global, *events); }; });
}

}  // namespace EventCtl
