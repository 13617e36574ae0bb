#include "apps/common/ClusterJson.h"

#include <nlohmann/json.hpp>

namespace EventApps {
namespace {

using EventSystemHost::ClusterMember;

nlohmann::ordered_json jsonOfMember(const ClusterMember& member) {
  return {{"endpoint", member.endpoint},
          {"reachable", member.reachable},
          {"failure", member.failure},
          {"name", member.name},
          {"version", member.version},
          {"leader", member.leader},
          {"databaseBytes", member.databaseBytes},
          {"databaseBytesInUse", member.databaseBytesInUse},
          {"quotaBytes", member.quotaBytes}};
}

}  // namespace

nlohmann::ordered_json jsonOfCluster(const EventSystemHost::ClusterReport& report) {
  auto members = nlohmann::ordered_json::array();
  for (const ClusterMember& member : report.members) members.push_back(jsonOfMember(member));
  return {{"members", members}, {"alarms", report.alarms}, {"failure", report.failure}};
}

}  // namespace EventApps
