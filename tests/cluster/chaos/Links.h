// The connections between hosts and nodes, each through a proxy of its own that can be cut.
//
// Thread safety: none; the proxies have threads of their own.

#ifndef EVENTSYSTEM_TESTS_CLUSTER_CHAOS_LINKS_H
#define EVENTSYSTEM_TESTS_CLUSTER_CHAOS_LINKS_H

#include <memory>
#include <string>
#include <vector>

#include "tests/cluster/Proxy.h"
#include "tests/cluster/chaos/Schedule.h"

namespace EventSystemTest {

class Links {
 public:
  Links(const std::vector<std::string>& nodes, int hosts);

  // Where a host finds the nodes.
  std::vector<std::string> endpointsFor(int host) const;

  // kAll: every host, every node. Faults are those of links.
  void harm(Fault fault, int host, int node);
  void mend(Fault fault, int host, int node);
  void mendAll();

 private:
  template <class Action>
  void forEach(int host, int node, const Action& action);

  const int m_nodes;
  std::vector<std::unique_ptr<Proxy>> m_proxies;  // host by host, node by node
};

}  // namespace EventSystemTest

#endif
