// The etcd members as `eventctl stats --json` tells them.
//
// Thread safety: plain values.

#ifndef EVENTSYSTEM_APPS_EVENTCTL_DEMOMEMBERS_H
#define EVENTSYSTEM_APPS_EVENTCTL_DEMOMEMBERS_H

#include <nlohmann/json_fwd.hpp>
#include <vector>

namespace EventApps {

class DemoMembers {
 public:
  DemoMembers() = default;  // nothing is known
  explicit DemoMembers(const nlohmann::json& stats);

  bool areKnown() const { return !m_members.empty(); }
  // The place of the leader among the endpoints; -1 where there is none.
  int leader() const;
  bool allReachable() const;

 private:
  struct Member {
    bool reachable;
    bool leader;
  };

  std::vector<Member> m_members;  // in the order of the endpoints in host.ini
};

}  // namespace EventApps

#endif
