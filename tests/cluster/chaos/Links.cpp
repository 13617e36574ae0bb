#include "tests/cluster/chaos/Links.h"

namespace EventSystemTest {
namespace {

void setFault(Proxy& proxy, Fault fault, bool on) {
  switch (fault) {
    case Fault::kRefuse:
      proxy.setDown(on);
      break;
    case Fault::kSwallow:
      proxy.setDeaf(on);
      break;
    case Fault::kSilence:
      proxy.setMute(on);
      break;
    default:
      if (on) proxy.loseNextAnswer();
  }
}

}  // namespace

Links::Links(const std::vector<std::string>& nodes, int hosts)
    : m_nodes(static_cast<int>(nodes.size())) {
  for (int host = 0; host < hosts; ++host) {
    for (const std::string& node : nodes) m_proxies.push_back(std::make_unique<Proxy>(node));
  }
}

std::vector<std::string> Links::endpointsFor(int host) const {
  std::vector<std::string> endpoints;
  for (int node = 0; node < m_nodes; ++node) {
    endpoints.push_back(m_proxies.at(static_cast<std::size_t>(host * m_nodes + node))->endpoint());
  }
  return endpoints;
}

template <class Action>
void Links::forEach(int host, int node, const Action& action) {
  for (std::size_t i = 0; i < m_proxies.size(); ++i) {
    const int ofHost = static_cast<int>(i) / m_nodes;
    const int ofNode = static_cast<int>(i) % m_nodes;
    if ((host == kAll || host == ofHost) && (node == kAll || node == ofNode)) {
      action(*m_proxies[i]);
    }
  }
}

void Links::harm(Fault fault, int host, int node) {
  forEach(host, node, [fault](Proxy& proxy) { setFault(proxy, fault, true); });
}

void Links::mend(Fault fault, int host, int node) {
  forEach(host, node, [fault](Proxy& proxy) { setFault(proxy, fault, false); });
}

void Links::mendAll() {
  for (const Fault fault : {Fault::kRefuse, Fault::kSwallow, Fault::kSilence}) {
    mend(fault, kAll, kAll);
  }
}

}  // namespace EventSystemTest
