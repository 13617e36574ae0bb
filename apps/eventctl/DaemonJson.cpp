#include "apps/eventctl/DaemonJson.h"

#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "apps/common/EventKinds.h"
#include "apps/common/Numbers.h"

namespace EventApps {
namespace {

using nlohmann::json;

std::string bytesOfHex(std::string_view hex) {
  std::string bytes;
  for (; hex.size() >= 2; hex.remove_prefix(2)) {
    bytes += static_cast<char>(parseNumber<unsigned char>(hex.substr(0, 2), 16).value_or('?'));
  }
  return bytes;
}

// "capacity", or "type 12".
int typeNamed(const std::string& name) {
  if (const EventKind* const kind = kindNamed(name)) return kind->number;
  constexpr std::string_view kPrefix = "type ";
  if (!name.starts_with(kPrefix)) return 0;
  return parseNumber<int>(std::string_view(name).substr(kPrefix.size())).value_or(0);
}

}  // namespace

EventSystemHost::ClusterReport clusterFrom(const json& cluster) {
  EventSystemHost::ClusterReport report;
  for (const json& from : cluster.at("members")) {
    EventSystemHost::ClusterMember& member = report.members.emplace_back();
    from.at("endpoint").get_to(member.endpoint);
    from.at("reachable").get_to(member.reachable);
    from.at("failure").get_to(member.failure);
    from.at("name").get_to(member.name);
    from.at("version").get_to(member.version);
    from.at("leader").get_to(member.leader);
    from.at("databaseBytes").get_to(member.databaseBytes);
    from.at("databaseBytesInUse").get_to(member.databaseBytesInUse);
    from.at("quotaBytes").get_to(member.quotaBytes);
  }
  cluster.at("alarms").get_to(report.alarms);
  cluster.at("failure").get_to(report.failure);
  return report;
}

// The fields are taken from the event string, as they are where the queue is read directly.
EventView eventFrom(const json& event) {
  EventView view;
  event.at("id").get_to(view.id);
  event.at("dsid").get_to(view.dsid);
  event.at("type").get_to(view.type);
  event.at("date").get_to(view.date);
  view.eventString = event.contains("eventStringHex")
                         ? bytesOfHex(event.at("eventStringHex").get<std::string>())
                         : event.at("eventString").get<std::string>();
  if (const auto parsed = parseEvent(view.eventString)) {
    view.fields = viewOf(*parsed, view.dsid).fields;
  }
  view.problem = event.value("problem", "");
  return view;
}

std::pair<unsigned int, QueueFigures> figuresFrom(const json& queue) {
  QueueFigures figures;
  queue.at("count").get_to(figures.count);
  queue.at("damaged").get_to(figures.damaged);
  queue.at("highestId").get_to(figures.highestId);
  queue.at("known").get_to(figures.known);
  figures.oldest = queue.value("oldest", 0UL);
  figures.newest = queue.value("newest", 0UL);
  for (const auto& [name, count] : queue.at("types").items()) {
    figures.countByType[typeNamed(name)] = count.get<unsigned long>();
  }
  return {queue.at("dsid").get<unsigned int>(), figures};
}

DataSelection selectionFrom(const json& queue) {
  return {.id = queue.at("dsid").get<unsigned int>(),
          .type = queue.value("type", 0),
          .name = queue.value("name", "")};
}

Statistics statisticsFrom(const json& stats) {
  Statistics statistics;
  stats.at("home").get_to(statistics.home);
  stats.at("database").get_to(statistics.database);
  stats.at("countLimit").get_to(statistics.countLimit);
  stats.at("ageLimitDays").get_to(statistics.ageLimitDays);
  if (stats.contains("cluster")) statistics.cluster = clusterFrom(stats.at("cluster"));
  if (!stats.contains("queues")) return statistics;
  statistics.time = stats.value("time", statistics.time);
  Figures& figures = statistics.figures.emplace();
  for (const json& queue : stats.at("queues")) figures.insert(figuresFrom(queue));
  return statistics;
}

CheckReport checkReportFrom(const json& report) {
  CheckReport read;
  report.at("fix").get_to(read.fix);
  report.at("remaining").get_to(read.remaining);
  for (const json& finding : report.at("findings")) {
    read.findings.push_back({finding.at("level").get<std::string>(), finding.at("code").get<int>(),
                             finding.at("message").get<std::string>()});
  }
  read.clustered = report.value("checked", "") == "database";
  return read;
}

}  // namespace EventApps
