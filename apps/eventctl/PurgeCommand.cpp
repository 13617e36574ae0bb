// `eventctl purge`: deletes many events at once, after it has told which.

#include <unistd.h>

#include <iostream>
#include <limits>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "apps/common/Display.h"
#include "apps/common/EventView.h"
#include "apps/common/Output.h"
#include "apps/common/QueueNames.h"
#include "apps/eventctl/Commands.h"
#include "apps/eventctl/ExitStatus.h"
#include "apps/eventctl/Queues.h"
#include "apps/eventctl/Session.h"

namespace EventApps {
namespace {

struct PurgeOptions {
  unsigned long upTo = std::numeric_limits<unsigned long>::max();
  bool allQueues = false;
  bool dryRun = false;
  bool yes = false;
};

// What would go from one queue. Ids grow, so what arrives later is behind `last`.
struct Doomed {
  unsigned int dsid = 0;
  unsigned long count = 0;
  unsigned long first = 0;
  unsigned long last = 0;
  std::map<int, unsigned long> countByType;

  void add(const EventView& event) {
    if (count++ == 0) first = event.id;
    last = event.id;
    ++countByType[event.type];
  }
};

std::string events(unsigned long count) {
  return displayCount(count) + (count == 1 ? " event" : " events");
}

std::string idsOf(const Doomed& doomed) {
  if (doomed.first == doomed.last) return "id " + std::to_string(doomed.first);
  return "ids " + std::to_string(doomed.first) + " to " + std::to_string(doomed.last);
}

std::string typesOf(const Doomed& doomed) {
  std::string text;
  for (const auto& [type, count] : doomed.countByType) {
    text += (text.empty() ? "" : ", ") + displayCount(count) + " " + kindName(type);
  }
  return text;
}

class Purge {
 public:
  Purge(const GlobalOptions& global, const PurgeOptions& options)
      : m_global(global), m_options(options) {}

  int run() {
    plan();
    if (m_options.dryRun) return tellPlan();
    if (!m_options.yes && !isConfirmed()) return m_status;
    deleteAll();
    return kDone;
  }

 private:
  // Nothing is held open between this and the deleting: a person may take his time to answer.
  void plan() {
    const auto queues = openToRead(m_global);
    for (const unsigned int dsid : queuesMeant(*queues, m_global, m_options.allQueues)) {
      Doomed& doomed = m_doomed.emplace_back();
      doomed.dsid = dsid;
      queues->forEach(dsid, 0, nullptr, [&](const EventView& event) {
        if (event.id > m_options.upTo) return false;
        doomed.add(event);
        return true;
      });
      m_count += doomed.count;
    }
  }

  int tellPlan() const {
    for (const Doomed& doomed : m_doomed) {
      if (m_global.json) {
        standardOutput().line(jsonLine(jsonOfPlan(doomed)));
      } else {
        standardOutput().line("Would delete " + sentence(doomed, doomed.count));
      }
    }
    standardOutput().flush();
    return kDone;
  }

  bool isConfirmed() {
    if (::isatty(STDIN_FILENO) != 1) {
      complain(
          "there is no terminal to ask on: --yes deletes without asking, --dry-run shows what "
          "would go");
      m_status = kUsage;
      return false;
    }
    for (const Doomed& doomed : m_doomed) {
      if (doomed.count > 0) std::cerr << sentence(doomed, doomed.count) << '\n';
    }
    std::cerr << "Delete " << events(m_count) << "? [y/N] " << std::flush;
    std::string answer;
    std::getline(std::cin, answer);
    if (answer == "y" || answer == "Y" || answer == "yes") return true;
    complain("nothing was deleted");
    m_status = kFailed;
    return false;
  }

  void deleteAll() {
    const auto queues = openToWrite(m_global);
    for (const Doomed& doomed : m_doomed) {
      const unsigned long deleted =
          doomed.count == 0 ? 0 : queues->removeUpTo(doomed.last, doomed.dsid);
      queues->makeDurable();
      if (m_global.json) {
        auto object = jsonOfPlan(doomed);
        object["deleted"] = deleted;
        standardOutput().line(jsonLine(object));
      } else {
        standardOutput().line("Deleted " + sentence(doomed, deleted));
      }
      standardOutput().flush();
    }
  }

  // "12 events of the global queue, ids 3 to 40: 8 capacity, 4 audit."
  static std::string sentence(const Doomed& doomed, unsigned long count) {
    std::string text = events(count) + " of " + queueName(doomed.dsid);
    if (doomed.count > 0) text += ", " + idsOf(doomed) + ": " + typesOf(doomed);
    return text + ".";
  }

  nlohmann::ordered_json jsonOfPlan(const Doomed& doomed) const {
    nlohmann::ordered_json object = {
        {"dsid", doomed.dsid}, {"dryRun", m_options.dryRun}, {"count", doomed.count}};
    if (doomed.count > 0) {
      object["first"] = doomed.first;
      object["last"] = doomed.last;
    }
    auto& types = object["types"] = nlohmann::ordered_json::object();
    for (const auto& [type, count] : doomed.countByType) types[kindName(type)] = count;
    return object;
  }

  const GlobalOptions& m_global;
  const PurgeOptions& m_options;
  std::vector<Doomed> m_doomed;
  unsigned long m_count = 0;
  int m_status = kDone;
};

}  // namespace

void definePurge(Command parent) {
  Command command =
      parent.add("purge", "delete all events of a queue, or those up to an id",
                 "purge --dsid 4 --upto 1200 --dry-run\n\n"
                 "Tells how many events would go, with their ids and types, and asks. Events that\n"
                 "arrive meanwhile stay. Ids are not given again in the global queue.");
  const auto options = std::make_shared<PurgeOptions>();
  command.number("--upto", "only events with this id and lower ones", options->upTo, 1UL);
  command.flag("--all-queues", "the global queue and those of all data\nselections",
               options->allQueues);
  command.flag("--dry-run", "tell what would go, and change nothing", options->dryRun);
  command.flag("--yes", "do not ask; required without a terminal", options->yes);
  command.runs([&global = command.global(), options] { return Purge(global, *options).run(); });
}

}  // namespace EventApps
