#include "apps/eventd/http/Connections.h"

namespace EventApps::Http {
namespace {

constexpr std::size_t kMostBeingRefused = 64;
constexpr std::size_t kPartForUnixSocket = 16;

}  // namespace

bool Connections::isRoomFor(const std::string& network) const {
  if (network.empty()) return m_admitted < m_limits.connections;
  if (m_admitted >= m_limits.connections - m_limits.connections / kPartForUnixSocket) return false;
  const auto same = m_networks.find(network);
  return same == m_networks.end() ? m_limits.connectionsOfOnePeer > 0
                                  : same->second < m_limits.connectionsOfOnePeer;
}

Connections::Entry Connections::enter(const std::shared_ptr<Connection>& connection,
                                      const std::string& network) {
  const std::lock_guard lock(m_mutex);
  const bool admitted = isRoomFor(network);
  if (!admitted) {
    ++m_refused;
    if (m_members.size() - m_admitted >= kMostBeingRefused) return Entry::kNone;
  }
  m_members.emplace(connection.get(), Member{connection, network, admitted});
  if (!admitted) return Entry::kToBeRefused;
  ++m_admitted;
  ++m_opened;
  if (!network.empty()) ++m_networks[network];
  return Entry::kAdmitted;
}

void Connections::leave(const Connection* connection) {
  std::shared_ptr<Connection> last;  // let go of outside the lock
  const std::lock_guard lock(m_mutex);
  const auto found = m_members.find(connection);
  if (found == m_members.end()) return;
  if (found->second.admitted) {
    --m_admitted;
    const auto network = m_networks.find(found->second.network);
    if (network != m_networks.end() && --network->second == 0) m_networks.erase(network);
  }
  last = std::move(found->second.connection);
  m_members.erase(found);
  if (m_members.empty()) m_left.notify_all();
}

std::vector<std::shared_ptr<Connection>> Connections::all() const {
  const std::lock_guard lock(m_mutex);
  std::vector<std::shared_ptr<Connection>> connections;
  connections.reserve(m_members.size());
  for (const auto& [key, member] : m_members) connections.push_back(member.connection);
  return connections;
}

std::uint64_t Connections::open() const {
  const std::lock_guard lock(m_mutex);
  return m_admitted;
}

std::uint64_t Connections::opened() const {
  const std::lock_guard lock(m_mutex);
  return m_opened;
}

std::uint64_t Connections::refused() const {
  const std::lock_guard lock(m_mutex);
  return m_refused;
}

bool Connections::waitUntilEmpty(std::chrono::milliseconds most) {
  std::unique_lock lock(m_mutex);
  return m_left.wait_for(lock, most, [this] { return m_members.empty(); });
}

}  // namespace EventApps::Http
