#include "apps/eventctl/DemoMembers.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace EventApps {

DemoMembers::DemoMembers(const nlohmann::json& stats) {
  if (!stats.is_object() || !stats.contains("cluster")) return;
  for (const auto& member : stats["cluster"].value("members", nlohmann::json::array())) {
    m_members.push_back({member.value("reachable", false), member.value("leader", false)});
  }
}

int DemoMembers::leader() const {
  const auto found = std::find_if(m_members.begin(), m_members.end(), [](const Member& member) {
    return member.reachable && member.leader;
  });
  return found == m_members.end() ? -1 : static_cast<int>(found - m_members.begin());
}

bool DemoMembers::allReachable() const {
  return !m_members.empty() && std::all_of(m_members.begin(), m_members.end(),
                                           [](const Member& member) { return member.reachable; });
}

}  // namespace EventApps
