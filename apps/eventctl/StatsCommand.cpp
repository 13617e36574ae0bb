// `eventctl stats`: how much is in the queues, read beside a running writer.

#include <algorithm>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "apps/common/ClusterJson.h"
#include "apps/common/Display.h"
#include "apps/common/EventKinds.h"
#include "apps/common/EventView.h"
#include "apps/common/Output.h"
#include "apps/common/QueueFigures.h"
#include "apps/common/QueueNames.h"
#include "apps/common/Table.h"
#include "apps/eventctl/ClusterStats.h"
#include "apps/eventctl/Commands.h"
#include "apps/eventctl/ExitStatus.h"
#include "apps/eventctl/Queues.h"
#include "apps/eventctl/Statistics.h"

namespace EventApps {
namespace {

void addQueues(nlohmann::ordered_json& object, const Figures& figures) {
  auto queues = nlohmann::ordered_json::array();
  unsigned long count = 0;
  for (const auto& [dsid, queue] : figures) {
    queues.push_back(jsonOfQueue(dsid, queue));
    count += queue.count;
  }
  object["count"] = count;
  object["queues"] = queues;
}

// A daemon of a cluster does not count the queues for everyone who asks.
void printAge(Output& output, std::time_t time) {
  constexpr std::time_t kNow = 2;
  const std::time_t age = std::time(nullptr) - time;
  if (age > kNow)
    output.line("Counted " + displayCount(static_cast<unsigned long>(age)) + " s ago.");
}

void printJson(Output& output, const Statistics& statistics) {
  nlohmann::ordered_json object;
  if (!statistics.home.empty()) object["home"] = statistics.home;
  if (!statistics.database.empty()) object["database"] = statistics.database;
  if (statistics.figures) {
    addQueues(object, *statistics.figures);
    object["time"] = statistics.time;
  }
  object["countLimit"] = statistics.countLimit;
  object["ageLimitDays"] = statistics.ageLimitDays;
  if (statistics.cluster) object["cluster"] = jsonOfCluster(*statistics.cluster);
  output.line(jsonLine(object));
}

std::string limitText(int limit, const char* unit) {
  return limit == 0 ? "none" : displayCount(static_cast<unsigned long>(limit)) + unit;
}

void printQueues(Output& output, const Figures& figures) {
  Table table(output,
              {{"queue", 13, Align::kLeft, Style::kBold},
               {"events", 9, Align::kRight},
               {"highest id", 10, Align::kRight},
               {"oldest (UTC)", 19, Align::kLeft, Style::kDim},
               {"newest (UTC)", 19, Align::kLeft, Style::kDim}},
              Overflow::kCut);
  for (const auto& [dsid, queue] : figures) {
    const std::string name = dsid == 0 ? "global" : "selection " + std::to_string(dsid);
    const bool empty = queue.count == 0;
    table.row({queue.known ? name : name + " ?", displayCount(queue.count),
               std::to_string(queue.highestId), empty ? "-" : displayTime(queue.oldest, false),
               empty ? "-" : displayTime(queue.newest, false)});
  }
}

void printTypes(Output& output, const Figures& figures) {
  std::map<int, std::map<unsigned int, unsigned long>> counts;
  std::map<int, unsigned long> totals;
  for (const auto& [dsid, queue] : figures) {
    for (const auto& [type, count] : queue.countByType) {
      counts[type][dsid] += count;
      totals[type] += count;
    }
  }
  if (totals.empty()) return;
  output.line("");
  Table table(output,
              {{"type", 13, Align::kLeft, Style::kBlue},
               {"events", 9, Align::kRight},
               {"by queue", 0, Align::kLeft, Style::kDim}},
              Overflow::kWrap);
  for (const auto& [type, total] : totals) {
    std::string where;
    for (const auto& [dsid, count] : counts[type]) {
      where += (where.empty() ? "" : ", ") +
               (dsid == 0 ? "global" : "selection " + std::to_string(dsid)) + ": " +
               displayCount(count);
    }
    table.row({kindName(type), displayCount(total), where});
  }
}

void printLimits(Output& output, const Statistics& statistics) {
  output.line("");
  if (statistics.cluster) {
    output.line("The queues are at the cluster service, bounded by etcd's quota alone.");
    return;
  }
  output.line("Limits of the global queue: " + limitText(statistics.countLimit, " events") +
              "; age " + limitText(statistics.ageLimitDays, " days") + ".");
}

void printNotes(Output& output, const Figures& figures, bool isClustered) {
  for (const auto& [dsid, queue] : figures) {
    const std::string name = queueName(dsid);
    if (queue.damaged > 0) {
      output.line(std::to_string(queue.damaged) +
                  (isClustered ? " unreadable events in " + name + "; eventctl list shows them."
                               : " damaged rows in " + name + "; see eventctl check."));
    }
    if (!queue.known) {
      output.line("? Data selection " + std::to_string(dsid) +
                  (isClustered
                       ? " does not exist in this home; eventctl dataselection add makes its "
                         "events reachable."
                       : " does not exist: its rows are in no queue."));
    }
  }
}

void printText(Output& output, const Statistics& statistics) {
  if (statistics.figures) {
    printQueues(output, *statistics.figures);
    printTypes(output, *statistics.figures);
    printLimits(output, statistics);
    printAge(output, statistics.time);
    printNotes(output, *statistics.figures, statistics.cluster.has_value());
  }
  if (!statistics.cluster) return;
  if (statistics.figures) output.line("");
  printCluster(output, *statistics.cluster);
}

int runStats(const GlobalOptions& global) {
  const Statistics statistics = openToRead(global)->statistics();
  Output& output = standardOutput();
  if (global.json) {
    printJson(output, statistics);
  } else {
    printText(output, statistics);
  }
  output.flush();
  if (statistics.figures) return kDone;
  complain("the queues at the cluster service cannot be read: " + statistics.cluster->failure);
  return kFailed;
}

}  // namespace

void defineStats(Command parent) {
  Command command =
      parent.add("stats", "count the events of all queues",
                 "stats --json\n\n"
                 "In cluster mode also the members of the cluster: whether they can be reached,\n"
                 "who leads, and how much of its quota the database of each has taken. Status 1\n"
                 "when the queues cannot be read.");
  command.runs([&global = command.global()] { return runStats(global); });
}

}  // namespace EventApps
