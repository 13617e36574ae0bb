#include "host/cluster/UnsettledWrites.h"

#include <algorithm>
#include <utility>

namespace EventSystemHost {
namespace {

// Bounds what a long outage, or callers that never try again, can make us remember.
constexpr std::size_t kMostOpen = 4096;
constexpr std::size_t kMostStored = 4096;

}  // namespace

void UnsettledWrites::add(UnsettledWrite write) {
  if (m_open.size() == kMostOpen) m_open.pop_front();
  m_open.push_back(std::move(write));
}

void UnsettledWrites::settle(unsigned long stored) {
  const auto found = std::find_if(m_open.begin(), m_open.end(),
                                  [stored](const auto& write) { return write.token == stored; });
  if (found != m_open.end()) {
    if (m_stored.size() == kMostStored) m_stored.pop_front();
    m_stored.push_back(std::move(*found));
  }
  m_open.clear();
}

std::optional<unsigned long> UnsettledWrites::claim(const std::string& hash) {
  const auto found = std::find_if(m_stored.begin(), m_stored.end(),
                                  [&hash](const auto& write) { return write.hash == hash; });
  if (found == m_stored.end()) return std::nullopt;
  const unsigned long id = found->id;
  m_stored.erase(found);
  return id;
}

}  // namespace EventSystemHost
